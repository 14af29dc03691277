#pragma once

#include "shell/Formulario.h"

namespace mesa {

// The desk's own window around a form of the module, as the module knows it: its frmParent. It draws nothing; who shows
// the form follows PediuFoco and PediuOrdem.
class Involucro : public Formulario {
  public:
    std::string_view NomeTipo() const override { return "frmFilha"; }
};

} // namespace mesa
