#pragma once

namespace comando {

// Of the program, as the build knows it.
const char *Versao();

} // namespace comando
