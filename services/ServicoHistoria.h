#pragma once

#include "services/Operacao.h"

#include <cstdint>
#include <vector>

namespace mesa {

// What the history tells of earlier moments. Nothing of what is told comes from the rows as they now stand.
class ServicoHistoria {
  public:
    explicit ServicoHistoria(Operacao &operacao) : m_Operacao(operacao) {}

    std::vector<VersaoAfericao> VersoesDaAfericao(double numero) const;
    // A state that the equipment really had: with the last entry of that moment or before it, and all that were written
    // before that one, whatever the clock showed.
    EquipamentoConhecido ComoConhecido(std::int32_t nroIntEquip, const Instante &quando) const;

  private:
    Operacao &m_Operacao;
};

} // namespace mesa
