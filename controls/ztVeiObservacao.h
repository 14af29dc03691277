#pragma once

#include "controls/CampoDigitavel.h"
#include "host/IztOutros.h"

class ztVeiObservacao : public CampoDigitavel<IztVeiObservacao> {
  public:
    explicit ztVeiObservacao(const Origem &origem);

    void DefineText(const std::string &valor) override;
    bool Locked() const override { return SomenteLeitura(); }
    void DefineLocked(bool valor) override { DefineSomenteLeitura(valor); }
    // Characters; 0 for no limit.
    std::int32_t MaxLength() const { return m_MaxLength; }

  private:
    std::int32_t m_MaxLength;
};
