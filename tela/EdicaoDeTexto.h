#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// What a person did to the text of a field: took characters out from a position, and put others there. Positions and
// numbers count characters, from 0.
struct EdicaoDeTexto {
    std::size_t Posicao = 0;
    std::size_t Retirados = 0;
    std::string Inserido;

    bool operator==(const EdicaoDeTexto &) const = default;
};

// The edit that made the one text of the other. Of the places where it may have been, such as among equal letters, it
// was the one that leaves the cursor where it is now.
EdicaoDeTexto AchaEdicao(std::string_view antes, std::string_view depois, std::size_t cursor);
