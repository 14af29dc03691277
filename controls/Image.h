#pragma once

#include "controls/Controle.h"
#include "host/IControlesPadrao.h"

class Image : public Controle<IImage> {
  public:
    Image(const Ref<IForm> &form, const AjustesControle &ajustes);
};
