#pragma once

#include "services/Instante.h"

namespace mesa {

// The moment it is, by the machine's clock, with the offset of its time zone.
Instante Agora();

} // namespace mesa
