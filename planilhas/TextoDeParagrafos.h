#pragma once

#include "planilhas/LeitorXml.h"

#include <string>
#include <string_view>

namespace planilhas {

// Collects the text of a cell of an ODS spreadsheet: its paragraphs with a line feed between them, white space as the
// format has it (runs of it are one blank, further ones are elements). What is only fastened to the cell (notes,
// drawings, how a word is pronounced) is no part of it. Is told the elements inside the cell.
class TextoDeParagrafos {
  public:
    void Comeca();
    void Abre(const NomeXml &nome, const AtributosXml &atributos);
    void Fecha(const NomeXml &nome);
    // A Falha when the whole is longer than a cell may be.
    void Poe(std::string_view texto);
    const std::string &Texto() const { return m_Texto; }

  private:
    void Junta(std::string_view texto);

    std::string m_Texto;
    int m_Fundo = 0;     // elements that are open inside the cell
    int m_Paragrafo = 0; // of these, where the paragraph began; 0 outside
    int m_Alheio = 0;    // and where something that is no part of the text did
    int m_Paragrafos = 0;
    bool m_Branco = true; // the last character of the paragraph's own was a blank, or there was none yet
    bool m_NoFim = false; // and it stands at the end of the text
};

} // namespace planilhas
