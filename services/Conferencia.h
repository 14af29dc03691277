#pragma once

#include "host/Data.h"
#include "services/Esquema.h"
#include "services/MapaRegistro.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace mesa {

// Limits of the records, refused with a sentence that names the field. membro: the record's member.
namespace Conferencia {

// What the column takes. Text that is not UTF-8, or has control characters, is refused too.
void Coluna(const Esquema::Coluna &coluna, const QVariant &valor);
void Texto(const Esquema::Coluna &coluna, const std::string &valor);
// All members of the record by the columns of its table, but for those that the service writes by itself: the key, who
// changed it, and what refers to other tables, which is looked up and refused in other words.
template <class R> void Membros(std::string_view tabela, const R &registro);
// Something else than blanks.
void Obrigatorio(std::string_view membro, const std::string &valor);
void Faixa(std::string_view membro, std::int64_t valor, std::int64_t de, std::int64_t ate);
// A day of the calendar; no date is refused.
void Dia(std::string_view membro, Data valor);
// HHMM, both, and the first not after the second.
void Horario(std::int32_t inicio, std::int32_t fim);

// The field as a sentence names it: O campo "código".
std::string OCampo(std::string_view membro);
// A number that came from outside, for a sentence.
std::string Numero(double numero);
// The key that such a number is; 0, which no row has, when it can be none.
std::int64_t Chave(double numero);

template <class R> void Membros(std::string_view tabela, const R &registro)
{
    const Esquema::Tabela &declarada = *Esquema::Acha(tabela);
    registro.CadaMembro([&]<class T>(std::string_view nome, const Campo<T> &campo) {
        if constexpr (MapaRegistro::EhColuna<T>) {
            const Esquema::Coluna *coluna = declarada.Acha(nome);
            if (coluna == &declarada.Chave() || !coluna->Referencia.empty() || nome.ends_with("Trans")) {
                return;
            }
            if constexpr (std::is_same_v<T, Data>) {
                Dia(nome, campo.Valor());
            } else if constexpr (std::is_same_v<T, std::string>) {
                Texto(*coluna, campo.Valor());
            } else {
                Coluna(*coluna, MapaRegistro::ParaSql(campo.Valor()));
            }
        }
    });
}

} // namespace Conferencia

} // namespace mesa
