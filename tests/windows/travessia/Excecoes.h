#pragma once

#include <iosfwd>
#include <string>

namespace nativo {

// The tests that make no sense across the boundary, or of which a part does not cross it.
namespace Excecoes {

// The filter without the tests that do not run here.
std::string SemElas(const std::string &filtro);

// All of them with their reasons, one a line.
void Conta(std::ostream &saida);

} // namespace Excecoes
} // namespace nativo
