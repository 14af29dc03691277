#pragma once

#include "controls/Botao.h"

class CommandButton : public Botao<ICommandButton> {
  public:
    CommandButton(const Ref<IForm> &form, const AjustesCommandButton &ajustes);

    bool Cancel() const override { return Cancelador(); }
    Evento<> &Click() override { return m_Click; }

  private:
    void Executa() override;

    Evento<> m_Click;
};
