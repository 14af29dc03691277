#pragma once

#include "controls/Controle.h"
#include "host/IControlesPadrao.h"

class Label : public Controle<ILabel> {
  public:
    Label(const Ref<IForm> &form, const AjustesControle &ajustes);
};
