#include "controls/ztVeiObservacao.h"

#include "controls/TextoLimitado.h"

ztVeiObservacao::ztVeiObservacao(const Origem &origem)
    : CampoDigitavel(origem,
                     std::make_unique<TextoLimitado>(
                         static_cast<std::size_t>(origem.Ajustes<AjustesZtVeiObservacao>().MaxLength), nullptr, false)),
      m_MaxLength(origem.Ajustes<AjustesZtVeiObservacao>().MaxLength)
{
}

void ztVeiObservacao::DefineText(const std::string &valor)
{
    CampoDigitavel::DefineText(m_MaxLength > 0 ? ::Left(valor, static_cast<std::size_t>(m_MaxLength)) : valor);
}
