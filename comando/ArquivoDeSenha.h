#pragma once

#include "services/Segredo.h"

#include <string>

namespace comando {

// The first line of a file that belongs to whoever runs this and that nobody else may read. Fim otherwise.
mesa::Segredo SenhaDoArquivo(const std::string &caminho);

} // namespace comando
