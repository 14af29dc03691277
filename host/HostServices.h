#pragma once

#include "host/ChamadaRemota.h"
#include "host/Colecao.h"
#include "host/ConsultaAfericaoED.h"
#include "host/Conversoes.h"
#include "host/Data.h"
#include "host/EquiptoED.h"
#include "host/Evento.h"
#include "host/Falha.h"
#include "host/IAplicacaoHost.h"
#include "host/IFabricaControles.h"
#include "host/IForm.h"
#include "host/IGateway.h"
#include "host/IMDB.h"
#include "host/IPlataforma.h"
#include "host/IServicos.h"
#include "host/ISessao.h"
#include "host/ListaEquiptoED.h"
#include "host/Ref.h"
#include "host/RelatorioAfericaoED.h"
#include "host/Texto.h"
#include "host/Valor.h"

// Chief header of the contract: the factory of every host class that the module creates by itself, and the platform.
// Everything else reaches the module through the arguments of its entry points. Creating raises fault 429 when the
// class is not there.
class HostServices : public Objeto {
  public:
    virtual Ref<IPlataforma> Plataforma() = 0;
    virtual Ref<IFabricaControles> Controles() = 0;

    virtual Ref<IAMRegistro> CriaAMRegistro() = 0;
    virtual Ref<IAMEditMenu> CriaAMEditMenu() = 0;
    virtual Ref<IRelatorios> CriaRelatorios() = 0;
    virtual Ref<IAjuda> CriaAjuda() = 0;
    virtual Ref<ICFunGen> CriaCFunGen() = 0;
    virtual Ref<IMensagem> CriaMensagem() = 0;
    virtual Ref<IDadosVor> CriaDadosVor() = 0;
    virtual Ref<IDiretorios> CriaDiretorios() = 0;
    virtual Ref<IObjGlobalVor> CriaObjGlobalVor() = 0;
    virtual Ref<IDocumentoPDF> CriaDocumentoPDF() = 0;
};

// The host of this component, which keeps it with the rest of its state; fault 91 before one was installed.
HostServices &Host();
// Installs the host, before the module's first object is created; Nothing takes it away.
void InstalaHost(Ref<HostServices> host);

// Platform of the installed host.
Ref<IPlataforma> Plataforma();
