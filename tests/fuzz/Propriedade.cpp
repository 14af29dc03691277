#include "tests/fuzz/Propriedade.h"

#include <cstdlib>
#include <iostream>

void Exige(bool vale, std::string_view propriedade, std::string_view caso)
{
    if (!vale) {
        std::cerr << "broken: " << propriedade << (caso.empty() ? "" : ": ") << caso << std::endl;
        std::abort();
    }
}
