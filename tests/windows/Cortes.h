#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace nativo {

// What is wrong with a window's children as they stand: texts that are cut, children over one another or outside of
// their window.
std::vector<std::string> Cortes(HWND janela);

} // namespace nativo
