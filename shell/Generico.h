#pragma once

#include <cstdint>
#include <string>

// Name of a municipality by its code; empty for 0, without reading anything, and for a code that has no row.
std::string gFunBuscaDescrMunic(std::int32_t lCodMunic);
