#pragma once

#include "controls/ztCombo.h"

#include <string_view>

// Whether what a key types goes to the combo, which finds the item; everything else a key may do in a combo, such as
// the arrows, is the screen layer's own. A key with Ctrl or Alt types nothing.
bool EhLetraDeCombo(std::string_view digitado);

// What a key or the mouse does in a combo besides typing.
enum class AtoNoCombo {
    Abre, // the items
    Anda, // to another item
    Outro,
};

// One that is locked can be gone to and left, but neither opened nor led to another item.
bool ComboObedece(const ztCombo &combo, AtoNoCombo ato);
