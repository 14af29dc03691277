#include "windows/host/FazHostWindows.h"

#include "shell/Geral.h"
#include "shell/ModGeral.h"
#include "windows/host/ClientesWindows.h"
#include "windows/host/HostWindows.h"
#include "windows/host/LogradourosWindows.h"
#include "windows/host/Oferecidos.h"
#include "windows/host/Remotos.h"
#include "windows/screen/CamadaWindows.h"

namespace nativo {
namespace {

// The screen, with the help of the foreign host.
class CamadaDoHospedeiro : public CamadaWindows {
  public:
    void MostraAjuda(const std::string &topico, const Ref<IJanela> &) override { goGeral->TrataAjuda(topico); }
};

} // namespace

Ref<HostServices> FazHostWindows()
{
    RegistraRemotos();
    OfereceObjetos();
    const auto camada = Novo<CamadaDoHospedeiro>();
    const auto logradouros = Novo<LogradourosWindows>();
    const auto host = Novo<HostWindows>(camada, logradouros,
                                        [fraca = RefFraca<CamadaWindows>(camada)](const Ref<IForm> &form) -> HWND {
                                            const Ref<CamadaWindows> viva = fraca.Alvo();
                                            return viva ? viva->JanelaDe(*form) : nullptr;
                                        });
    camada->Principal = [fraco = RefFraca<HostWindows>(host)]() -> HWND {
        const Ref<HostWindows> vivo = fraco.Alvo();
        return vivo ? vivo->Dono() : nullptr;
    };
    camada->Clientes = ClientesWindows::Oferecidos;
    camada->Logradouros = logradouros;
    return host;
}

} // namespace nativo
