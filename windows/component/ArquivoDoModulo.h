#pragma once

#include <string>

namespace nativo {

// Path of the file that this code is in: the component's library, wherever its host lies.
std::wstring ArquivoDoModulo();

} // namespace nativo
