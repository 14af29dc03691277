#pragma once

#include "controls/CampoDigitavel.h"
#include "host/IControlesPadrao.h"

class TextBox : public CampoDigitavel<ITextBox> {
  public:
    explicit TextBox(const Origem &origem);

    void DefineText(const std::string &valor) override;
    bool Locked() const override { return SomenteLeitura(); }
    void DefineLocked(bool valor) override { DefineSomenteLeitura(valor); }
    std::int32_t MaxLength() const override { return m_MaxLength; }

  private:
    std::int32_t m_MaxLength;
};
