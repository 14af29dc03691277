#pragma once

#include "host/Data.h"

#include <cstdint>
#include <functional>

namespace mesa {

// A moment by the clock of the place, with that clock's offset.
struct Instante {
    Instante(Data local, std::int32_t fuso = 0) : Local(local), Fuso(fuso) {}

    Data Local;
    std::int32_t Fuso; // minutes that the clock of the place is ahead of UTC

    // The moment in UTC, as a number that reads yyyymmddhhmmss.
    std::int64_t Utc() const;
    // The same moment by a clock with that offset.
    Instante NoFuso(std::int32_t fuso) const;
};

using Relogio = std::function<Instante()>;

} // namespace mesa
