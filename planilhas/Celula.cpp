#include "planilhas/Celula.h"

#include "host/Falha.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <utility>

namespace planilhas {

namespace {

constexpr int MaiorExpoente = 400;
constexpr std::size_t MaisDigitos = 400;
constexpr int DigitosExatos = 40; // beyond which nothing changes the first 17

bool EhDigito(char letra)
{
    return letra >= '0' && letra <= '9';
}

std::size_t FimDosDigitos(std::string_view texto, std::size_t onde)
{
    while (onde < texto.size() && EhDigito(texto[onde])) {
        ++onde;
    }
    return onde;
}

// Digits alone, without a zero in front.
bool EhNaturalSimples(std::string_view texto)
{
    return !texto.empty() && texto.size() <= MaisDigitos && (texto[0] != '0' || texto.size() == 1) &&
           FimDosDigitos(texto, 0) == texto.size();
}

std::string DuasCasas(int numero)
{
    return (numero < 10 ? "0" : "") + std::to_string(numero);
}

std::string TextoDaData(const PartesData &p)
{
    const std::string ano = std::to_string(p.Ano);
    return DuasCasas(p.Dia) + "/" + DuasCasas(p.Mes) + "/" +
           std::string(4 - std::min<std::size_t>(4, ano.size()), '0') + ano;
}

std::string TextoDaHora(const PartesData &p)
{
    return DuasCasas(p.Hora) + ":" + DuasCasas(p.Minuto) + (p.Segundo != 0 ? ":" + DuasCasas(p.Segundo) : "");
}

// Digits that tell the number: without zeros at either end of the whole.
std::string Significativos(std::string_view decimal)
{
    std::string digitos;
    std::ranges::copy_if(decimal, std::back_inserter(digitos), EhDigito);
    const std::size_t primeiro = digitos.find_first_not_of('0');
    return primeiro == std::string::npos ? "" : digitos.substr(primeiro, digitos.find_last_not_of('0') - primeiro + 1);
}

bool EhInteiro(std::string_view decimal)
{
    const std::size_t ponto = decimal.find('.');
    return ponto == std::string_view::npos || decimal.find_first_not_of('0', ponto + 1) == std::string_view::npos;
}

// Whether a program that writes the binary number with as many digits writes these. Some round the last one to the
// nearest, others upwards.
bool SaoDoBinario(const std::string &digitos, double valor)
{
    std::array<char, 64> escrito{};
    const auto [fim, erro] = std::to_chars(escrito.data(), escrito.data() + escrito.size(), valor,
                                           std::chars_format::scientific, DigitosExatos);
    const std::string_view texto(escrito.data(), fim);
    std::string exatos = Significativos(texto.substr(0, texto.find('e')));
    const bool resto = exatos.size() > digitos.size();
    exatos.resize(digitos.size(), '0');
    const std::size_t ultimo = exatos.find_last_not_of('9');
    if (exatos == digitos || !resto || ultimo == std::string::npos) {
        return exatos == digitos;
    }
    ++exatos[ultimo];
    std::ranges::fill(exatos.begin() + static_cast<std::ptrdiff_t>(ultimo) + 1, exatos.end(), '0');
    return exatos == digitos;
}

} // namespace

Celula CelulaDeTexto(std::string texto)
{
    Celula celula;
    if (!texto.empty()) {
        celula.Tipo = TipoDeCelula::Texto;
        celula.Texto = std::move(texto);
    }
    return celula;
}

Celula CelulaDeNumero(std::string_view texto)
{
    std::optional<std::string> decimal = NumeroDecimal(texto);
    if (!decimal) {
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }
    Celula celula;
    celula.Tipo = TipoDeCelula::Numero;
    celula.Texto = std::move(*decimal);
    return celula;
}

Celula CelulaDeNumero(double valor)
{
    if (!std::isfinite(valor)) {
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }
    std::array<char, 32> texto{};
    const auto [fim, erro] =
        std::to_chars(texto.data(), texto.data() + texto.size(), valor, std::chars_format::scientific);
    return CelulaDeNumero(std::string_view(texto.data(), fim));
}

Celula CelulaDeData(int dia, int mes, int ano)
{
    Celula celula;
    celula.Tipo = TipoDeCelula::Data;
    celula.Momento = DataDe(dia, mes, ano).Partes();
    return celula;
}

Celula CelulaDeDataHora(const PartesData &momento)
{
    DataDe(momento.Dia, momento.Mes, momento.Ano, momento.Hora, momento.Minuto, momento.Segundo);
    Celula celula;
    celula.Tipo = TipoDeCelula::DataHora;
    celula.Momento = momento;
    return celula;
}

Celula CelulaDeHora(int hora, int minuto, int segundo)
{
    if (hora < 0 || minuto < 0 || minuto > 59 || segundo < 0 || segundo > 59) {
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }
    Celula celula;
    celula.Tipo = TipoDeCelula::Hora;
    celula.Momento.Hora = hora;
    celula.Momento.Minuto = minuto;
    celula.Momento.Segundo = segundo;
    return celula;
}

Celula CelulaLogica(bool verdade)
{
    Celula celula;
    celula.Tipo = TipoDeCelula::Logico;
    celula.Verdade = verdade;
    return celula;
}

Celula CelulaDeErro(std::string nome)
{
    Celula celula;
    celula.Tipo = TipoDeCelula::Erro;
    celula.Texto = std::move(nome);
    return celula;
}

std::optional<std::string> NumeroDecimal(std::string_view texto)
{
    if (EhNaturalSimples(texto)) {
        return std::string(texto); // as most are
    }
    const bool negativo = texto.starts_with('-');
    std::size_t onde = negativo || texto.starts_with('+') ? 1 : 0;
    const std::size_t fimInteiro = FimDosDigitos(texto, onde);
    std::string digitos(texto.substr(onde, fimInteiro - onde));
    auto inteiros = static_cast<std::ptrdiff_t>(digitos.size()); // how many of the digits are before the point
    onde = fimInteiro;
    if (onde < texto.size() && texto[onde] == '.') {
        const std::size_t fim = FimDosDigitos(texto, onde + 1);
        digitos += texto.substr(onde + 1, fim - onde - 1);
        onde = fim;
    }
    if (digitos.empty()) {
        return std::nullopt;
    }
    if (onde < texto.size() && (texto[onde] == 'e' || texto[onde] == 'E')) {
        ++onde;
        onde += onde < texto.size() && texto[onde] == '+' && texto.substr(onde + 1, 1) != "-" ? 1 : 0;
        int expoente = 0;
        const auto [fim, erro] = std::from_chars(texto.data() + onde, texto.data() + texto.size(), expoente);
        if (erro != std::errc() || std::abs(expoente) > MaiorExpoente) {
            return std::nullopt;
        }
        onde = static_cast<std::size_t>(fim - texto.data());
        inteiros += expoente;
    }
    if (onde != texto.size()) {
        return std::nullopt;
    }
    if (inteiros < 0) {
        digitos.insert(0, static_cast<std::size_t>(-inteiros), '0');
        inteiros = 0;
    }
    if (static_cast<std::size_t>(inteiros) > digitos.size()) {
        digitos.append(static_cast<std::size_t>(inteiros) - digitos.size(), '0');
    }
    std::string inteiro = digitos.substr(0, static_cast<std::size_t>(inteiros));
    const std::string resto = digitos.substr(static_cast<std::size_t>(inteiros));
    inteiro.erase(0, std::min(inteiro.find_first_not_of('0'), inteiro.size()));
    if (inteiro.size() > MaisDigitos || resto.size() > MaisDigitos) {
        return std::nullopt;
    }
    const bool zero = inteiro.empty() && resto.find_first_not_of('0') == std::string::npos;
    return (negativo && !zero ? "-" : "") + (inteiro.empty() ? "0" : inteiro) + (resto.empty() ? "" : "." + resto);
}

std::string SemSobraBinaria(std::string decimal)
{
    const std::string digitos = Significativos(decimal);
    if ((digitos.size() != 16 && digitos.size() != 17) || EhInteiro(decimal)) {
        return decimal;
    }
    double valor = 0;
    if (std::from_chars(decimal.data(), decimal.data() + decimal.size(), valor).ec != std::errc() ||
        !SaoDoBinario(digitos, valor)) {
        return decimal;
    }
    std::string curto = CelulaDeNumero(valor).Texto;
    return Significativos(curto).size() < digitos.size() ? curto : decimal;
}

std::string TextoDaCelula(const Celula &celula, char virgula)
{
    switch (celula.Tipo) {
    case TipoDeCelula::Vazia:
        return "";
    case TipoDeCelula::Numero: {
        std::string texto = celula.Texto;
        std::ranges::replace(texto, '.', virgula);
        return texto;
    }
    case TipoDeCelula::Data:
        return TextoDaData(celula.Momento);
    case TipoDeCelula::DataHora:
        return TextoDaData(celula.Momento) + " " + TextoDaHora(celula.Momento);
    case TipoDeCelula::Hora:
        return TextoDaHora(celula.Momento);
    case TipoDeCelula::Logico:
        return celula.Verdade ? "Verdadeiro" : "Falso";
    default:
        return celula.Texto;
    }
}

} // namespace planilhas
