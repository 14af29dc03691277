#pragma once

#include "host/Data.h"
#include "tela/ILembrancas.h"

#include <functional>
#include <string>

namespace mesa {

// Who works with a window, as far as that matters to it.
struct QuemUsa {
    std::string Nome;                      // as it stands on what is printed
    Ref<ILembrancas> Lembrancas = nullptr; // nothing is remembered then
    std::function<Data()> Agora = {};      // the desk's clock
};

} // namespace mesa
