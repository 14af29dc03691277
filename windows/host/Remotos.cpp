#include "windows/host/Remotos.h"

namespace nativo {

void RegistraRemotos()
{
    RegistraSessaoRemota();
    RegistraBancoRemoto();
    RegistraGatewayRemoto();
    RegistraAplicacaoRemota();
    RegistraServicosRemotos();
    RegistraTransacaoRemota();
    RegistraFormRemoto();
}

} // namespace nativo
