#pragma once

#include "controls/CampoDigitavel.h"
#include "host/IztMask.h"

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
