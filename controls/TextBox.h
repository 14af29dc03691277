#pragma once

#include "controls/CampoDigitavel.h"
#include "host/IControlesPadrao.h"

class TextBox : public CampoDigitavel<ITextBox> {
  public:
    TextBox(const Ref<IForm> &form, const AjustesTextBox &ajustes);

    bool Locked() const override { return SomenteLeitura(); }
    void DefineLocked(bool valor) override { DefineSomenteLeitura(valor); }
    std::int32_t MaxLength() const override { return m_MaxLength; }

  private:
    std::int32_t m_MaxLength;
};
