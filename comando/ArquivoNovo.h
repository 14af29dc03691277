#pragma once

#include "host/IPlataforma.h"

#include <filesystem>
#include <string>

namespace comando {

// Fim when something has that name already, or there is no directory for it: nothing is put over another file.
void ExigeLivre(const std::string &caminho);

// Writes a file that was not there, whole and for its owner alone, or not at all: it has its name once it is on the
// disk. Fim and Falha say why not.
void GravaNovo(const std::string &caminho, const Bytes &bytes);

// Gives a file that is whole that name, on the same disk, in one step: Fim when something has the name by then, and
// both stay as they are. A Falha when the disk does not take it.
void PoeNoLugar(const std::filesystem::path &pronto, const std::string &caminho);

} // namespace comando
