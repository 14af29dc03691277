#pragma once

#include "planilhas/Escritor.h"

#include <string>
#include <string_view>
#include <vector>

namespace planilhas {

// Fault 5, with a sentence, for what is not well-formed UTF-8, and for null characters.
void ConfereTexto(std::string_view texto);

// Which sheets, rows and columns a spreadsheet may still have.
class RegrasDaPlanilha {
  public:
    // Fault 5, with a sentence, for a name that is empty, longer than 31 characters, taken (case does not count), or
    // that programs do not accept: with [ ] : * ? / \ or a control character, or with an apostrophe at either end.
    void NovaFolha(const std::string &nome);
    // Fault 5 before the first sheet, FormatoInvalido for a row or a column too many.
    void NovaLinha(const Linha &linha);
    // Of the row, from 0.
    std::size_t Numero() const { return m_Linhas - 1; }

  private:
    std::vector<std::string> m_Nomes; // with the same key whatever the case
    std::size_t m_Linhas = 0;
};

// The texts as cells.
Linha LinhaDeTextos(const std::vector<std::string> &textos);

} // namespace planilhas
