#include "planilhas/FormatoNumerico.h"

#include "host/Data.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

namespace planilhas {

namespace {

constexpr std::int64_t SegundosDoDia = 86400;
constexpr std::int64_t UltimoDia = 2958465; // 31/12/9999
constexpr std::int64_t DiaQueNaoHouve = 60; // 29/02/1900
constexpr std::int64_t Dias1904 = 1462;     // from one beginning to the other
constexpr std::size_t MaiorMascara = 64;    // bytes

char Minuscula(char letra)
{
    return letra >= 'A' && letra <= 'Z' ? static_cast<char>(letra - 'A' + 'a') : letra;
}

// Whether what stands in brackets is elapsed time, as [h] and [mm].
bool Decorrido(std::string_view dentro)
{
    return !dentro.empty() && std::string_view("hms").find(Minuscula(dentro[0])) != std::string_view::npos &&
           dentro.find_first_not_of(std::string{dentro[0], Minuscula(dentro[0])}) == std::string_view::npos;
}

Celula Hora(std::int64_t segundos)
{
    return CelulaDeHora(static_cast<int>(segundos / 3600), static_cast<int>(segundos / 60 % 60),
                        static_cast<int>(segundos % 60));
}

} // namespace

SentidoDoNumero SentidoDoFormato(int embutido)
{
    if ((embutido >= 14 && embutido <= 17) || (embutido >= 27 && embutido <= 31) || embutido == 36 ||
        (embutido >= 50 && embutido <= 54) || embutido == 57 || embutido == 58) {
        return SentidoDoNumero::Data;
    }
    if ((embutido >= 18 && embutido <= 21) || (embutido >= 32 && embutido <= 35) || embutido == 45 || embutido == 47 ||
        embutido == 55 || embutido == 56) {
        return SentidoDoNumero::Hora;
    }
    if (embutido == 46) {
        return SentidoDoNumero::Duracao;
    }
    return embutido == 22 ? SentidoDoNumero::DataHora : SentidoDoNumero::Numero;
}

SentidoDoNumero SentidoDoFormato(std::string_view codigo)
{
    bool dia = false;
    bool hora = false;
    bool mesOuMinuto = false;
    for (std::size_t i = 0; i < codigo.size() && codigo[i] != ';'; ++i) {
        const char letra = Minuscula(codigo[i]);
        if (letra == '"') {
            i = std::min(codigo.find('"', i + 1), codigo.size() - 1);
        } else if (letra == '\\' || letra == '_' || letra == '*') {
            ++i;
        } else if (letra == '[') {
            const std::size_t fim = std::min(codigo.find(']', i), codigo.size());
            if (Decorrido(codigo.substr(i + 1, fim - i - 1))) {
                return SentidoDoNumero::Duracao;
            }
            i = fim;
        } else if (letra == 'g' && codigo.substr(i).starts_with("General")) {
            return SentidoDoNumero::Numero;
        } else {
            dia = dia || letra == 'd' || letra == 'y';
            hora = hora || letra == 'h' || letra == 's';
            mesOuMinuto = mesOuMinuto || letra == 'm';
        }
    }
    if (hora) {
        return dia ? SentidoDoNumero::DataHora : SentidoDoNumero::Hora;
    }
    return dia || mesOuMinuto ? SentidoDoNumero::Data : SentidoDoNumero::Numero;
}

std::string MascaraDoFormato(std::string_view codigo)
{
    constexpr std::string_view soltos = "0- ()"; // what stands for itself, and the digits
    // With a third section zero looks otherwise.
    if (SentidoDoFormato(codigo) != SentidoDoNumero::Numero || std::ranges::count(codigo, ';') > 1) {
        return "";
    }
    std::string mascara;
    for (std::size_t i = 0; i < codigo.size() && codigo[i] != ';'; ++i) {
        std::string_view texto = codigo.substr(i, 1);
        if (texto == "[") { // a colour or a language; what else there is changes what is seen
            const std::size_t fim = codigo.find(']', i);
            const std::string_view dentro = codigo.substr(i + 1, fim == std::string_view::npos ? 0 : fim - i - 1);
            if (dentro.empty() || dentro.find_first_of("<=>") == 0 ||
                (dentro.starts_with('$') && !dentro.starts_with("$-"))) {
                return "";
            }
            i = fim;
            continue;
        }
        if (texto == "\"" || texto == "\\") {
            const std::size_t fim = texto == "\"" ? codigo.find('"', i + 1) : i + 2;
            texto = codigo.substr(i + 1, fim == std::string_view::npos ? 0 : fim - i - 1);
            if (texto.empty() || texto.find('0') != std::string_view::npos) {
                return "";
            }
            i = codigo[i] == '"' ? fim : i + 1;
        } else if (soltos.find(texto) == std::string_view::npos) {
            return "";
        }
        mascara += texto;
    }
    const bool serve = mascara.starts_with('0') && mascara.ends_with('0') && mascara.size() <= MaiorMascara &&
                       std::ranges::count(mascara, '0') > 1;
    return serve ? mascara : "";
}

Celula CelulaNaMascara(std::string_view decimal, const std::string &mascara)
{
    const std::size_t ponto = std::min(decimal.find('.'), decimal.size());
    if (decimal.starts_with('-') || decimal.find_first_not_of(".0", ponto) != std::string_view::npos) {
        return CelulaDeNumero(decimal);
    }
    std::string digitos(decimal.substr(0, ponto));
    const auto casas = static_cast<std::size_t>(std::ranges::count(mascara, '0'));
    digitos.insert(0, casas - std::min(casas, digitos.size()), '0');
    std::string texto = digitos.substr(0, digitos.size() - casas); // further ones stand before the first
    std::size_t onde = texto.size();
    for (const char letra : mascara) {
        texto += letra == '0' ? digitos[onde++] : letra;
    }
    return CelulaDeTexto(texto);
}

Celula CelulaDoNumero(std::string_view decimal, SentidoDoNumero sentido, bool desde1904)
{
    double valor = 0;
    const auto lido = std::from_chars(decimal.data(), decimal.data() + decimal.size(), valor);
    if (sentido == SentidoDoNumero::Numero || lido.ec != std::errc() || valor < 0 ||
        valor >= static_cast<double>(UltimoDia + 1)) {
        return CelulaDeNumero(decimal);
    }
    const std::int64_t segundos = std::llround(valor * static_cast<double>(SegundosDoDia));
    if (sentido == SentidoDoNumero::Duracao || (sentido == SentidoDoNumero::Hora && segundos < SegundosDoDia)) {
        return Hora(segundos);
    }
    std::int64_t dia = segundos / SegundosDoDia + (desde1904 ? Dias1904 : 0);
    const std::int64_t resto = segundos % SegundosDoDia;
    if (dia < 1 || dia > UltimoDia) {
        return CelulaDeNumero(decimal);
    }
    const bool soODia = sentido == SentidoDoNumero::Data && resto == 0;
    const Celula hora = Hora(resto);
    if (dia == DiaQueNaoHouve && !desde1904) {
        return CelulaDeTexto("29/02/1900" + (soODia ? "" : " " + TextoDaCelula(hora)));
    }
    dia += dia < DiaQueNaoHouve ? 1 : 0;
    PartesData momento = Data{static_cast<double>(dia)}.Partes();
    if (soODia) {
        return CelulaDeData(momento.Dia, momento.Mes, momento.Ano);
    }
    momento.Hora = hora.Momento.Hora;
    momento.Minuto = hora.Momento.Minuto;
    momento.Segundo = hora.Momento.Segundo;
    return CelulaDeDataHora(momento);
}

std::optional<double> NumeroDaData(const Celula &celula)
{
    const PartesData &p = celula.Momento;
    const double hora =
        static_cast<double>(p.Hora * 3600LL + p.Minuto * 60 + p.Segundo) / static_cast<double>(SegundosDoDia);
    if (celula.Tipo == TipoDeCelula::Hora) {
        return hora;
    }
    if (p.Ano < 1900) {
        return std::nullopt;
    }
    const double dia = DataDe(p.Dia, p.Mes, p.Ano).Valor;
    return dia - (dia <= static_cast<double>(DiaQueNaoHouve) ? 1 : 0) + hora;
}

} // namespace planilhas
