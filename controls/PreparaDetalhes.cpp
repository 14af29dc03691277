#include "controls/PreparaDetalhes.h"

#include "host/IControlesPadrao.h"
#include "host/IztCombo.h"
#include "host/IztData.h"
#include "host/IztMask.h"
#include "host/IztOutros.h"

void PreparaDetalhes(const Ref<IForm> &form)
{
    const std::vector<Ref<IControle>> controles = form->Controles();
    for (const Ref<IControle> &controle : controles) {
        switch (controle->Especie()) {
        case EspecieControle::TextBox:
            ComoTipo<ITextBox>(controle)->DefineLocked(true);
            break;
        case EspecieControle::ztVeiObservacao:
            ComoTipo<IztVeiObservacao>(controle)->DefineLocked(true);
            break;
        case EspecieControle::ztMask:
            ComoTipo<IztMask>(controle)->DefineReadOnly(true);
            break;
        case EspecieControle::ztData:
            ComoTipo<IztData>(controle)->DefineReadOnly(true);
            break;
        case EspecieControle::ztEndereco:
            ComoTipo<IztEndereco>(controle)->DefineReadOnly(true);
            break;
        case EspecieControle::ztCombo:
            ComoTipo<IztCombo>(controle)->DefineComboSomenteLeitura(true);
            break;
        case EspecieControle::CheckBox:
        case EspecieControle::OptionButton:
        case EspecieControle::ztClienteSetor:
            controle->DefineEnabled(false);
            break;
        case EspecieControle::Label:
        case EspecieControle::CommandButton:
        case EspecieControle::SSTab:
        case EspecieControle::Image:
        case EspecieControle::CommonDialog:
        case EspecieControle::ztList:
        case EspecieControle::ztCommand:
        case EspecieControle::ztFrame:
            break;
        }
    }
}
