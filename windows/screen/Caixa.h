#pragma once

#include "windows/screen/ContextoVisual.h"

#include <windows.h>

#include <string>

namespace nativo {

// The system's message box, with buttons in Portuguese whatever language the system speaks. The texts are shown as they
// are. tipo: icon, buttons and default button as the system's constants; returns the button that was pressed.
int MostraCaixa(const ContextoVisual &contexto, HWND dono, const std::wstring &texto, const std::wstring &titulo,
                UINT tipo);

} // namespace nativo
