#pragma once

#include "controls/Clicavel.h"
#include "host/IForm.h"

// Person's face of a button.
class Acionavel : public Clicavel {
  public:
    // Pressed by a key of the form, Enter or Esc, which leaves the focus where it is.
    virtual bool Aciona() = 0;
    // The form's default button.
    virtual bool Padrao() const = 0;
    // The form's cancel button.
    virtual bool Cancelador() const = 0;
    virtual void PerdePadrao() = 0;
};

// A form has one default button at most: the others stop being it.
void TiraPadraoDosOutros(const Ref<IForm> &form, const Acionavel &botao);
