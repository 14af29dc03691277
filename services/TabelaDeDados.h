#pragma once

#include <string>
#include <vector>

namespace mesa {

using LinhaDeDados = std::vector<std::string>;

// Rows of one of the desk's tables, cells as text. Comment lines begin with "#".
std::vector<LinhaDeDados> LeTabelaDeDados(const std::string &nome);

} // namespace mesa
