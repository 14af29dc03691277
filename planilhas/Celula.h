#pragma once

#include "host/Data.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace planilhas {

enum class TipoDeCelula { Vazia, Texto, Numero, Data, DataHora, Hora, Logico, Erro };

// What stands in a cell of a table.
struct Celula {
    TipoDeCelula Tipo = TipoDeCelula::Vazia;
    // Of a text, the text in UTF-8. Of a number, its decimal notation with a point, without an exponent, as exact as
    // the file has it. Of an error, its name there.
    std::string Texto;
    // Of a date, a moment or a time; what is not told is zero. The hour of a time may be beyond 23: then it is a
    // duration.
    PartesData Momento;
    // Of a truth value.
    bool Verdade = false;
    // The rest is what was kept of a formula's result; a formula without one is an empty cell that is told as a
    // formula.
    bool Formula = false;

    bool operator==(const Celula &) const = default;

    // Neither a value nor a formula.
    bool Nada() const { return Tipo == TipoDeCelula::Vazia && !Formula; }
};

using Linha = std::vector<Celula>;

// An empty text is an empty cell.
Celula CelulaDeTexto(std::string texto);
// Fault 5 when the text is no number as NumeroDecimal takes it.
Celula CelulaDeNumero(std::string_view texto);
// Fault 5 for infinities and what is no number.
Celula CelulaDeNumero(double valor);
// Fault 5 for a day that does not exist.
Celula CelulaDeData(int dia, int mes, int ano);
// Fault 5 for a moment that does not exist.
Celula CelulaDeDataHora(const PartesData &momento);
// From 0; minutes and seconds up to 59, else fault 5.
Celula CelulaDeHora(int hora, int minuto, int segundo);
Celula CelulaLogica(bool verdade);
Celula CelulaDeErro(std::string nome);

// The number in plain decimal notation: sign, digits, point. An exponent is written out, zeros in front go, those
// behind stay. Nothing when the text is no number, or one beyond 400 digits on either side of the point.
std::optional<std::string> NumeroDecimal(std::string_view texto);

// The same number with the few digits that tell it from every other binary number, as programs show it: a file that
// keeps 5.3 as 5.2999999999999998 says 5.3. What no program writes of a binary number stays: a number with fewer or
// more digits than such a file has (16 or 17), one whose digits are not those of a binary number, as
// 0.99999999999999999, and a whole number.
std::string SemSobraBinaria(std::string decimal);

// The cell as a person writes it in Brazil: dd/mm/aaaa, hh:mm, with :ss unless they are none, "Verdadeiro" or "Falso".
// virgula: what stands between the whole and the rest of a number.
std::string TextoDaCelula(const Celula &celula, char virgula = ',');

} // namespace planilhas
