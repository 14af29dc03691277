#pragma once

namespace nativo {

// Tells by which members the foreign host reaches what the module hands to it: forms, controls, the application object,
// menu items and the fields of a transaction. Before the first of them goes out; telling it again changes nothing.
void OfereceObjetos();

} // namespace nativo
