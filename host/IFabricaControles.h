#pragma once

#include "host/IControlesPadrao.h"
#include "host/IForm.h"
#include "host/IztCombo.h"
#include "host/IztData.h"
#include "host/IztList.h"
#include "host/IztMask.h"
#include "host/IztOutros.h"

// Creates the controls of a form, each with its stored settings. The form keeps them; a control knows its form
// without owning it.
class IFabricaControles : public Objeto {
  public:
    virtual Ref<ILabel> CriaLabel(const Ref<IForm> &form, const AjustesControle &ajustes) = 0;
    virtual Ref<IImage> CriaImage(const Ref<IForm> &form, const AjustesControle &ajustes) = 0;
    virtual Ref<IztFrame> CriaZtFrame(const Ref<IForm> &form, const AjustesControle &ajustes) = 0;
    virtual Ref<ITextBox> CriaTextBox(const Ref<IForm> &form, const AjustesTextBox &ajustes) = 0;
    virtual Ref<ICheckBox> CriaCheckBox(const Ref<IForm> &form, const AjustesControle &ajustes) = 0;
    virtual Ref<IOptionButton> CriaOptionButton(const Ref<IForm> &form, const AjustesControle &ajustes) = 0;
    virtual Ref<ICommandButton> CriaCommandButton(const Ref<IForm> &form, const AjustesCommandButton &ajustes) = 0;
    virtual Ref<ISSTab> CriaSSTab(const Ref<IForm> &form, const AjustesSSTab &ajustes) = 0;
    virtual Ref<ICommonDialog> CriaCommonDialog(const Ref<IForm> &form, const AjustesControle &ajustes) = 0;
    virtual Ref<IztList> CriaZtList(const Ref<IForm> &form, const AjustesZtList &ajustes) = 0;
    virtual Ref<IztCombo> CriaZtCombo(const Ref<IForm> &form, const AjustesZtCombo &ajustes) = 0;
    virtual Ref<IztMask> CriaZtMask(const Ref<IForm> &form, const AjustesZtMask &ajustes) = 0;
    virtual Ref<IztData> CriaZtData(const Ref<IForm> &form, const AjustesControle &ajustes) = 0;
    virtual Ref<IztCommand> CriaZtCommand(const Ref<IForm> &form, const AjustesZtCommand &ajustes) = 0;
    virtual Ref<IztVeiObservacao> CriaZtVeiObservacao(const Ref<IForm> &form, const AjustesTextBox &ajustes) = 0;
    virtual Ref<IztEndereco> CriaZtEndereco(const Ref<IForm> &form, const AjustesZtEndereco &ajustes) = 0;
    virtual Ref<IztClienteSetor> CriaZtClienteSetor(const Ref<IForm> &form, const AjustesControle &ajustes) = 0;
};
