#pragma once

#include "host/IPlataforma.h"

#include <string>

namespace comando {

// Fim when something has that name already, or there is no directory for it: nothing is put over another file.
void ExigeLivre(const std::string &caminho);

// Writes a file that was not there, whole and for its owner alone, or not at all: it has its name once it is on the
// disk. Fim and Falha say why not.
void GravaNovo(const std::string &caminho, const Bytes &bytes);

} // namespace comando
