#pragma once

#include "host/HostServices.h"

namespace nativo {

// The host of the module inside the component: the classes of the foreign host and the native windows.
Ref<HostServices> FazHost();

} // namespace nativo
