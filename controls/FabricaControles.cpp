#include "controls/FabricaControles.h"

#include "controls/CheckBox.h"
#include "controls/CommandButton.h"
#include "controls/CommonDialog.h"
#include "controls/Image.h"
#include "controls/Label.h"
#include "controls/OptionButton.h"
#include "controls/SSTab.h"
#include "controls/TextBox.h"
#include "controls/ztClienteSetor.h"
#include "controls/ztCombo.h"
#include "controls/ztCommand.h"
#include "controls/ztData.h"
#include "controls/ztEndereco.h"
#include "controls/ztFrame.h"
#include "controls/ztList.h"
#include "controls/ztMask.h"
#include "controls/ztVeiObservacao.h"

namespace {

Ref<IControle> Faz(const Origem &origem)
{
    const auto especie = origem.Descricao.Especie();
    if (!especie) {
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }
    switch (*especie) {
    case EspecieControle::Label:
        return Novo<Label>(origem);
    case EspecieControle::TextBox:
        return Novo<TextBox>(origem);
    case EspecieControle::CheckBox:
        return Novo<CheckBox>(origem);
    case EspecieControle::OptionButton:
        return Novo<OptionButton>(origem);
    case EspecieControle::CommandButton:
        return Novo<CommandButton>(origem);
    case EspecieControle::SSTab:
        return Novo<SSTab>(origem);
    case EspecieControle::Image:
        return Novo<Image>(origem);
    case EspecieControle::CommonDialog:
        return Novo<CommonDialog>(origem);
    case EspecieControle::ztList:
        return Novo<ztList>(origem);
    case EspecieControle::ztCombo:
        return Novo<ztCombo>(origem);
    case EspecieControle::ztMask:
        return Novo<ztMask>(origem);
    case EspecieControle::ztData:
        return Novo<ztData>(origem);
    case EspecieControle::ztCommand:
        return Novo<ztCommand>(origem);
    case EspecieControle::ztFrame:
        return Novo<ztFrame>(origem);
    case EspecieControle::ztVeiObservacao:
        return Novo<ztVeiObservacao>(origem);
    case EspecieControle::ztEndereco:
        return Novo<ztEndereco>(origem);
    case EspecieControle::ztClienteSetor:
        return Novo<ztClienteSetor>(origem);
    }
    return {};
}

} // namespace

Ref<IControle> FabricaControles::Cria(const Ref<IForm> &form, const Peca &peca, const Ref<IControle> &container,
                                      std::int16_t pagina)
{
    Ref<IControle> controle = Faz({form, peca, container, pagina});
    m_CriouControle.dispara(controle);
    return controle;
}
