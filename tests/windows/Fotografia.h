#pragma once

#include <windows.h>

#include <string>

namespace nativo {

// Puts a picture of a window, as the screen shows it, into the folder of pictures beside the tests' programs.
void Fotografa(HWND janela, const std::string &nome);

} // namespace nativo
