#pragma once

#include "planilhas/Celula.h"

#include <string>
#include <vector>

namespace planilhas {

// What is written into one sheet of a spreadsheet at most. Texts of cells have limits of their own.
inline constexpr std::size_t MaximoDeLinhasEscritas = 1048576;
inline constexpr std::size_t MaximoDeColunasEscritas = 1000;

// A table that is written row by row, with memory that does not grow with it. The file has its name when it is whole,
// in the place of whatever had it; one that is not concluded leaves nothing behind. What cannot be written is a Falha
// with a sentence, after which the writer only goes away.
class Escritor {
  public:
    Escritor() = default;
    Escritor(const Escritor &) = delete;
    Escritor &operator=(const Escritor &) = delete;
    virtual ~Escritor() = default;

    // Begins a sheet; whatever follows goes there. A file of text has one, and does not keep its name.
    virtual void Folha(const std::string &nome) = 0;
    // The first row of the sheet, which stands out from the others where the format can.
    virtual void Cabecalho(const std::vector<std::string> &titulos) = 0;
    // One more row. Of a formula its result is written; an error is written as a text.
    virtual void Escreve(const Linha &linha) = 0;
    // Ends the file.
    virtual void Conclui() = 0;
};

} // namespace planilhas
