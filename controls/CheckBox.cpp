#include "controls/CheckBox.h"

void CheckBox::DefineValue(std::int16_t valor)
{
    if (valor != 0 && valor != 1) {
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }
    if (m_Value == valor) {
        return;
    }
    Ref<IControle> vivo = Vivo();
    m_Value = valor;
    Mudou().dispara();
    m_Click.dispara();
}

bool CheckBox::Clica()
{
    Ref<IControle> vivo = Vivo();
    if (!Foco() || !Usavel()) {
        return false;
    }
    DefineValue(m_Value == 0 ? 1 : 0);
    return true;
}
