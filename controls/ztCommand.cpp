#include "controls/ztCommand.h"

#include <utility>

namespace {

// Keeps a form disabled while it lives. Nothing keeps none.
class FormBloqueado {
  public:
    explicit FormBloqueado(Ref<IForm> form) : m_Form(std::move(form))
    {
        if (m_Form) {
            m_Enabled = m_Form->Enabled();
            m_Form->DefineEnabled(false);
        }
    }
    FormBloqueado(const FormBloqueado &) = delete;
    FormBloqueado &operator=(const FormBloqueado &) = delete;
    ~FormBloqueado()
    {
        if (m_Form) {
            IgnoraErro([&] { m_Form->DefineEnabled(m_Enabled); });
        }
    }

  private:
    Ref<IForm> m_Form;
    bool m_Enabled = true;
};

} // namespace

ztCommand::ztCommand(const Origem &origem)
    : Botao(origem, origem.Ajustes<AjustesZtCommand>().Default, false),
      m_LockFormOnClick(origem.Ajustes<AjustesZtCommand>().LockFormOnClick)
{
}

void ztCommand::Executa()
{
    FormBloqueado bloqueado(m_LockFormOnClick ? Form() : nullptr);
    bool cancela = false;
    m_ValidaClick.dispara(cancela);
    if (!cancela) {
        m_Click.dispara();
    }
}
