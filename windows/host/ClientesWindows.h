#pragma once

#include "tela/EscolhaDeCliente.h"

#include <cstdint>
#include <string>
#include <vector>

// The clients of the client picker. The contract tells the session's own client and sector alone; more are asked of an
// object of the class "Clientes" where the table of classes tells one,
//
//     Lista()   a collection of clients, with Count and Item from 1
//
// where a client has Codigo, Nome and Setores, an array of texts.
namespace nativo::ClientesWindows {

std::vector<ClienteOferecido> Oferecidos();
// Name of the client of a number; the session's own where nobody knows it.
std::string NomeDo(std::int32_t codCliente);

} // namespace nativo::ClientesWindows
