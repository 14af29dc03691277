#pragma once

#include "controls/Controle.h"
#include "host/IControlesPadrao.h"

class ztFrame : public Controle<IztFrame> {
  public:
    using Controle::Controle;

    // Its ground has the system's button-face colour; that of what holds it otherwise.
    bool ComoBotao() const { return m_ComoBotao; }
    void PintaComoBotao() override { Redefine(m_ComoBotao, true); }

  private:
    bool m_ComoBotao = false;
};
