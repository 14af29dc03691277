#pragma once

#include "controls/Botao.h"
#include "host/IztOutros.h"

class ztCommand : public Botao<IztCommand> {
  public:
    explicit ztCommand(const Origem &origem);

    Evento<bool &> &ValidaClick() override { return m_ValidaClick; }
    Evento<> &Click() override { return m_Click; }

  private:
    void Executa() override;

    bool m_LockFormOnClick;
    Evento<bool &> m_ValidaClick;
    Evento<> m_Click;
};
