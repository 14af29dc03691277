#pragma once

#include <windows.h>

#include <string>

namespace nativo {

// Puts what the screen shows of a window into <folder>/<name>.bmp, the folder being the environment's FIGURAS;
// without one nothing is kept. Answers how many colours the picture has: an empty one has one.
int Fotografa(HWND janela, const std::string &nome);

} // namespace nativo
