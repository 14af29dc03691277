#pragma once

namespace nativo {

// Puts the boundary between the module and the scripted host, before the first of its objects is offered.
void LigaTravessia();

} // namespace nativo
