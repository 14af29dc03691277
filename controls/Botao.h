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
    Botao(const Ref<IForm> &form, const AjustesCommandButton &ajustes, EspecieControle especie)
        : Controle<Contrato>(form, ajustes, especie),
          m_Default(ajustes.Default),
          m_Cancel(ajustes.Cancel)
    {
        if (m_Default) {
            TiraPadraoDosOutros(form, *this);
        }
    }

    // Raises what a press raises.
    virtual void Executa() = 0;

  private:
    bool m_Default;
    bool m_Cancel;
};
