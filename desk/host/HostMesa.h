#pragma once

#include "controls/FabricaControles.h"
#include "desk/host/Andamento.h"
#include "desk/host/AplicacaoMesa.h"
#include "desk/host/BancoLocalMesa.h"
#include "desk/host/Logradouros.h"
#include "desk/host/NomesDeDocumentos.h"
#include "desk/host/PlataformaMesa.h"
#include "desk/host/SessaoMesa.h"
#include "host/HostServices.h"
#include "tela/AtendeControles.h"
#include "tela/IJanelas.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace mesa {

// The desk as the module's host: every class that the contract asks for, over the user's data directory, the windows
// and the session of whoever is signed in.
class HostMesa : public HostServices {
  public:
    // diretorio: the user's data directory; created when missing. agora: the clock.
    HostMesa(Ref<IJanelas> janelas, std::filesystem::path diretorio, std::function<Data()> agora);
    std::string_view NomeTipo() const override { return "HostMesa"; }

    // Follows what of the equipment is opened or included.
    mesa::ViuEquipamento ViuEquipamento;

    // Somebody signed in: the local replica is refreshed, and a session and an access control stand ready.
    void Entra(const Ref<SessaoServico> &servico);
    // Whoever was signed in has left.
    void Sai();

    // What the module's entry points are given. Session and access control are Nothing before the first sign-in.
    const Ref<SessaoMesa> &objMTM() const { return m_objMTM; }
    const Ref<AcessoMesa> &objSCA() const { return m_objSCA; }
    Ref<AppEXEMesa> oAppEXE;
    Ref<FormMDIMesa> FormMDI;
    Ref<ActBarMesa> ActBar;
    Ref<GlobalMesa> cGlobal;
    Ref<InterfaceMesa> ObjInterface;
    Ref<BancoLocalMesa> BancoLocal;
    Ref<LogradourosMesa> Logradouros;

    // Shows how far a work is that lasts.
    FazComAndamento Acompanha = SemAndamento;

    // The services' session; fault 91 when nobody is signed in.
    Ref<SessaoServico> Servico() const;
    // The control factory, for the layer that answers what the pickers and file dialogs ask.
    const Ref<FabricaControles> &Fabrica() const { return m_Controles; }

    Ref<IPlataforma> Plataforma() override { return m_Plataforma; }
    Ref<IFabricaControles> Controles() override { return m_Controles; }
    Ref<IAMRegistro> CriaAMRegistro() override;
    Ref<IAMEditMenu> CriaAMEditMenu() override;
    Ref<IRelatorios> CriaRelatorios() override;
    Ref<IAjuda> CriaAjuda() override;
    Ref<ICFunGen> CriaCFunGen() override;
    Ref<IMensagem> CriaMensagem() override;
    Ref<IDadosVor> CriaDadosVor() override;
    Ref<IDiretorios> CriaDiretorios() override;
    Ref<IObjGlobalVor> CriaObjGlobalVor() override;
    Ref<IDocumentoPDF> CriaDocumentoPDF() override;

  private:
    std::function<Ref<SessaoServico>()> SessaoAtual() const;
    std::filesystem::path PastaDosLayouts() const;
    void MostraRecusa(const std::string &recusa) const;
    FazComAndamento ComAndamento() const;
    // Name of the client with which a picker starts.
    std::string ClienteDe(std::int32_t codCliente) const;

    Ref<IJanelas> m_Janelas;
    std::filesystem::path m_Diretorio;
    Ref<PlataformaMesa> m_Plataforma;
    Ref<FabricaControles> m_Controles;
    Ref<NomesDeDocumentos> m_NomesDeDocumentos;
    Ref<SessaoMesa> m_objMTM;
    Ref<AcessoMesa> m_objSCA;
    std::optional<AtendeControles> m_AtendeControles;
};

} // namespace mesa
