#pragma once

#include "host/HostServices.h"
#include "windows/automation/Tardio.h"

#include <string_view>

namespace nativo {

// The scripted host as the component has it: what it creates crosses the boundary, and so do the faults of its
// creations. Platform and controls are the component's own side.
class HostAtravessado : public HostServices {
  public:
    explicit HostAtravessado(const Ref<HostServices> &proprio);

    std::string_view NomeTipo() const override { return m_Proprio->NomeTipo(); }
    Ref<IPlataforma> Plataforma() override { return m_Proprio->Plataforma(); }
    Ref<IFabricaControles> Controles() override { return m_Proprio->Controles(); }

    Ref<IAMRegistro> CriaAMRegistro() override { return Cria<IAMRegistro>("CriaAMRegistro"); }
    Ref<IAMEditMenu> CriaAMEditMenu() override { return Cria<IAMEditMenu>("CriaAMEditMenu"); }
    Ref<IRelatorios> CriaRelatorios() override { return Cria<IRelatorios>("CriaRelatorios"); }
    Ref<IAjuda> CriaAjuda() override { return Cria<IAjuda>("CriaAjuda"); }
    Ref<ICFunGen> CriaCFunGen() override { return Cria<ICFunGen>("CriaCFunGen"); }
    Ref<IMensagem> CriaMensagem() override { return Cria<IMensagem>("CriaMensagem"); }
    Ref<IDadosVor> CriaDadosVor() override { return Cria<IDadosVor>("CriaDadosVor"); }
    Ref<IDiretorios> CriaDiretorios() override { return Cria<IDiretorios>("CriaDiretorios"); }
    Ref<IObjGlobalVor> CriaObjGlobalVor() override { return Cria<IObjGlobalVor>("CriaObjGlobalVor"); }
    Ref<IDocumentoPDF> CriaDocumentoPDF() override { return Cria<IDocumentoPDF>("CriaDocumentoPDF"); }

  private:
    template <class T> Ref<T> Cria(std::string_view operacao) const { return m_Tardio.Chama<Ref<T>>(operacao); }

    Ref<HostServices> m_Proprio;
    Tardio m_Tardio;
};

} // namespace nativo
