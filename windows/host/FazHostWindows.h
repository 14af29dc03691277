#pragma once

#include "host/HostServices.h"

namespace nativo {

// The host of the component in a Windows application, to be installed before the module's first object is created.
Ref<HostServices> FazHostWindows();

} // namespace nativo
