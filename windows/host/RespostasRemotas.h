#pragma once

#include <string_view>

namespace nativo {

// Class of the record that a remote operation answers; empty for one whose answer nobody fetches, or that is unknown.
std::string_view RespostaDa(std::string_view operacao) noexcept;

} // namespace nativo
