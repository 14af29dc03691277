#include "controls/CommandButton.h"

CommandButton::CommandButton(const Ref<IForm> &form, const AjustesCommandButton &ajustes)
    : Botao(form, ajustes, EspecieControle::CommandButton)
{
}

void CommandButton::Executa()
{
    m_Click.dispara();
}
