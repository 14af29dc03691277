#pragma once

#include "planilhas/Celula.h"

#include <optional>
#include <string>
#include <string_view>

namespace planilhas {

// What a number in a spreadsheet means by the format in which it is shown.
enum class SentidoDoNumero { Numero, Data, Hora, DataHora, Duracao };

// Of a format that has a number of its own instead of a code.
SentidoDoNumero SentidoDoFormato(int embutido);
// Of a format's code, as "dd/mm/yyyy" or "#,##0.00".
SentidoDoNumero SentidoDoFormato(std::string_view codigo);

// What a format's code puts digits into when it shows whole numbers with zeros in front, as "000000" and "00000\-000":
// a zero for each digit, and what stands between them. Empty for every other code.
std::string MascaraDoFormato(std::string_view codigo);
// The text that a number shows in such a format, as 000123. One that is negative or not whole stays a number.
Celula CelulaNaMascara(std::string_view decimal, const std::string &mascara);

// The cell that a number shows in such a format. One that is not in the calendar stays a number; a moment's seconds are
// rounded. Whatever a format leaves out is kept: a day with a time of day is a moment even where only its day is shown.
// decimal: the number, as NumeroDecimal gives it.
// desde1904: whether days count from 01/01/1904, and not from 01/01/1900 with a day 29/02/1900 that never was; a date
// on that day is a text.
Celula CelulaDoNumero(std::string_view decimal, SentidoDoNumero sentido, bool desde1904);

// The number that stands for a day or moment, counted from 1900, or for a time. Nothing for days before 1900.
std::optional<double> NumeroDaData(const Celula &celula);

} // namespace planilhas
