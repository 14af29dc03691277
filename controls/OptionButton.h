#pragma once

#include "controls/Clicavel.h"
#include "controls/Controle.h"
#include "host/IControlesPadrao.h"

class OptionButton : public Controle<IOptionButton>, public Clicavel {
  public:
    using Controle::Controle;

    bool Value() const override { return m_Value; }
    void DefineValue(bool valor) override;
    Evento<> &Click() override { return m_Click; }

    // Switches it on; nothing happens when it is on.
    bool Clica() override;

  private:
    bool m_Value = false;
    Evento<> m_Click;
};
