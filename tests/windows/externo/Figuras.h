#pragma once

#include <string>

namespace nativo {

// Prints lines of figures, and keeps them in a file of the folder of the environment's FIGURAS.
void Publica(const std::string &arquivo, const std::string &linhas);

} // namespace nativo
