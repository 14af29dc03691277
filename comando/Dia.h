#pragma once

#include "host/Data.h"

#include <string>

namespace comando {

// A day as 20/11/2026 or 2026-11-20, and an hour of it as 14:30 or 14:30:05; without one, its midnight. Nothing else is
// understood, so that no day is ever guessed: Fim with a sentence.
Data LeMomento(const std::string &dia, const std::string &hora);

} // namespace comando
