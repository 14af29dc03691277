#pragma once

#include <cstdint>

// Bytes in which yes and no travel in the remote records. Another byte is read as each record says.
namespace Indicador {
inline constexpr std::uint8_t Sim = 1;
inline constexpr std::uint8_t Nao = 2;
} // namespace Indicador
