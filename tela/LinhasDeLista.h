#pragma once

#include "controls/ztList.h"

#include <cstdint>
#include <functional>
#include <string>

// What a screen says of a list's rows, and what it asks of a person on the way to more of them.

// How many are loaded, how many of them are seen, whether there are more, and what the order covers. Empty for a list
// without rows.
std::string RodapeDaLista(const ztList &lista);

// What a screen gives for the way to all rows.
struct TelaDaCarga {
    std::function<bool(const std::string &)> Pergunta; // yes or no
    // Shows how far it has come; false: the person has had enough.
    std::function<bool(const std::string &)> Segue;
};

// The person sorts a list, as ztList::OrdenaPor. When it has more rows than are loaded the person is told, and may have
// the others loaded before; once they have said no, or given up on the way, not again for these rows.
void OrdenaLista(const Ref<ztList> &lista, std::int32_t coluna, const TelaDaCarga &tela);

// How a person left the order of a list, to be remembered; empty when it has none.
std::string OrdemLembrada(const ztList &lista);
// Sorts the list so again. What makes no sense counts for nothing.
void LembraOrdem(ztList &lista, const std::string &texto);
