#pragma once

#include <string>

namespace mesa {

// The text without case and without accents, as it is stored for searching.
std::string TextoBusca(const std::string &texto);

// The text behind all those that begin with this one.
std::string FimDaFaixa(const std::string &inicio);

} // namespace mesa
