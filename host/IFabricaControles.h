#pragma once

#include "host/IControlesPadrao.h"
#include "host/IForm.h"
#include "host/IztCombo.h"
#include "host/IztData.h"
#include "host/IztList.h"
#include "host/IztMask.h"
#include "host/IztOutros.h"

class IFabricaControles : public Objeto {
  public:
    // Creates the control that a piece of the form's description tells, with its stored settings. The form keeps it; a
    // control knows its form without owning it. container: frame or tab strip that holds it; Nothing when the form
    // itself does. pagina: page of that tab strip, from 0; -1 when the container is none. Fault 5 for a mere
    // arrangement.
    virtual Ref<IControle> Cria(const Ref<IForm> &form, const Peca &peca, const Ref<IControle> &container,
                                std::int16_t pagina) = 0;
};
