#include "controls/CommandButton.h"

CommandButton::CommandButton(const Origem &origem)
    : Botao(origem, origem.Ajustes<AjustesCommandButton>().Default, origem.Ajustes<AjustesCommandButton>().Cancel)
{
}

void CommandButton::Executa()
{
    m_Click.dispara();
}
