#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <string>

// Key of an item in a list: a letter and the number that the list has given it, "A1".
inline std::string ChaveDeLista(char letra, std::int16_t numero)
{
    std::array<char, 8> texto{letra};
    return {texto.data(), std::to_chars(texto.data() + 1, texto.data() + texto.size(), numero).ptr};
}
