#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace mesa {

// A row of a table that came as text.
struct LinhaDeTexto {
    std::int32_t Numero = 0; // of the line in the file where it begins, from 1
    std::vector<std::string> Celulas;
};

// Rows of a file with cells parted by tabs, semicolons or commas, whichever its first row has most; a cell may stand in
// quotation marks. Rows without any text are left out. Refuses, with a Recusa, what is not UTF-8 and a quotation mark
// that does not end.
std::vector<LinhaDeTexto> LeTabelaDeTexto(const std::string &conteudo);

} // namespace mesa
