#include "controls/TextBox.h"

#include "controls/TextoLimitado.h"

TextBox::TextBox(const Ref<IForm> &form, const AjustesTextBox &ajustes)
    : CampoDigitavel(form, ajustes, EspecieControle::TextBox,
                     std::make_unique<TextoLimitado>(static_cast<std::size_t>(ajustes.MaxLength), nullptr, false)),
      m_MaxLength(ajustes.MaxLength)
{
    m_Texto->Escreve(ajustes.Text);
}
