#include "windows/component/FazHost.h"

#include "windows/host/ClientesWindows.h"
#include "windows/host/HostWindows.h"
#include "windows/host/LogradourosWindows.h"
#include "windows/host/Oferecidos.h"
#include "windows/host/Remotos.h"
#include "windows/screen/CamadaWindows.h"

namespace nativo {

Ref<HostServices> FazHost()
{
    RegistraRemotos();
    OfereceObjetos();
    const auto camada = Novo<CamadaWindows>();
    const auto logradouros = Novo<LogradourosWindows>();
    const auto host =
        Novo<HostWindows>(camada, logradouros, [camada](const Ref<IForm> &form) { return camada->JanelaDe(*form); });
    camada->Logradouros = logradouros;
    camada->Clientes = ClientesWindows::Oferecidos;
    camada->Principal = [fraco = RefFraca<HostWindows>(host)]() -> HWND {
        const Ref<HostWindows> vivo = fraco.Alvo();
        return vivo.Nada() ? nullptr : vivo->Dono();
    };
    return host;
}

} // namespace nativo
