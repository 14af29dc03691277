#pragma once

#include <windows.h>

#include <vector>

namespace nativo {

// All windows inside a window.
std::vector<HWND> FilhasDe(HWND janela);
// The windows of this thread that are in none.
std::vector<HWND> JanelasDesteFio();

} // namespace nativo
