#pragma once

#include <windows.h>

#include <vector>

namespace nativo {

// All windows inside a window.
std::vector<HWND> FilhasDe(HWND janela);
// The windows of this thread that are in none.
std::vector<HWND> JanelasDesteFio();
// The keyboard goes to a window of this thread: in front of all others when this application is, and without taking the
// place of another one.
void DaVez(HWND janela);

} // namespace nativo
