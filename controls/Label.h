#pragma once

#include "controls/Controle.h"
#include "host/IControlesPadrao.h"

class Label : public Controle<ILabel> {
  public:
    using Controle::Controle;
};
