#pragma once

#include <cstdint>

namespace mesa {

// An active calibration, as far as it matters for the days on which it is in force.
struct PeriodoDaAfericao {
    std::int32_t De = 0; // its first and its last civil day, yyyymmdd: both are its own
    std::int32_t Ate = 0;
    bool ComDocumento = false;
};

// How a calibration stands to a day.
enum class Alcance {
    EmVigor,
    SemDocumento, // the day is its own, and there is nothing to prove it by
    NaoComecou,
    Acabou
};

// What is in force on a civil day is decided here and nowhere else: for a notice of infraction as for the deadlines.
Alcance AlcanceNoDia(const PeriodoDaAfericao &afericao, std::int32_t dia);

} // namespace mesa
