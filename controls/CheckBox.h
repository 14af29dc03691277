#pragma once

#include "controls/Clicavel.h"
#include "controls/Controle.h"
#include "host/IControlesPadrao.h"

class CheckBox : public Controle<ICheckBox>, public Clicavel {
  public:
    using Controle::Controle;

    std::int16_t Value() const override { return m_Value; }
    void DefineValue(std::int16_t valor) override;
    Evento<> &Click() override { return m_Click; }

    // Checks it when it is unchecked, unchecks it when it is checked.
    bool Clica() override;

  private:
    std::int16_t m_Value = 0;
    Evento<> m_Click;
};
