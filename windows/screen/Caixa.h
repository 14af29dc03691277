#pragma once

#include "tela/ICamada.h"
#include "windows/screen/ContextoVisual.h"

#include <windows.h>

#include <string>

namespace nativo {

// The system's boxes, with buttons in Portuguese whatever language the system speaks. All texts are shown as they are.

// True for yes; closing the box is no.
bool MostraPergunta(const ContextoVisual &contexto, HWND dono, const std::wstring &texto, const std::wstring &titulo,
                    bool padraoSim);
// detalhes: below the text; empty for none.
void MostraAviso(const ContextoVisual &contexto, HWND dono, TipoDeCaixa tipo, const std::wstring &texto,
                 const std::wstring &titulo, const std::wstring &detalhes);

} // namespace nativo
