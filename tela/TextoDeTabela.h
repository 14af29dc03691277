#pragma once

#include <string>
#include <vector>

// A table as a person sees it, to be taken elsewhere.
struct TabelaVista {
    std::vector<std::string> Titulos;
    std::vector<std::vector<std::string>> Linhas;
};

// As a spreadsheet takes it from the clipboard: cells between tabs; one with a tab, a newline or quotes in quotes.
std::string TextoTabulado(const TabelaVista &tabela);
// The same in HTML; every cell is a text, so that a code keeps its zeros and is never a formula.
std::string TabelaEmHtml(const TabelaVista &tabela);
