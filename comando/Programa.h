#pragma once

#include "comando/Ambiente.h"

#include <string>
#include <vector>

namespace comando {

// Does what the command line asks. argumentos: without the program's own name.
Codigo Programa(const std::vector<std::string> &argumentos, Ambiente &ambiente);

} // namespace comando
