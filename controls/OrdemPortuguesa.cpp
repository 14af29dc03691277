#include "controls/OrdemPortuguesa.h"

#include "host/Texto.h"

#include <array>

namespace {

// The lower case letters from U+00E0 to U+00FF.
constexpr std::array<std::string_view, 32> BasesLatin1 = {
    "a", "a", "a", "a", "a", "a", "ae", "c", "e", "e", "e", "e", "i", "i", "i", "i",
    "d", "n", "o", "o", "o", "o", "o",  "÷", "o", "u", "u", "u", "u", "y", "þ", "y",
};

} // namespace

std::string SemAcentoNemCaixa(std::string_view texto)
{
    const std::string minusculo = LCase(texto);
    std::string base;
    base.reserve(minusculo.size());
    for (std::size_t i = 0; i < minusculo.size(); ++i) {
        const auto c = static_cast<unsigned char>(minusculo[i]);
        const auto seguinte = i + 1 < minusculo.size() ? static_cast<unsigned char>(minusculo[i + 1]) : 0U;
        if (c == 0xC3 && seguinte >= 0xA0 && seguinte <= 0xBF) {
            base += BasesLatin1.at(seguinte - 0xA0);
            ++i;
        } else if (c == 0xC2 && (seguinte == 0xAA || seguinte == 0xBA)) { // the ordinals
            base += seguinte == 0xAA ? 'a' : 'o';
            ++i;
        } else {
            base += minusculo[i];
        }
    }
    return base;
}

std::string ChaveOrdem(std::string_view texto)
{
    std::string chave = SemAcentoNemCaixa(texto);
    chave += '\0';
    chave += LCase(texto);
    return chave;
}
