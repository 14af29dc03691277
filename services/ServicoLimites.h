#pragma once

#include "host/EquiptoED.h"
#include "services/Operacao.h"
#include "services/ServicoEquipamentos.h"

#include <cstdint>
#include <string>
#include <vector>

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

    Ref<LimiteDifED> ConsultaLimite(const LimiteDifED &pedido);
    Ref<DiaEspecificoED> ConsultaDia(const DiaEspecificoED &pedido);

    // All rows of the list: with a number they change, without one they are new. None of them is stored if one is
    // refused.
    void AlteraLimites(EquiptoED &pedido);
    void AdicionaDia(DiaEspecificoED &pedido);
    void AlteraDia(DiaEspecificoED &pedido);

    void DesativaLimite(LimiteDifED &pedido);
    void DesativaDia(DiaEspecificoED &pedido);

  private:
    template <class R> struct Gravado {
        Ref<R> Registro;
        std::int64_t Versao = 0;
    };

    // A row as it was sent, and as it is to be stored; without a number it is new.
    template <class R> struct Pedida {
        R *Enviada = nullptr;
        Ref<R> Depois;
        std::int64_t Versao = 0;
        bool Muda = false;
    };

    template <class R> Gravado<R> Acha(std::int32_t nroInt) const;
    template <class R> Ref<R> ConsultaLinha(std::int32_t nroInt);
    template <class R> ListaDe<R> Ativos(std::int32_t nroIntEquip, const QString &filtro, const QVariantList &valores);
    template <class R> Pedida<R> Nova(R &pedido) const;
    template <class R> Pedida<R> Mudada(R &pedido) const;
    template <class R> void Grava(std::vector<Pedida<R>> &pedidas);
    template <class R> void Escreve(Pedida<R> &pedida);
    template <class R> void Desativa(R &pedido);
    template <class R> void ConfereSobreposicao(const R &linha) const;
    template <class R> EquipamentoGravado ConfereEquipamento(const R &linha) const;
    // Whether the equipment works with rows of this kind.
    template <class R> void ConfereEspecie(const EquipamentoGravado &equipamento, const R &linha) const;
    template <class R> void ConfereAtivo(const R &linha) const;
    template <class R> void Registra(const char *acao, std::int32_t numero, std::int64_t versao);

    Operacao &m_Operacao;
};

} // namespace mesa
