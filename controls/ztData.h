#pragma once

#include "controls/CampoDigitavel.h"
#include "host/IztData.h"

class ztData : public CampoDigitavel<IztData> {
  public:
    explicit ztData(const Origem &origem);

    std::string Valor() const override;
    void DefineText(const std::string &valor) override;
    bool DataValida() const override;
    bool ReadOnly() const override { return SomenteLeitura(); }
    void DefineReadOnly(bool valor) override { DefineSomenteLeitura(valor); }

    // A year of two digits becomes the year that the platform reads in it.
    void Conclui() override;
};
