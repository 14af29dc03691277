#pragma once

#include "tela/ILembrancas.h"

#include <string>

namespace mesa {

// Who works with a window, as far as that matters to it.
struct QuemUsa {
    std::string Nome;                      // as it stands on what is printed
    Ref<ILembrancas> Lembrancas = nullptr; // nothing is remembered then
};

} // namespace mesa
