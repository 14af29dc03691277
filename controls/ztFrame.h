#pragma once

#include "controls/Controle.h"
#include "host/IControlesPadrao.h"

class ztFrame : public Controle<IztFrame> {
  public:
    ztFrame(const Ref<IForm> &form, const AjustesControle &ajustes);
};
