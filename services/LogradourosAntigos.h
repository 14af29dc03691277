#pragma once

#include "services/LogradouroED.h"

#include <cstdint>

namespace mesa {

// The street that had this code while the code was a place in two tables of the program: CodLograd, CodMunic, Nome,
// Bairro, Cep and Ativo. Nothing for a code that no street had.
Ref<LogradouroED> LogradouroDoCodigoAntigo(std::int32_t codigo);

} // namespace mesa
