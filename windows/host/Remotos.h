#pragma once

namespace nativo {

// Tells what stands for each object that the foreign host offers, by the classes of the contract. Before the first of
// them comes in; telling it again changes nothing.
void RegistraRemotos();

// By the parts of the contract.
void RegistraSessaoRemota();
void RegistraBancoRemoto();
void RegistraGatewayRemoto();
void RegistraAplicacaoRemota();
void RegistraServicosRemotos();
void RegistraTransacaoRemota();
void RegistraFormRemoto();

} // namespace nativo
