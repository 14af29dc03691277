#pragma once

#include "services/Operacao.h"
#include "services/PrazosED.h"

#include <cstdint>

namespace mesa {

// The deadlines of the operator's client, by the rule in Prazos.h. Nothing of it is stored. The day is the civil one of
// the registry's time zone, which is the offset that it was made with, wherever it is asked from. A count reads every
// active equipment, whatever its history; a page reads as many as it takes to fill it.
class ServicoPrazos {
  public:
    static constexpr std::int32_t TamanhoPagina = 200;
    static constexpr std::int32_t MaisLidos = 20000; // equipment for one page: then it is given as it is
    static constexpr std::int32_t MaisFalhas = 100;  // that are told one by one
    static constexpr std::int32_t EquipamentosPorConferencia = 20;

    explicit ServicoPrazos(Operacao &operacao) : m_Operacao(operacao) {}

    Ref<PainelPrazosED> Painel(const PainelPrazosED &pedido);
    Ref<ListaPrazosED> Lista(const ListaPrazosED &pedido);
    Ref<DocumentosPrazosED> ConfereDocumentos(const DocumentosPrazosED &pedido);

  private:
    void Exige() const;
    Instante Agora() const;
    // As it was told before; the present moment where it was not.
    Instante Momento(const Campo<Data> &dito) const;
    void Completa(PrazoED &prazo) const;

    Operacao &m_Operacao;
};

} // namespace mesa
