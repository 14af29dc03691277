#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

namespace nativo {

// The tests that make no sense across the boundary, or of which a part does not cross it.
namespace Excecoes {

// The filter without the tests that do not run here.
std::string SemElas(const std::string &filtro);

// Whether the tests of a suite call an object of the scripted host by themselves, on its own side.
bool ChamaPorSi(std::string_view conjunto, std::string_view chamada);

// All of them with their reasons, one a line.
void Conta(std::ostream &saida);

} // namespace Excecoes
} // namespace nativo
