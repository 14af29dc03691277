#pragma once

#include <string>
#include <string_view>

namespace nativo {

// Text crosses as UTF-16 and nothing of it is lost: a byte that is no part of well-formed UTF-8 travels as the
// surrogate U+DC00 + byte, and any other surrogate that is not one of a pair as the three bytes that its number would
// have.
std::wstring ParaUtf16(std::string_view texto);
std::string ParaUtf8(std::wstring_view texto);

} // namespace nativo
