#include "tela/LugarDeJanela.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace {

// Larger than any desk of screens, and small enough to be added up.
constexpr std::int32_t Longe = 100000;

// The next of the numbers that follow one another with a blank between them.
std::optional<std::int32_t> Numero(std::string_view &texto)
{
    std::int32_t numero = 0;
    const auto [fim, erro] = std::from_chars(texto.data(), texto.data() + texto.size(), numero);
    if (erro != std::errc() || numero < -Longe || numero > Longe) {
        return std::nullopt;
    }
    texto.remove_prefix(static_cast<std::size_t>(fim - texto.data()));
    if (!texto.empty()) {
        if (texto.front() != ' ' || texto.size() == 1) {
            return std::nullopt;
        }
        texto.remove_prefix(1);
    }
    return numero;
}

std::int32_t Metade(std::int32_t comeco, std::int32_t medida)
{
    return comeco + medida / 2;
}

std::int32_t Preso(std::int32_t pedido, std::int32_t medida, std::int32_t comeco, std::int32_t livre)
{
    return std::max(comeco, std::min(pedido, comeco + livre - medida));
}

} // namespace

std::string TextoDoLugar(const LugarDeJanela &lugar)
{
    const Retangulo &normal = lugar.Normal;
    std::string texto;
    for (const std::int32_t numero : {normal.X, normal.Y, normal.Largura, normal.Altura}) {
        texto += std::to_string(numero) + " ";
    }
    return texto + (lugar.Maximizada ? "1" : "0");
}

std::optional<LugarDeJanela> LugarDoTexto(const std::string &texto)
{
    std::string_view resto = texto;
    const auto x = Numero(resto);
    const auto y = x ? Numero(resto) : x;
    const auto largura = y ? Numero(resto) : y;
    const auto altura = largura ? Numero(resto) : largura;
    const auto maximizada = altura ? Numero(resto) : altura;
    if (!maximizada || !resto.empty() || *largura < 1 || *altura < 1 || *maximizada < 0 || *maximizada > 1) {
        return std::nullopt;
    }
    return LugarDeJanela{{*x, *y, *largura, *altura}, *maximizada == 1};
}

Retangulo Dentro(const Retangulo &pedido, const Retangulo &livre)
{
    const std::int32_t largura = std::min(pedido.Largura, livre.Largura);
    const std::int32_t altura = std::min(pedido.Altura, livre.Altura);
    return {Preso(pedido.X, largura, livre.X, livre.Largura), Preso(pedido.Y, altura, livre.Y, livre.Altura), largura,
            altura};
}

Retangulo Centrado(const Tamanho &tamanho, const Retangulo &sobre, const Retangulo &livre)
{
    const std::int32_t largura = std::min(tamanho.Largura, livre.Largura);
    const std::int32_t altura = std::min(tamanho.Altura, livre.Altura);
    return Dentro(
        {Metade(sobre.X, sobre.Largura) - largura / 2, Metade(sobre.Y, sobre.Altura) - altura / 2, largura, altura},
        livre);
}

std::optional<Retangulo> TelaDoLugar(const Retangulo &lugar, const std::vector<Retangulo> &livres)
{
    const std::int32_t x = Metade(lugar.X, lugar.Largura);
    const std::int32_t y = Metade(lugar.Y, lugar.Altura);
    const auto achada = std::ranges::find_if(livres, [&](const Retangulo &livre) {
        return x >= livre.X && x < livre.X + livre.Largura && y >= livre.Y && y < livre.Y + livre.Altura;
    });
    return achada == livres.end() ? std::nullopt : std::optional(*achada);
}

Retangulo LugarDaPrincipal(const std::optional<LugarDeJanela> &lembrado, const Tamanho &natural, const Retangulo &livre,
                           const std::vector<Retangulo> &livres)
{
    if (lembrado) {
        if (const auto tela = TelaDoLugar(lembrado->Normal, livres)) {
            return Dentro(lembrado->Normal, *tela);
        }
    }
    return Centrado(natural, livre, livre);
}

Retangulo LugarDaFrente(const std::optional<LugarDeJanela> &lembrado, const Tamanho &natural, const Retangulo &sobre,
                        const Retangulo &livre)
{
    return Centrado(lembrado ? Tamanho{lembrado->Normal.Largura, lembrado->Normal.Altura} : natural, sobre, livre);
}
