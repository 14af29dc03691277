#pragma once

#include "host/Texto.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

// Key of an item in a list: a letter and the number that the list has given it, "A1".
inline std::string ChaveDeLista(char letra, std::int16_t numero)
{
    std::array<char, 8> texto{letra};
    return {texto.data(), std::to_chars(texto.data() + 1, texto.data() + texto.size(), numero).ptr};
}

// The number in such a key, whatever the case of its letter; 0 when it is no such key.
inline std::int16_t NumeroDaChave(char letra, std::string_view chave)
{
    std::int16_t numero = 0;
    if (!chave.empty()) {
        std::from_chars(chave.data() + 1, chave.data() + chave.size(), numero);
    }
    return IgualSemCaixa(ChaveDeLista(letra, numero), chave) ? numero : std::int16_t{0};
}
