#pragma once

#include "services/Dialeto.h"

namespace mesa {

// From version 1, whose tables took any type and value, to version 2: every table is made again and its rows are
// written into it one by one, so that each meets what its columns demand; the history becomes a chain, in which the
// rows of all tables are written down as they are found. esquema: statements that make the tables of version 2.
Migracao ParaVersao2(const std::vector<QString> &esquema);

} // namespace mesa
