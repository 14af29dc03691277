#pragma once

#include <string_view>

// Whether what a key types goes to the combo, which finds the item; everything else a key may do in a combo, such as
// the arrows, is the screen layer's own. A key with Ctrl or Alt types nothing.
bool EhLetraDeCombo(std::string_view digitado);
