#pragma once

#include "host/Ref.h"

// Whatever can get the focus: a control or a form.
class IFocavel : public Objeto {
  public:
    // Whether it reacts to the person. Own flag only, whatever its container says.
    virtual bool Enabled() const = 0;
    virtual void DefineEnabled(bool valor) = 0;
    // Whether it is to be seen. Own flag only, whatever its container says.
    virtual bool Visible() const = 0;
    virtual void DefineVisible(bool valor) = 0;
    // Gives it the focus. Fault 5 when it, or what contains it, is disabled or hidden; a page of a tab strip that is not
    // the current one hides what is on it. Only a control's form may be disabled: a button that locks the form while it
    // runs can still lead the person to a field. Fault 438 on a kind of control that has no focus.
    virtual void SetFocus() = 0;
};
