#pragma once

#include "host/Data.h"

#include <cstdint>
#include <string>

namespace mesa {

// Days and moments as the registry stores them: numbers that read as they are written, yyyymmdd and yyyymmddhhmmss.

// The civil day, whatever its time of day; 0 for no date. Fault 6 outside the calendar.
std::int32_t DiaCivil(Data data);
Data DataDoDia(std::int32_t dia);
std::int64_t Momento(Data data);
// The moment so many minutes later; earlier when they are negative.
std::int64_t MaisMinutos(std::int64_t momento, std::int32_t minutos);

std::string TextoDoDia(std::int32_t dia);         // 20/11/2026
std::string TextoDoMomento(std::int64_t momento); // 20/11/2026 às 14:32:10
std::string TextoDaHora(std::int32_t hora);       // 07:30 for 730

} // namespace mesa
