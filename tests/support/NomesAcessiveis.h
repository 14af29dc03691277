#pragma once

#include "host/Desenho.h"

#include <string>
#include <vector>

// Names of the described fields and buttons of which a screen reader could say nothing: without text of their own or
// before them, without a label right before them, and without a name for it.
std::vector<std::string> SemNomeAcessivel(const Desenho &desenho);
