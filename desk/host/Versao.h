#pragma once

namespace mesa {

// Of the desk, as the build knows it.
const char *Versao();

} // namespace mesa
