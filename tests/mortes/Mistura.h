#pragma once

#include "tests/mortes/Cenario.h"

#include <string>
#include <vector>

namespace mortes {

// Operations of every kind by several operators at once, half of them at each server, so many in all: new equipment,
// changes of one that all of them count on, documents, days, deactivations, searches, looks. What of the sums is not as
// it has to be, a sentence each.
std::vector<std::string> Mistura(Cenario &cenario, int operacoes);

} // namespace mortes
