#pragma once

#include "desk/host/Ficha.h"

#include <optional>
#include <string>

namespace mesa {

// The form that asks for the reason of a correction; what was told is left in `motivo`.
Ficha FichaDoMotivo(const std::string &pergunta, std::string &motivo);

} // namespace mesa
