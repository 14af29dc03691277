#pragma once

#include "desk/host/Ficha.h"

#include <functional>
#include <string>
#include <vector>

namespace mesa {

class Preferencias;

// The settings of the computer's user, to be changed. preferencias: outlives the form. impressoras: those that there
// are. esquece: forgets what was remembered of who is at work; empty while nobody is.
Ficha FichaDasPreferencias(Preferencias &preferencias, const std::vector<std::string> &impressoras,
                           const std::function<void()> &esquece);

} // namespace mesa
