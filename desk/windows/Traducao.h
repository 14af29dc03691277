#pragma once

class QObject;

namespace mesa {

// The toolkit's own windows speak Portuguese as long as dono lives.
void Traduz(QObject &dono);

} // namespace mesa
