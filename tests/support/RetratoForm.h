#pragma once

#include "host/IForm.h"

#include <string>
#include <vector>

// A form's controls as text, one line each in the order of creation: kind, name, container and page, caption, label
// beside it, then what differs from a plain control of that kind. For example
//   ztMask txtVelocPerm em fraVelocPerm, rotulo "Veloc. Permitida:", max 3, tipo 1
//   SSTab sstDados ["Geral", "Opções" oculta]
// What was typed, chosen or filled in is left out, except that a box is checked or an option is on.
std::vector<std::string> Retrato(const Ref<IForm> &form);

// The line of one control.
std::string RetratoControle(const Ref<IControle> &controle);
