#include "controls/Acionavel.h"

#include <vector>

void TiraPadraoDosOutros(const Ref<IForm> &form, const Acionavel &botao)
{
    if (!form) {
        return;
    }
    const std::vector<Ref<IControle>> controles = form->Controles();
    for (const Ref<IControle> &controle : controles) {
        auto *outro = dynamic_cast<Acionavel *>(controle.Ponteiro());
        if (outro != nullptr && outro != &botao) {
            outro->PerdePadrao();
        }
    }
}
