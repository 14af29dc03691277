#pragma once

#include <string>

namespace nativo {

// Path of the file that this code is in: the component's library, wherever its host lies.
std::wstring ArquivoDoModulo();
// A path without short names; as it is when there is no such file.
std::wstring PorExtenso(const std::wstring &caminho);

} // namespace nativo
