#pragma once

#include <string>
#include <vector>

// The contract's requests as anybody can make them from it.
namespace pedidos {

// Every operation, "Entrada/Entra".
std::vector<std::string> Operacoes();

// A request in which every number is 1, every text "1" and every list has one such element.
std::string SoDeUns(const std::string &operacao);

} // namespace pedidos
