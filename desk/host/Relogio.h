#pragma once

#include "host/Data.h"

namespace mesa {

// The moment it is, by the machine's clock and time zone.
Data Agora();

} // namespace mesa
