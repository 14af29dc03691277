#pragma once

#include "controls/Controle.h"
#include "host/IControlesPadrao.h"

class Image : public Controle<IImage> {
  public:
    using Controle::Controle;
};
