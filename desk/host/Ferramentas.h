#pragma once

#include "tela/DistincaoDeJanela.h"

#include <span>
#include <string>

namespace mesa {

// A tool of the module, as the desk offers it.
struct Ferramenta {
    std::string Nome; // by which the module knows it
    std::string NoMenu;
    std::string Atalho;
    DistincaoDeJanela Qual; // of the windows that it opens
};

// In the order of the menu.
std::span<const Ferramenta> Ferramentas();

} // namespace mesa
