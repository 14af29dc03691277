#pragma once

#include <string>
#include <string_view>
#include <vector>

// What a person types to find rows: words, each of which stands somewhere in the row. Accents and case do not count.
class FiltroDeLinhas {
  public:
    FiltroDeLinhas() = default;
    explicit FiltroDeLinhas(std::string_view texto);

    // Takes every row.
    bool Vazio() const { return m_Palavras.empty(); }
    // chave: made by Acrescenta of the row's cells.
    bool Aceita(std::string_view chave) const;

    // Adds a cell to what a row is found by.
    static void Acrescenta(std::string &chave, std::string_view celula);

  private:
    std::vector<std::string> m_Palavras;
};
