#pragma once

#include "host/IAplicacaoHost.h"

#include <oaidl.h>

#include <functional>

namespace nativo {

// Lets `altera` change the menu items of a client's array of objects. The array stays as it is when they do not change,
// and otherwise begins at 0; one that the client has fixed or locked keeps its size, or the platform's fault says so.
void AlteraItens(SAFEARRAY **arranjo, const std::function<void(ItensMenu &)> &altera);

} // namespace nativo
