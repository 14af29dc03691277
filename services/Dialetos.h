#pragma once

#include "services/Dialeto.h"

#include <memory>
#include <string>

namespace mesa {

// The dialect of the place: connection text of the networked database, or else a file of the embedded one.
std::unique_ptr<Dialeto> DialetoPara(const std::string &onde);

} // namespace mesa
