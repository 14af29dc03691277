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

template <class C, class Ajustes> Ref<C> FabricaControles::Cria(const Ref<IForm> &form, const Ajustes &ajustes)
{
    Ref<C> controle = Novo<C>(form, ajustes);
    m_CriouControle.dispara(controle);
    return controle;
}

Ref<ILabel> FabricaControles::CriaLabel(const Ref<IForm> &form, const AjustesControle &ajustes)
{
    return Cria<Label>(form, ajustes);
}

Ref<IImage> FabricaControles::CriaImage(const Ref<IForm> &form, const AjustesControle &ajustes)
{
    return Cria<Image>(form, ajustes);
}

Ref<IztFrame> FabricaControles::CriaZtFrame(const Ref<IForm> &form, const AjustesControle &ajustes)
{
    return Cria<ztFrame>(form, ajustes);
}

Ref<ITextBox> FabricaControles::CriaTextBox(const Ref<IForm> &form, const AjustesTextBox &ajustes)
{
    return Cria<TextBox>(form, ajustes);
}

Ref<ICheckBox> FabricaControles::CriaCheckBox(const Ref<IForm> &form, const AjustesControle &ajustes)
{
    return Cria<CheckBox>(form, ajustes);
}

Ref<IOptionButton> FabricaControles::CriaOptionButton(const Ref<IForm> &form, const AjustesControle &ajustes)
{
    return Cria<OptionButton>(form, ajustes);
}

Ref<ICommandButton> FabricaControles::CriaCommandButton(const Ref<IForm> &form, const AjustesCommandButton &ajustes)
{
    return Cria<CommandButton>(form, ajustes);
}

Ref<ISSTab> FabricaControles::CriaSSTab(const Ref<IForm> &form, const AjustesSSTab &ajustes)
{
    return Cria<SSTab>(form, ajustes);
}

Ref<ICommonDialog> FabricaControles::CriaCommonDialog(const Ref<IForm> &form, const AjustesControle &ajustes)
{
    return Cria<CommonDialog>(form, ajustes);
}

Ref<IztList> FabricaControles::CriaZtList(const Ref<IForm> &form, const AjustesZtList &ajustes)
{
    return Cria<ztList>(form, ajustes);
}

Ref<IztCombo> FabricaControles::CriaZtCombo(const Ref<IForm> &form, const AjustesZtCombo &ajustes)
{
    return Cria<ztCombo>(form, ajustes);
}

Ref<IztMask> FabricaControles::CriaZtMask(const Ref<IForm> &form, const AjustesZtMask &ajustes)
{
    return Cria<ztMask>(form, ajustes);
}

Ref<IztData> FabricaControles::CriaZtData(const Ref<IForm> &form, const AjustesControle &ajustes)
{
    return Cria<ztData>(form, ajustes);
}

Ref<IztCommand> FabricaControles::CriaZtCommand(const Ref<IForm> &form, const AjustesZtCommand &ajustes)
{
    return Cria<ztCommand>(form, ajustes);
}

Ref<IztVeiObservacao> FabricaControles::CriaZtVeiObservacao(const Ref<IForm> &form, const AjustesTextBox &ajustes)
{
    return Cria<ztVeiObservacao>(form, ajustes);
}

Ref<IztEndereco> FabricaControles::CriaZtEndereco(const Ref<IForm> &form, const AjustesZtEndereco &ajustes)
{
    return Cria<ztEndereco>(form, ajustes);
}

Ref<IztClienteSetor> FabricaControles::CriaZtClienteSetor(const Ref<IForm> &form, const AjustesControle &ajustes)
{
    return Cria<ztClienteSetor>(form, ajustes);
}
