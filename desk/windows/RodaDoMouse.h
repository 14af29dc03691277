#pragma once

class QCoreApplication;

namespace mesa {

// The wheel scrolls what is read, and changes nothing on the way: over a combo, a field with steps or a strip of tabs
// it is for the page that they are on. An open list scrolls as any other.
void AquietaRoda(QCoreApplication &aplicacao);

} // namespace mesa
