#pragma once

#include "planilhas/Celula.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace planilhas {

// What a table may have. What has more is refused in a sentence, since it is made by mistake or in bad faith.
struct LimitesDeLeitura {
    std::uint64_t Octetos = 2147483648; // of one part of a file, unpacked
    std::uint32_t Linhas = 2000000;     // rows with something in them
    std::uint32_t Colunas = 1000;
    std::uint64_t Celulas = 100000000; // with something in them
    std::uint64_t Textos = 2147483648; // bytes of all texts of a sheet, each as often as it stands there
};

// The longest text of a cell that is read, in bytes of UTF-8.
inline constexpr std::size_t MaiorTextoDeCelula = 131072;

// A row with at least one cell that is not empty.
struct LinhaLida {
    std::uint32_t Numero = 0; // in the sheet, from 1
    Linha Celulas;            // from the first column on, none empty at the end
};

// A table that is read row by row, with memory that does not grow with it. Failures of the file are a Falha with a
// sentence, whatever is done.
class Leitor {
  public:
    Leitor() = default;
    Leitor(const Leitor &) = delete;
    Leitor &operator=(const Leitor &) = delete;
    virtual ~Leitor() = default;

    // Names of the sheets in their order, hidden ones too. A file of text is one sheet without a name.
    virtual const std::vector<std::string> &Folhas() = 0;
    // Goes to the beginning of a sheet, which counts from 0: fault 9 when there is none. At first it is the first one.
    virtual void Escolhe(std::size_t folha) = 0;
    // The next row that has something in it; false behind the last one.
    virtual bool Le(LinhaLida &linha) = 0;
};

} // namespace planilhas
