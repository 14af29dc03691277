#pragma once

#include "controls/CampoDigitavel.h"
#include "host/IztOutros.h"

class ztVeiObservacao : public CampoDigitavel<IztVeiObservacao> {
  public:
    ztVeiObservacao(const Ref<IForm> &form, const AjustesTextBox &ajustes);

    bool Locked() const override { return SomenteLeitura(); }
    void DefineLocked(bool valor) override { DefineSomenteLeitura(valor); }
    // Characters; 0 for no limit.
    std::int32_t MaxLength() const { return m_MaxLength; }

  private:
    std::int32_t m_MaxLength;
};
