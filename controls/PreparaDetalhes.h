#pragma once

#include "host/IForm.h"

// Makes a form read-only for details mode: nothing can be typed or chosen any more. Buttons, lists, labels, frames and
// tab strips stay as they are.
void PreparaDetalhes(const Ref<IForm> &form);
