#pragma once

#include "desk/services/Operacao.h"
#include "desk/services/ServicoEquipamentos.h"
#include "host/EquiptoED.h"

#include <cstdint>
#include <string>

namespace mesa {

// Differentiated limits, prohibited hours and specific days of an equipment, each row with a version of its own.
// Active rows of one equipment and kind may not overlap on the same day of the week, or on the same date: the same
// minute would have two limits. That one ends at the minute in which the next begins is no overlap.
class ServicoLimites {
  public:
    explicit ServicoLimites(Operacao &operacao) : m_Operacao(operacao) {}

    // Active ones of the equipment and kind, or of both kinds when none is told, by day and hour.
    Ref<EquiptoED> ListaLimites(const LimiteDifED &pedido);
    Ref<EquiptoED> ListaDias(const DiaEspecificoED &pedido);

    // The only readings that allow a change afterwards.
    Ref<LimiteDifED> ConsultaLimite(const LimiteDifED &pedido);
    Ref<DiaEspecificoED> ConsultaDia(const DiaEspecificoED &pedido);

    // All rows of the list: with a number they change, without one they are new. None of them is stored if one is
    // refused.
    void AlteraLimites(const EquiptoED &pedido);
    void AdicionaDia(const DiaEspecificoED &pedido);
    void AlteraDia(const DiaEspecificoED &pedido);

    void DesativaLimite(const LimiteDifED &pedido);
    void DesativaDia(const DiaEspecificoED &pedido);

  private:
    template <class R> struct Gravado {
        Ref<R> Registro;
        std::int64_t Versao = 0;
    };

    template <class R> Gravado<R> Acha(std::int32_t nroInt) const;
    template <class R> Ref<R> ConsultaLinha(std::int32_t nroInt);
    template <class R> ListaDe<R> Ativos(std::int32_t nroIntEquip, const QString &filtro, const QVariantList &valores);
    template <class R> Ref<R> Inclui(const R &pedido);
    template <class R> Ref<R> Altera(const R &pedido);
    template <class R> void Desativa(std::int32_t nroInt);
    template <class R> void ConfereSobreposicao(const R &linha) const;
    template <class R> EquipamentoGravado ConfereEquipamento(const R &linha) const;
    // Whether the equipment works with rows of this kind.
    template <class R> void ConfereEspecie(const EquipamentoGravado &equipamento, const R &linha) const;
    template <class R> void ConfereAtivo(const R &linha) const;
    template <class R> void Registra(const char *acao, std::int32_t numero, std::int64_t versao);

    Operacao &m_Operacao;
};

} // namespace mesa
