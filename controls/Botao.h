#pragma once

#include "controls/Acionavel.h"
#include "controls/Controle.h"
#include "host/IControlesPadrao.h"

// What both kinds of button share.
template <class Contrato> class Botao : public Controle<Contrato>, public Acionavel {
  public:
    bool Default() const override { return m_Default; }
    void DefineDefault(bool valor) override
    {
        Ref<IControle> vivo = this->Vivo();
        if (valor) {
            TiraPadraoDosOutros(this->Form(), *this);
        }
        this->Redefine(m_Default, valor);
    }

    bool Clica() override
    {
        Ref<IControle> vivo = this->Vivo();
        return this->Foco() && Aciona();
    }
    bool Aciona() override
    {
        Ref<IControle> vivo = this->Vivo();
        if (!this->Usavel()) {
            return false;
        }
        Executa();
        return true;
    }
    bool Padrao() const override { return m_Default; }
    bool Cancelador() const override { return m_Cancel; }
    void PerdePadrao() override { this->Redefine(m_Default, false); }

  protected:
    Botao(const Origem &origem, bool padrao, bool cancela)
        : Controle<Contrato>(origem),
          m_Default(padrao),
          m_Cancel(cancela)
    {
        if (m_Default) {
            TiraPadraoDosOutros(origem.Form, *this);
        }
    }

    // Raises what a press raises.
    virtual void Executa() = 0;

  private:
    bool m_Default;
    bool m_Cancel;
};
