#pragma once

#include <functional>
#include <string>

namespace mesa {

// What a work that may take long tells on its way: the part that is done, 0 to 1, and what is being looked at. False
// gives the work up.
using Segue = std::function<bool(double parte, const std::string &oQue)>;

} // namespace mesa
