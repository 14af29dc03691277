#pragma once

#include <cstdint>
#include <string>
#include <vector>

// One column of a list, as gsubConfigLista takes it.
struct Coluna {
    std::string Titulo;       // heading, and the column's key
    std::int16_t Largura = 0; // in twips; 0 hides the column
    std::string Marca = {};   // "data" for a column of dates
    std::int16_t Alinhamento = 0;
};

// Column table; element 0 stays empty, the columns are elements 1 to the last.
using TabelaColunas = std::vector<Coluna>;
