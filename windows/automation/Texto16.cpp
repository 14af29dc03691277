#include "windows/automation/Texto16.h"

#include <cstddef>
#include <cstdint>

namespace nativo {
namespace {

bool EhAlto(std::uint32_t unidade)
{
    return unidade >= 0xD800 && unidade <= 0xDBFF;
}

bool EhBaixo(std::uint32_t unidade)
{
    return unidade >= 0xDC00 && unidade <= 0xDFFF;
}

// A byte that stands for itself.
bool EhOcteto(std::uint32_t unidade)
{
    return unidade >= 0xDC80 && unidade <= 0xDCFF;
}

std::uint32_t Octeto(std::string_view texto, std::size_t onde)
{
    return onde < texto.size() ? static_cast<unsigned char>(texto[onde]) : 0;
}

struct Lido {
    std::uint32_t Codigo = 0;
    std::size_t Octetos = 0; // 0: what stands there is no character
};

// The character at a place, surrogates among them.
Lido LeCaracter(std::string_view texto, std::size_t onde)
{
    const std::uint32_t primeiro = Octeto(texto, onde);
    if (primeiro < 0x80) {
        return {primeiro, 1};
    }
    std::size_t octetos = 0;
    std::uint32_t codigo = 0;
    std::uint32_t menor = 0;
    if (primeiro >= 0xC2 && primeiro <= 0xDF) {
        octetos = 2;
        codigo = primeiro & 0x1F;
        menor = 0x80;
    } else if (primeiro >= 0xE0 && primeiro <= 0xEF) {
        octetos = 3;
        codigo = primeiro & 0x0F;
        menor = 0x800;
    } else if (primeiro >= 0xF0 && primeiro <= 0xF4) {
        octetos = 4;
        codigo = primeiro & 0x07;
        menor = 0x10000;
    } else {
        return {};
    }
    for (std::size_t i = 1; i < octetos; ++i) {
        const std::uint32_t octeto = Octeto(texto, onde + i);
        if ((octeto & 0xC0) != 0x80) {
            return {};
        }
        codigo = (codigo << 6) | (octeto & 0x3F);
    }
    if (codigo < menor || codigo > 0x10FFFF || EhOcteto(codigo)) {
        return {};
    }
    return {codigo, octetos};
}

wchar_t OctetoSolto(std::uint32_t octeto)
{
    return static_cast<wchar_t>(0xDC00 + octeto);
}

void JuntaUtf8(std::string &texto, std::uint32_t codigo)
{
    const auto octeto = [&](std::uint32_t valor) { texto += static_cast<char>(valor); };
    if (codigo < 0x80) {
        octeto(codigo);
    } else if (codigo < 0x800) {
        octeto(0xC0 | (codigo >> 6));
        octeto(0x80 | (codigo & 0x3F));
    } else if (codigo < 0x10000) {
        octeto(0xE0 | (codigo >> 12));
        octeto(0x80 | ((codigo >> 6) & 0x3F));
        octeto(0x80 | (codigo & 0x3F));
    } else {
        octeto(0xF0 | (codigo >> 18));
        octeto(0x80 | ((codigo >> 12) & 0x3F));
        octeto(0x80 | ((codigo >> 6) & 0x3F));
        octeto(0x80 | (codigo & 0x3F));
    }
}

} // namespace

std::wstring ParaUtf16(std::string_view texto)
{
    std::wstring saida;
    saida.reserve(texto.size());
    bool altoSolto = false; // the last unit is a surrogate that must not become one of a pair
    const auto junta = [&](wchar_t unidade) {
        if (altoSolto && EhBaixo(unidade)) {
            std::string octetos;
            JuntaUtf8(octetos, static_cast<std::uint32_t>(saida.back()));
            saida.pop_back();
            for (const char octeto : octetos) {
                saida += OctetoSolto(static_cast<unsigned char>(octeto));
            }
        }
        saida += unidade;
        altoSolto = EhAlto(unidade);
    };
    for (std::size_t onde = 0; onde < texto.size();) {
        const Lido lido = LeCaracter(texto, onde);
        if (lido.Octetos == 0) {
            junta(OctetoSolto(Octeto(texto, onde)));
            ++onde;
            continue;
        }
        if (lido.Codigo >= 0x10000) {
            saida += static_cast<wchar_t>(0xD800 + ((lido.Codigo - 0x10000) >> 10));
            saida += static_cast<wchar_t>(0xDC00 + ((lido.Codigo - 0x10000) & 0x3FF));
            altoSolto = false;
        } else {
            junta(static_cast<wchar_t>(lido.Codigo));
        }
        onde += lido.Octetos;
    }
    return saida;
}

std::string ParaUtf8(std::wstring_view texto)
{
    std::string saida;
    saida.reserve(texto.size());
    for (std::size_t onde = 0; onde < texto.size(); ++onde) {
        const auto unidade = static_cast<std::uint32_t>(texto[onde]);
        if (EhAlto(unidade) && onde + 1 < texto.size() && EhBaixo(static_cast<std::uint32_t>(texto[onde + 1]))) {
            ++onde;
            JuntaUtf8(saida, 0x10000 + ((unidade - 0xD800) << 10) + (static_cast<std::uint32_t>(texto[onde]) - 0xDC00));
        } else if (EhOcteto(unidade)) {
            saida += static_cast<char>(unidade - 0xDC00);
        } else {
            JuntaUtf8(saida, unidade);
        }
    }
    return saida;
}

} // namespace nativo
