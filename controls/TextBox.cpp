#include "controls/TextBox.h"

#include "controls/TextoLimitado.h"

TextBox::TextBox(const Origem &origem)
    : CampoDigitavel(origem, std::make_unique<TextoLimitado>(
                                 static_cast<std::size_t>(origem.Ajustes<AjustesTextBox>().MaxLength), nullptr, false)),
      m_MaxLength(origem.Ajustes<AjustesTextBox>().MaxLength)
{
}

void TextBox::DefineText(const std::string &valor)
{
    CampoDigitavel::DefineText(m_MaxLength > 0 ? ::Left(valor, static_cast<std::size_t>(m_MaxLength)) : valor);
}
