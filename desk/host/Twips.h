#pragma once

#include <cstdint>

namespace mesa {

// The contract measures in twips, the screen in pixels.
inline constexpr int TwipsPorPixel = 15;

inline int Pixels(std::int32_t twips)
{
    return twips / TwipsPorPixel;
}

} // namespace mesa
