#include "controls/OptionButton.h"

#include <vector>

void OptionButton::DefineValue(bool valor)
{
    if (m_Value == valor) {
        return;
    }
    Ref<IControle> vivo = Vivo();
    m_Value = valor;
    if (!valor) {
        Mudou().dispara();
        return;
    }
    // All values stand before anyone is told.
    std::vector<Ref<IControle>> desligadas;
    if (Ref<IForm> form = Form()) {
        for (const Ref<IControle> &controle : form->Controles()) {
            auto *outra = dynamic_cast<OptionButton *>(controle.Ponteiro());
            if (outra != nullptr && outra != this && outra->m_Value && outra->Container() == Container()) {
                outra->m_Value = false;
                desligadas.push_back(controle);
            }
        }
    }
    for (const Ref<IControle> &controle : desligadas) {
        ComoBase(controle)->Mudou().dispara();
    }
    Mudou().dispara();
    m_Click.dispara();
}

bool OptionButton::Clica()
{
    Ref<IControle> vivo = Vivo();
    if (!Foco() || !Usavel()) {
        return false;
    }
    DefineValue(true);
    return true;
}
