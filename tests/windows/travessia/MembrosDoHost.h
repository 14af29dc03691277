#pragma once

namespace nativo {

// The members of the host's classes, by the names under which the component calls them. Told before the first object is
// offered.
void OfereceAplicacao();
void OfereceSessao();
void OfereceGateway();
void OfereceServicos();
void OfereceMenus();

} // namespace nativo
