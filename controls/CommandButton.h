#pragma once

#include "controls/Botao.h"

class CommandButton : public Botao<ICommandButton> {
  public:
    explicit CommandButton(const Origem &origem);

    bool Cancel() const override { return Cancelador(); }
    Evento<> &Click() override { return m_Click; }

  private:
    void Executa() override;

    Evento<> m_Click;
};
