#include "tests/fuzz/Alvo.h"

#include "host/Conversoes.h"
#include "host/Data.h"
#include "host/LeituraData.h"
#include "host/Texto.h"
#include "tests/fuzz/Octetos.h"
#include "tests/fuzz/Propriedade.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Conversions between text, number and date: no faults but theirs, what comes back after a way there and back, and
// what has to hold between one conversion and another.

namespace {

// No fault but these.
template <class Comando>
void ExigeUmaDas(std::initializer_list<std::int32_t> boas, std::string_view conversao, std::string_view caso,
                 Comando &&comando)
{
    const std::int32_t numero = NumeroDaFalha(comando);
    Exige(numero == 0 || std::ranges::find(boas, numero) != boas.end(),
          std::string(conversao) + " raises " + std::to_string(numero), caso);
}

// Positions of the characters and the end, by the rule of UTF-8 written as a table of lead bytes and the bounds of the
// byte after them.
std::vector<std::size_t> Caracteres(std::string_view texto)
{
    std::vector<std::size_t> posicoes;
    const auto entre = [&](std::size_t onde, int menor, int maior) {
        return onde < texto.size() && static_cast<std::uint8_t>(texto[onde]) >= menor &&
               static_cast<std::uint8_t>(texto[onde]) <= maior;
    };
    for (std::size_t i = 0; i < texto.size();) {
        posicoes.push_back(i);
        const auto segue = [&](std::size_t quantos) {
            bool todos = true;
            for (std::size_t n = 2; n <= quantos; ++n) {
                todos = todos && entre(i + n, 0x80, 0xBF);
            }
            return todos;
        };
        if (entre(i, 0xC2, 0xDF) && entre(i + 1, 0x80, 0xBF)) {
            i += 2;
        } else if ((entre(i, 0xE0, 0xE0) && entre(i + 1, 0xA0, 0xBF) && segue(2)) ||
                   (entre(i, 0xED, 0xED) && entre(i + 1, 0x80, 0x9F) && segue(2)) ||
                   (entre(i, 0xE1, 0xEF) && !entre(i, 0xED, 0xED) && entre(i + 1, 0x80, 0xBF) && segue(2))) {
            i += 3;
        } else if ((entre(i, 0xF0, 0xF0) && entre(i + 1, 0x90, 0xBF) && segue(3)) ||
                   (entre(i, 0xF1, 0xF3) && entre(i + 1, 0x80, 0xBF) && segue(3)) ||
                   (entre(i, 0xF4, 0xF4) && entre(i + 1, 0x80, 0x8F) && segue(3))) {
            i += 4;
        } else {
            ++i;
        }
    }
    posicoes.push_back(texto.size());
    return posicoes;
}

void Textos(Octetos &octetos)
{
    const auto n = static_cast<std::size_t>(octetos.Ate(12));
    const auto inicio = static_cast<std::size_t>(octetos.Ate(12));
    const std::string separador = octetos.Texto(3);
    const std::string outro = octetos.Texto(3);
    const std::string texto = octetos.Resto();

    const std::vector<std::size_t> posicoes = Caracteres(texto);
    const std::size_t total = posicoes.size() - 1;
    const auto pedaco = [&](std::size_t de, std::size_t ate) {
        de = std::min(de, total);
        ate = std::min(ate, total);
        return texto.substr(posicoes[de], posicoes[ate] - posicoes[de]);
    };
    Exige(Len(texto) == total, "Len", texto);
    Exige(Left(texto, n) == pedaco(0, n), "Left", texto);
    Exige(Right(texto, n) == pedaco(total - std::min(n, total), total), "Right", texto);
    if (inicio == 0) {
        Exige(NumeroDaFalha([&] { Mid(texto, 0, n); }) == 5, "Mid from 0");
    } else {
        Exige(Mid(texto, inicio, n) == pedaco(inicio - 1, inicio - 1 + n), "Mid", texto);
        Exige(Left(texto, inicio - 1) + Mid(texto, inicio) == texto, "Left and Mid make the text", texto);
    }

    const std::string maiusculo = UCase(texto);
    const std::string minusculo = LCase(texto);
    Exige(Len(maiusculo) == total && Len(minusculo) == total, "the case changes letters one for one", texto);
    Exige(UCase(maiusculo) == maiusculo && LCase(minusculo) == minusculo, "the case is changed once", texto);
    Exige(LCase(maiusculo) == minusculo && UCase(minusculo) == maiusculo, "the cases are pairs", texto);
    Exige(IgualSemCaixa(maiusculo, minusculo) && IgualSemCaixa(texto, maiusculo), "the key has no case", texto);

    const std::string aparado = Trim(texto);
    Exige(aparado.empty() || (aparado.front() != ' ' && aparado.back() != ' '), "Trim leaves a blank", texto);
    Exige(texto.find(aparado) != std::string::npos && Trim(aparado) == aparado, "Trim", texto);

    const std::vector<std::string> pedacos = Divide(texto, separador);
    Exige(pedacos.empty() == texto.empty(), "Divide gives pieces of a text", texto);
    std::string emendado;
    for (std::size_t i = 0; i < pedacos.size(); ++i) {
        emendado += (i > 0 ? separador : "") + pedacos[i];
        Exige(separador.empty() || pedacos[i].find(separador) == std::string::npos, "a piece has no separator", texto);
    }
    Exige(emendado == texto, "the pieces make the text", texto);
    std::string trocado;
    for (std::size_t i = 0; i < pedacos.size(); ++i) {
        trocado += (i > 0 ? outro : "") + pedacos[i];
    }
    Exige(Substitui(texto, separador, outro) == (separador.empty() ? texto : trocado), "Substitui", texto);
}

// The value is the whole number, or fault 6 where the type does not hold it.
template <class Inteiro, class Conversao>
void ExigeInteiro(double valor, std::string_view qual, const std::string &caso, Conversao &&converte)
{
    const double piso = std::floor(valor);
    const double resto = valor - piso;
    const bool sobe = resto > 0.5 || (resto == 0.5 && std::fmod(piso, 2) != 0);
    const double esperado = piso + (sobe ? 1 : 0);
    const bool cabe =
        esperado >= std::numeric_limits<Inteiro>::min() && esperado <= std::numeric_limits<Inteiro>::max();
    const std::int32_t falha = NumeroDaFalha([&] { Exige(static_cast<double>(converte()) == esperado, qual, caso); });
    Exige(falha == (cabe ? 0 : 6), std::string(qual) + " raises " + std::to_string(falha), caso);
}

void NumeroDeTexto(Octetos &octetos)
{
    const std::string texto = octetos.Resto();
    double valor = 0;
    const std::int32_t falha = NumeroDaFalha([&] { valor = CDbl(texto); });
    Exige(falha == 0 || falha == 6 || falha == 13, "CDbl raises " + std::to_string(falha), texto);
    Exige(IsNumeric(texto) == (falha == 0), "IsNumeric is whether CDbl reads", texto);
    ExigeUmaDas({6}, "Val", texto, [&] { Val(texto); });
    ExigeUmaDas({6, 13}, "CBool", texto, [&] { CBool(texto); });
    if (falha != 0) {
        ExigeFalha(falha, "CLng reads what CDbl does", texto, [&] { CLng(texto); });
        ExigeFalha(falha, "CInt reads what CDbl does", texto, [&] { CInt(texto); });
        ExigeFalha(falha, "CByte reads what CDbl does", texto, [&] { CByte(texto); });
        return;
    }
    Exige(CBool(texto) == (valor != 0), "CBool of a number", texto);
    if (texto.find('&') == std::string::npos) { // those are bits of a width
        ExigeInteiro<std::int32_t>(valor, "CLng", texto, [&] { return CLng(texto); });
        ExigeInteiro<std::int16_t>(valor, "CInt", texto, [&] { return CInt(texto); });
        ExigeInteiro<std::uint8_t>(valor, "CByte", texto, [&] { return CByte(texto); });
    } else {
        ExigeUmaDas({6}, "CLng", texto, [&] { CLng(texto); });
        ExigeUmaDas({6}, "CInt", texto, [&] { CInt(texto); });
        ExigeUmaDas({6}, "CByte", texto, [&] { CByte(texto); });
    }
    Exige(CDbl(" " + texto + "\t") == valor, "blanks around a number", texto);
}

void Numero(Octetos &octetos)
{
    const bool pequeno = octetos.Sim();
    const double valor = pequeno ? static_cast<double>(octetos.Longo()) / 100 : octetos.Real();
    if (!std::isfinite(valor)) {
        Exige(NumeroDaFalha([&] { CStr(valor); }) == 6, "CStr of no number");
        Exige(NumeroDaFalha([&] { CLng(valor); }) == 6, "CLng of no number");
        Exige(NumeroDaFalha([&] { Format(valor, "0.00"); }) == 6, "Format of no number");
        Exige(NumeroDaFalha([&] { CDate(valor); }) == 6, "CDate of no number");
        return;
    }
    const std::string texto = CStr(valor);
    ExigeInteiro<std::int32_t>(valor, "CLng", texto, [&] { return CLng(valor); });
    ExigeInteiro<std::int16_t>(valor, "CInt", texto, [&] { return CInt(valor); });
    ExigeInteiro<std::uint8_t>(valor, "CByte", texto, [&] { return CByte(valor); });
    // Rounding to 15 digits may go past the largest number, and the smallest ones have fewer digits.
    if (std::fabs(valor) < 1e308 && (valor == 0 || std::fabs(valor) > 1e-300)) {
        const double lido = CDbl(texto);
        Exige(std::fabs(lido - valor) <= std::fabs(valor) * 5e-15, "CDbl of CStr", texto);
        Exige(CStr(lido) == texto, "CStr of CDbl of CStr", texto);
    }
    const std::int32_t inteiro = octetos.Longo();
    Exige(CLng(CStr(inteiro)) == inteiro && CDbl(CStr(inteiro)) == inteiro, "CLng of CStr", CStr(inteiro));
    Exige(Val(CStr(inteiro)) == inteiro, "Val of CStr", CStr(inteiro));
    Exige(CLng(Format(inteiro, "0")) == inteiro, "CLng of Format", CStr(inteiro));
    if (pequeno) { // hundredths are what they are after two decimals
        const std::string duas = Format(valor, "0.00");
        Exige(CDbl(duas) == valor, "CDbl of Format 0.00", duas);
        const std::string milhares = Format(valor, "#,##0.00");
        Exige(CDbl(milhares) == valor, "CDbl of Format #,##0.00", milhares);
        std::string semPontos = milhares;
        std::erase(semPontos, '.');
        Exige(semPontos == duas, "thousands only add points", milhares);
    }
    const std::string figura = octetos.Resto();
    ExigeUmaDas({5}, "Format", figura, [&] { Format(valor, figura); });
}

// Days of the months, counted one by one from a known day.
void ExigeDiaSeguinte(Data data, const PartesData &p)
{
    const bool bissexto = (p.Ano % 4 == 0 && p.Ano % 100 != 0) || p.Ano % 400 == 0;
    const int dias[] = {31, bissexto ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    PartesData amanha = p;
    if (++amanha.Dia > dias[p.Mes - 1]) {
        amanha.Dia = 1;
        if (++amanha.Mes > 12) {
            amanha.Mes = 1;
            ++amanha.Ano;
        }
    }
    if (amanha.Ano <= 9999) {
        Exige(data.MaisDias(1).Partes() == amanha, "the day after", CStr(data));
        Exige(data.MaisDias(1).MaisDias(-1).Partes() == p, "a day on and back", CStr(data));
    } else {
        Exige(NumeroDaFalha([&] { data.MaisDias(1); }) == 5, "the day after the last", CStr(data));
    }
}

void DataDeNumero(Octetos &octetos)
{
    const int tipo = octetos.Ate(2);
    const double valor = tipo == 0   ? octetos.Real()
                         : tipo == 1 ? static_cast<double>(octetos.Longo()) / 1000
                                     : static_cast<double>(octetos.Longo() % 3700000) + octetos.Octeto() / 256.0;
    const Data data{valor};
    const std::int32_t n = octetos.Longo();
    const std::string figura = octetos.Resto();
    if (!data.NoCalendario()) {
        Exige(NumeroDaFalha([&] { CDate(valor); }) == 6, "CDate outside the calendar");
        Exige(NumeroDaFalha([&] { data.Partes(); }) == 6, "Partes outside the calendar");
        Exige(NumeroDaFalha([&] { CStr(data); }) == 6, "CStr outside the calendar");
        ExigeUmaDas({5}, "MaisDias", "outside the calendar", [&] { data.MaisDias(n); });
        return;
    }
    Exige(CDate(valor) == data, "CDate of a number");
    ExigeUmaDas({5}, "MaisDias", std::to_string(n), [&] { data.MaisDias(n); });
    PartesData p;
    const std::int32_t falha = NumeroDaFalha([&] { p = data.Partes(); });
    if (falha != 0) { // within half a second of the calendar's end
        Exige(falha == 6 && valor > 2958465.9999, "Partes at the end of the calendar");
        return;
    }
    const Data arredondada = DataDe(p.Dia, p.Mes, p.Ano, p.Hora, p.Minuto, p.Segundo);
    const std::string texto = CStr(data);
    Exige(arredondada.Partes() == p, "DataDe of Partes", texto);
    Exige(CStr(arredondada) == texto, "CStr of the nearest second", texto);
    Exige(IsDate(texto), "the text of a date is one", texto);
    Exige(CDate(texto) == arredondada, "CDate of CStr", texto);
    Exige(CStr(CDate(Format(data, "dd/mm/yyyy hh:nn:ss"))) == texto, "CDate of Format", texto);
    Exige(CDate(Format(data, "dd/mm/yyyy")) == DataDe(p.Dia, p.Mes, p.Ano), "CDate of the day's Format", texto);
    Exige(Format(data, "hh:mm") == Format(data, "hh:nn"), "minutes after hours", texto);
    Exige(Format(data, "") == texto, "Format without a picture", texto);
    ExigeUmaDas({5}, "Format", figura, [&] { Format(data, figura); });
    Exige(MinutosDecorridos(data, data) == 0, "MinutosDecorridos to itself", texto);
    ExigeDiaSeguinte(DataDe(p.Dia, p.Mes, p.Ano), {p.Dia, p.Mes, p.Ano});
}

void DataDeTexto(Octetos &octetos)
{
    const int ano = 1990 + octetos.Ate(60);
    const std::string texto = octetos.Resto();
    Exige(IsDate(texto) == (NumeroDaFalha([&] { CDate(texto); }) == 0), "IsDate is whether CDate reads", texto);
    ExigeUmaDas({13}, "CDate", texto, [&] { CDate(texto); });
    const std::optional<Data> lida = LeData(texto, ano);
    Exige(lida.has_value() == LeData(UCase(texto), ano).has_value(), "the case of a date", texto);
    if (!lida) {
        return;
    }
    Exige(lida->NoCalendario(), "what is read is in the calendar", texto);
    Exige(LeData(" " + texto + " ", ano) == lida, "blanks around a date", texto);
    Exige(LeData(CStr(*lida), ano) == lida, "the text of what was read", texto);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho)
{
    return Despacha(dados, tamanho, {Textos, NumeroDeTexto, Numero, DataDeNumero, DataDeTexto});
}
