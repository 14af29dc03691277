#pragma once

#include "controls/FabricaControles.h"
#include "host/HostServices.h"
#include "tela/AtendeControles.h"
#include "tela/ICamada.h"
#include "tela/Janelas.h"
#include "windows/host/PlataformaWindows.h"

#include <windows.h>

#include <cstdint>
#include <functional>

namespace nativo {

// The host of the component: the platform under it, the controls of its forms, and the classes of the foreign host that
// the module creates by itself. Its windows are shown by the foreign host, which is handed the forms.
class HostWindows : public HostServices {
  public:
    // manipuladorDoForm: the window of a form that has one; null for any other.
    HostWindows(const Ref<ICamada> &camada, Ref<ILogradouros> logradouros,
                std::function<HWND(const Ref<IForm> &)> manipuladorDoForm);
    ~HostWindows() override;
    std::string_view NomeTipo() const override { return "HostWindows"; }

    // The installed host; fault 91 when that is another, or none.
    static HostWindows &Instalado();

    // Shows a form, on behalf of the foreign host. dono: a window of the host's in front of which it stands; Nothing
    // for the main form.
    void Mostra(const Ref<IForm> &form, bool modal, const Ref<IForm> &dono);
    // Handle of a form's window, which is made when a loaded form has none yet; 0 for a form that is not loaded.
    std::int32_t Manipulador(const Ref<IForm> &form) const;
    // The window of the foreign host in front of which ours stand; null when there is none.
    HWND Dono() const;

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
    Ref<Janelas> m_Janelas;
    std::function<HWND(const Ref<IForm> &)> m_ManipuladorDoForm;
    Ref<PlataformaWindows> m_Plataforma;
    Ref<FabricaControles> m_Controles = Novo<FabricaControles>();
    AtendeControles m_AtendeControles;
    HWND m_DonoPedido = nullptr; // by the show that is under way
};

} // namespace nativo
