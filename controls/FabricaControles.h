#pragma once

#include "host/IFabricaControles.h"

// Makes the controls of this folder.
class FabricaControles : public IFabricaControles {
  public:
    std::string_view NomeTipo() const override { return "FabricaControles"; }

    Ref<ILabel> CriaLabel(const Ref<IForm> &form, const AjustesControle &ajustes) override;
    Ref<IImage> CriaImage(const Ref<IForm> &form, const AjustesControle &ajustes) override;
    Ref<IztFrame> CriaZtFrame(const Ref<IForm> &form, const AjustesControle &ajustes) override;
    Ref<ITextBox> CriaTextBox(const Ref<IForm> &form, const AjustesTextBox &ajustes) override;
    Ref<ICheckBox> CriaCheckBox(const Ref<IForm> &form, const AjustesControle &ajustes) override;
    Ref<IOptionButton> CriaOptionButton(const Ref<IForm> &form, const AjustesControle &ajustes) override;
    Ref<ICommandButton> CriaCommandButton(const Ref<IForm> &form, const AjustesCommandButton &ajustes) override;
    Ref<ISSTab> CriaSSTab(const Ref<IForm> &form, const AjustesSSTab &ajustes) override;
    Ref<ICommonDialog> CriaCommonDialog(const Ref<IForm> &form, const AjustesControle &ajustes) override;
    Ref<IztList> CriaZtList(const Ref<IForm> &form, const AjustesZtList &ajustes) override;
    Ref<IztCombo> CriaZtCombo(const Ref<IForm> &form, const AjustesZtCombo &ajustes) override;
    Ref<IztMask> CriaZtMask(const Ref<IForm> &form, const AjustesZtMask &ajustes) override;
    Ref<IztData> CriaZtData(const Ref<IForm> &form, const AjustesControle &ajustes) override;
    Ref<IztCommand> CriaZtCommand(const Ref<IForm> &form, const AjustesZtCommand &ajustes) override;
    Ref<IztVeiObservacao> CriaZtVeiObservacao(const Ref<IForm> &form, const AjustesTextBox &ajustes) override;
    Ref<IztEndereco> CriaZtEndereco(const Ref<IForm> &form, const AjustesZtEndereco &ajustes) override;
    Ref<IztClienteSetor> CriaZtClienteSetor(const Ref<IForm> &form, const AjustesControle &ajustes) override;

    // A control was made and nobody has used it yet: the host connects here what the control needs of it.
    Evento<Ref<IControle>> &CriouControle() { return m_CriouControle; }

  private:
    template <class C, class Ajustes> Ref<C> Cria(const Ref<IForm> &form, const Ajustes &ajustes);

    Evento<Ref<IControle>> m_CriouControle;
};
