#pragma once

#include "host/TabelaTexto.h"

#include <oaidl.h>
#include <windows.h>

namespace nativo {

// An array of two dimensions, the columns first, as the table of texts that it holds. Fault 13 for any other array.
TabelaTexto TabelaDaVariante(const VARIANT &variante);

} // namespace nativo
