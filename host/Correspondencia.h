#pragma once

#include "host/Campo.h"
#include "host/Indicador.h"

#include <tuple>
#include <type_traits>

// Which member of a remote record carries which member of a record in memory. A table of such pairs, a constant tuple
// of Par, is read in both directions.

enum class Escreve {
    Sempre,
    SeHouver // a number above 0, anything else that is not empty; otherwise the member is left unset
};

template <class ED, class T, class R, class V> struct Par {
    Campo<T> ED::*NaViagem;
    V R::*NaMemoria;
    Escreve Regra = Escreve::Sempre;
};
template <class ED, class T, class R, class V> Par(Campo<T> ED::*, V R::*) -> Par<ED, T, R, V>;
template <class ED, class T, class R, class V> Par(Campo<T> ED::*, V R::*, Escreve) -> Par<ED, T, R, V>;

namespace DetalheCorrespondencia {

template <class V> bool Houve(const V &valor)
{
    if constexpr (std::is_arithmetic_v<V>) {
        return valor > 0;
    } else {
        return valor != V{};
    }
}

} // namespace DetalheCorrespondencia

// Takes over what travelled. A flag is yes for 1 alone.
template <const auto &Tabela, class R, class ED> void LeCampos(R &registro, const ED &ed)
{
    const auto le = [&]<class E, class T, class B, class V>(const Par<E, T, B, V> &par) {
        if constexpr (std::is_same_v<V, bool>) {
            registro.*par.NaMemoria = (ed.*par.NaViagem).Valor() == Indicador::Sim;
        } else {
            registro.*par.NaMemoria = (ed.*par.NaViagem).Valor();
        }
    };
    std::apply([&](const auto &...par) { (le(par), ...); }, Tabela);
}

// Writes what travels. A flag is 1 or 2.
template <const auto &Tabela, class R, class ED> void EscreveCampos(const R &registro, ED &ed)
{
    const auto escreve = [&]<class E, class T, class B, class V>(const Par<E, T, B, V> &par) {
        const V &valor = registro.*par.NaMemoria;
        if constexpr (std::is_same_v<V, bool>) {
            ed.*par.NaViagem = valor ? Indicador::Sim : Indicador::Nao;
        } else if (par.Regra == Escreve::Sempre || DetalheCorrespondencia::Houve(valor)) {
            ed.*par.NaViagem = valor;
        }
    };
    std::apply([&](const auto &...par) { (escreve(par), ...); }, Tabela);
}
