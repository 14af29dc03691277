#pragma once

#include "services/Operacao.h"
#include "services/PrazosED.h"

#include <cstdint>

namespace mesa {

// The deadlines of the operator's client on the day that it is: of its active equipment and their active sensors, by
// the rule in Prazos.h. Nothing of it is stored. A count reads every active equipment, whatever its history; a page
// reads as many as it takes to fill it.
class ServicoPrazos {
  public:
    static constexpr std::int32_t TamanhoPagina = 200;
    static constexpr std::int32_t MaisLidos = 20000; // equipment for one page: then it is given as short as it is
    static constexpr std::int32_t MaisFalhas = 100;  // that are told one by one

    explicit ServicoPrazos(Operacao &operacao) : m_Operacao(operacao) {}

    Ref<PainelPrazosED> Painel(const PainelPrazosED &pedido);
    Ref<ListaPrazosED> Lista(const ListaPrazosED &pedido);
    Ref<EstadosPrazoED> Estados(const EstadosPrazoED &pedido);

  private:
    void Exige() const;

    Operacao &m_Operacao;
};

} // namespace mesa
