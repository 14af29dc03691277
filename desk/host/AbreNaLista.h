#pragma once

#include "desk/host/EquipamentosRecentes.h"
#include "host/IForm.h"

namespace mesa {

// Does in a list of equipment what a person would do to look at one: asks for its code, goes to its row and chooses
// Detalhes. Comes back when that was closed; false when the list does not show the equipment.
bool AbreNaLista(const Ref<IForm> &lista, const EquipamentoRecente &qual);

} // namespace mesa
