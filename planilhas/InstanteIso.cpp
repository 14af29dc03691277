#include "planilhas/InstanteIso.h"

#include "host/Data.h"
#include "host/Falha.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace planilhas {

namespace {

constexpr std::int64_t SegundosDoDia = 86400;
constexpr std::int64_t MaisSegundos = 3600000000; // a million hours

bool EhDigito(char letra)
{
    return letra >= '0' && letra <= '9';
}

// Takes so many digits from the front.
std::optional<int> Tira(std::string_view &texto, std::size_t digitos)
{
    int numero = 0;
    for (std::size_t i = 0; i < digitos; ++i) {
        if (i >= texto.size() || !EhDigito(texto[i])) {
            return std::nullopt;
        }
        numero = numero * 10 + (texto[i] - '0');
    }
    texto.remove_prefix(digitos);
    return numero;
}

bool TiraLetra(std::string_view &texto, char letra)
{
    const bool tem = texto.starts_with(letra);
    texto.remove_prefix(tem ? 1 : 0);
    return tem;
}

// Takes a fraction of a second, if there is one, and tells whether it is half or more. Nothing when it has no digits.
std::optional<bool> TiraFracao(std::string_view &texto)
{
    if (!TiraLetra(texto, '.') && !TiraLetra(texto, ',')) {
        return false;
    }
    if (texto.empty() || !EhDigito(texto[0])) {
        return std::nullopt;
    }
    const bool metade = texto[0] >= '5';
    while (!texto.empty() && EhDigito(texto[0])) {
        texto.remove_prefix(1);
    }
    return metade;
}

std::string Casas(int numero, std::size_t quantas)
{
    const std::string digitos = std::to_string(numero);
    return std::string(quantas - std::min(quantas, digitos.size()), '0') + digitos;
}

} // namespace

std::optional<Celula> CelulaDoInstante(std::string_view texto)
{
    const auto ano = Tira(texto, 4);
    const auto mes = ano && TiraLetra(texto, '-') ? Tira(texto, 2) : std::nullopt;
    const auto dia = mes && TiraLetra(texto, '-') ? Tira(texto, 2) : std::nullopt;
    if (!dia) {
        return std::nullopt;
    }
    try {
        if (texto.empty()) {
            return CelulaDeData(*dia, *mes, *ano);
        }
        const auto hora = TiraLetra(texto, 'T') ? Tira(texto, 2) : std::nullopt;
        const auto minuto = hora && TiraLetra(texto, ':') ? Tira(texto, 2) : std::nullopt;
        const auto segundo = minuto && TiraLetra(texto, ':') ? Tira(texto, 2) : std::nullopt;
        const auto metade = segundo ? TiraFracao(texto) : std::nullopt;
        if (!metade || !texto.empty()) {
            return std::nullopt;
        }
        DataDe(*dia, *mes, *ano, *hora, *minuto, *segundo);
        const int segundos = *hora * 3600 + *minuto * 60 + *segundo + (*metade ? 1 : 0);
        const bool noDiaSeguinte = segundos == SegundosDoDia;
        PartesData momento = DataDe(*dia, *mes, *ano).MaisDias(noDiaSeguinte ? 1 : 0).Partes();
        momento.Hora = noDiaSeguinte ? 0 : segundos / 3600;
        momento.Minuto = segundos / 60 % 60;
        momento.Segundo = segundos % 60;
        return CelulaDeDataHora(momento);
    } catch (const Falha &) { // not in the calendar
        return std::nullopt;
    }
}

std::optional<Celula> CelulaDaDuracao(std::string_view texto)
{
    if (!TiraLetra(texto, 'P') || !TiraLetra(texto, 'T') || texto.empty()) {
        return std::nullopt;
    }
    std::int64_t segundos = 0;
    std::string_view unidades = "HMS";
    while (!texto.empty()) {
        std::int64_t numero = 0;
        const auto lido = std::from_chars(texto.data(), texto.data() + texto.size(), numero);
        if (lido.ec != std::errc() || numero < 0 || numero > MaisSegundos) {
            return std::nullopt;
        }
        texto.remove_prefix(static_cast<std::size_t>(lido.ptr - texto.data()));
        const auto metade = TiraFracao(texto);
        const std::size_t unidade = texto.empty() ? std::string_view::npos : unidades.find(texto[0]);
        if (!metade || unidade == std::string_view::npos || (*metade && texto[0] != 'S')) {
            return std::nullopt;
        }
        segundos += numero * (texto[0] == 'H' ? 3600 : texto[0] == 'M' ? 60 : 1) + (*metade ? 1 : 0);
        unidades.remove_prefix(unidade + 1);
        texto.remove_prefix(1);
    }
    if (segundos > MaisSegundos) {
        return std::nullopt;
    }
    return CelulaDeHora(static_cast<int>(segundos / 3600), static_cast<int>(segundos / 60 % 60),
                        static_cast<int>(segundos % 60));
}

std::string InstanteEmIso(const Celula &celula)
{
    const PartesData &p = celula.Momento;
    if (celula.Tipo == TipoDeCelula::Hora) {
        return "PT" + Casas(p.Hora, 2) + "H" + Casas(p.Minuto, 2) + "M" + Casas(p.Segundo, 2) + "S";
    }
    const std::string dia = Casas(p.Ano, 4) + "-" + Casas(p.Mes, 2) + "-" + Casas(p.Dia, 2);
    if (celula.Tipo == TipoDeCelula::Data) {
        return dia;
    }
    return dia + "T" + Casas(p.Hora, 2) + ":" + Casas(p.Minuto, 2) + ":" + Casas(p.Segundo, 2);
}

} // namespace planilhas
