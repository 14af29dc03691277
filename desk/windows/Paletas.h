#pragma once

#include "desk/windows/Cores.h"

namespace mesa {

// The desk's own, for a system whose palette is not as its user wishes.
QPalette PaletaClara();
QPalette PaletaEscura();
// What of a palette of the system has to change so that everything can be read: only these roles are set in it.
QPalette Retoques(const QPalette &paleta);

} // namespace mesa
