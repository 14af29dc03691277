#pragma once

#include <QRect>

// The screens that the tests of the windows have, beside one another: the first one is as large as most are, the others
// are as small as they come. The last one is what is left of 1024x768 when everything is drawn twice as large.
namespace TelasDeTeste {

inline constexpr QRect Comum{0, 0, 1920, 1080};
inline constexpr QRect Larga{1920, 0, 1366, 768};
inline constexpr QRect Pequena{1920 + 1366, 0, 1024, 768};
inline constexpr QRect Ampliada{1920 + 1366 + 1024, 0, 512, 384};

} // namespace TelasDeTeste
