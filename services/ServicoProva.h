#pragma once

#include "services/Operacao.h"
#include "services/ProvaED.h"

#include <cstdint>

namespace mesa {

// What the registry can prove of an equipment as of a day, told by the history alone.
class ServicoProva {
  public:
    explicit ServicoProva(Operacao &operacao) : m_Operacao(operacao) {}

    // The same question about the same entry of the history has the same answer for ever, but for what is told of the
    // asking itself (EmitidoEm, EmitidoPor, Cabeca, EloDaCabeca) and for Posteriores, which grows at its end.
    Ref<ProvaED> Consulta(const ConsultaProvaED &pedido);

  private:
    std::int32_t NumeroDoEquipamento(const ConsultaProvaED &pedido) const;

    Operacao &m_Operacao;
};

} // namespace mesa
