#pragma once

#include "services/Conferidor.h"

#include <string>

namespace mesa {

// The result of a check as a text to be kept. lugar: the line that says of which registry.
std::string RelatorioDaConferencia(const std::string &lugar, const ResultadoDaConferencia &resultado,
                                   const Instante &agora);

} // namespace mesa
