#pragma once

#include "host/Data.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace mesa {

// Limits of the records, refused with a sentence that names the field. membro: the record's member.
namespace Conferencia {

// Longest text in characters. Text that is not UTF-8, or has control characters, is refused too.
void Texto(std::string_view membro, const std::string &valor, std::size_t limite);
void Obrigatorio(std::string_view membro, const std::string &valor);
void Faixa(std::string_view membro, std::int64_t valor, std::int64_t de, std::int64_t ate);
// A day of the calendar; no date is refused.
void Dia(std::string_view membro, Data valor);
// HHMM, both, and the first not after the second.
void Horario(std::int32_t inicio, std::int32_t fim);

// The field as a sentence names it: O campo "código".
std::string Campo(std::string_view membro);
// A number that came from outside, for a sentence.
std::string Numero(double numero);

} // namespace Conferencia

} // namespace mesa
