#include "host/Texto.h"

#include "host/Falha.h"

namespace {

// Stands for a byte outside of any well-formed sequence; no letter has this
// code.
constexpr char32_t SemCodigo = 0xFFFFFFFF;

struct Carater {
    char32_t Codigo = SemCodigo;
    std::size_t Bytes = 1;
};

// First character of a text that is not empty.
Carater Primeiro(std::string_view texto) noexcept
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(texto[i]); };
    const unsigned char b = byte(0);
    if (b < 0x80)
        return {b, 1};
    std::size_t bytes = 0;
    char32_t codigo = 0;
    char32_t menor = 0; // smallest code that needs this many bytes
    if ((b & 0xE0) == 0xC0) {
        bytes = 2, codigo = b & 0x1F, menor = 0x80;
    } else if ((b & 0xF0) == 0xE0) {
        bytes = 3, codigo = b & 0x0F, menor = 0x800;
    } else if ((b & 0xF8) == 0xF0) {
        bytes = 4, codigo = b & 0x07, menor = 0x10000;
    }
    if (bytes == 0 || texto.size() < bytes)
        return {};
    for (std::size_t i = 1; i < bytes; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return {};
        codigo = (codigo << 6) | (byte(i) & 0x3F);
    }
    const bool substituto = codigo >= 0xD800 && codigo <= 0xDFFF;
    if (codigo < menor || codigo > 0x10FFFF || substituto)
        return {};
    return {codigo, bytes};
}

// Byte position after n characters.
std::size_t Avanca(std::string_view texto, std::size_t n) noexcept
{
    std::size_t posicao = 0;
    for (; n > 0 && posicao < texto.size(); --n)
        posicao += Primeiro(texto.substr(posicao)).Bytes;
    return posicao;
}

// Latin Extended-A is made of neighbouring pairs, capital first. In two
// stretches the capital is odd.
bool EmPar(char32_t c)
{
    return c >= 0x100 && c <= 0x17E && c != 0x130 && c != 0x131 && c != 0x138 && c != 0x149 && c != 0x178;
}

bool MaiusculaImpar(char32_t c)
{
    return (c >= 0x139 && c <= 0x148) || c >= 0x179;
}

bool MaiusculaDoPar(char32_t c)
{
    return (c % 2 == 1) == MaiusculaImpar(c);
}

char32_t Maiuscula(char32_t c)
{
    if (c >= U'a' && c <= U'z')
        return c - 0x20;
    if (c >= 0xE0 && c <= 0xFE && c != 0xF7) // 0xF7 is the division sign
        return c - 0x20;
    if (c == 0xFF)
        return 0x178;
    return EmPar(c) && !MaiusculaDoPar(c) ? c - 1 : c;
}

char32_t Minuscula(char32_t c)
{
    if (c >= U'A' && c <= U'Z')
        return c + 0x20;
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) // 0xD7 is the multiplication sign
        return c + 0x20;
    if (c == 0x178)
        return 0xFF;
    return EmPar(c) && MaiusculaDoPar(c) ? c + 1 : c;
}

// The other case never has another number of bytes: both ends of every pair are
// below 0x80 or both from there to 0x7FF.
template <class Troca> std::string TrocaLetras(std::string_view texto, Troca troca)
{
    std::string resultado(texto);
    for (std::size_t posicao = 0; posicao < resultado.size();) {
        const auto byte = static_cast<unsigned char>(resultado[posicao]);
        if (byte < 0x80) {
            resultado[posicao++] = static_cast<char>(troca(byte));
            continue;
        }
        const Carater c = Primeiro(std::string_view(resultado).substr(posicao));
        const char32_t novo = c.Codigo == SemCodigo ? c.Codigo : troca(c.Codigo);
        if (novo != c.Codigo) {
            resultado[posicao] = static_cast<char>(0xC0 | (novo >> 6));
            resultado[posicao + 1] = static_cast<char>(0x80 | (novo & 0x3F));
        }
        posicao += c.Bytes;
    }
    return resultado;
}

} // namespace

std::size_t Len(std::string_view texto) noexcept
{
    std::size_t n = 0;
    for (std::size_t posicao = 0; posicao < texto.size(); ++n)
        posicao += Primeiro(texto.substr(posicao)).Bytes;
    return n;
}

std::string Left(std::string_view texto, std::size_t n)
{
    return std::string(texto.substr(0, Avanca(texto, n)));
}

std::string Right(std::string_view texto, std::size_t n)
{
    const std::size_t total = Len(texto);
    return std::string(texto.substr(Avanca(texto, total > n ? total - n : 0)));
}

std::string Mid(std::string_view texto, std::size_t inicio, std::size_t n)
{
    if (inicio == 0)
        throw Falha(NumeroFalha::ArgumentoInvalido);
    return Left(texto.substr(Avanca(texto, inicio - 1)), n);
}

std::string Trim(std::string_view texto)
{
    const std::size_t primeiro = texto.find_first_not_of(' ');
    if (primeiro == std::string_view::npos)
        return {};
    return std::string(texto.substr(primeiro, texto.find_last_not_of(' ') - primeiro + 1));
}

std::string UCase(std::string_view texto)
{
    return TrocaLetras(texto, [](char32_t c) { return Maiuscula(c); });
}

std::string LCase(std::string_view texto)
{
    return TrocaLetras(texto, [](char32_t c) { return Minuscula(c); });
}

std::string ChaveSemCaixa(std::string_view texto)
{
    return LCase(texto);
}

bool IgualSemCaixa(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && ChaveSemCaixa(a) == ChaveSemCaixa(b);
}

std::string Substitui(std::string_view texto, std::string_view de, std::string_view para)
{
    if (de.empty())
        return std::string(texto);
    std::string resultado;
    for (;;) {
        const std::size_t achado = texto.find(de);
        resultado += texto.substr(0, achado);
        if (achado == std::string_view::npos)
            return resultado;
        resultado += para;
        texto.remove_prefix(achado + de.size());
    }
}

std::vector<std::string> Divide(std::string_view texto, std::string_view separador)
{
    std::vector<std::string> pedacos;
    if (texto.empty())
        return pedacos;
    if (separador.empty()) {
        pedacos.emplace_back(texto);
        return pedacos;
    }
    for (;;) {
        const std::size_t achado = texto.find(separador);
        pedacos.emplace_back(texto.substr(0, achado));
        if (achado == std::string_view::npos)
            return pedacos;
        texto.remove_prefix(achado + separador.size());
    }
}
