#pragma once

#include "controls/CampoDigitavel.h"
#include "host/IztMask.h"

// The template of an hour mask.
inline const std::string &GabaritoDe(const AjustesZtMask &ajustes)
{
    static const std::string HoraEMinutos = "00:00";
    return ajustes.Mascara.empty() ? HoraEMinutos : ajustes.Mascara;
}

class ztMask : public CampoDigitavel<IztMask> {
  public:
    explicit ztMask(const Origem &origem);

    std::string Valor() const override;
    double ValorNumerico() const override;
    bool ReadOnly() const override { return SomenteLeitura(); }
    void DefineReadOnly(bool valor) override { DefineSomenteLeitura(valor); }

    const AjustesZtMask &Ajustes() const { return m_AjustesMask; }

  private:
    AjustesZtMask m_AjustesMask;
};
