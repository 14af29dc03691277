#pragma once

#include "host/Falha.h"

#include <cstdint>
#include <string>
#include <vector>

// Two-dimensional table of strings, indexed by column and row, both from 1. What a list takes its rows from.
class TabelaTexto {
  public:
    // Number of columns, the same for every row.
    explicit TabelaTexto(std::int32_t colunas) : m_Colunas(colunas) {}

    std::int32_t Colunas() const noexcept { return m_Colunas; }
    std::int32_t Linhas() const noexcept { return static_cast<std::int32_t>(m_Linhas.size()); }

    // Appends a row of empty cells and returns its number.
    std::int32_t AdicionaLinha()
    {
        m_Linhas.emplace_back(static_cast<std::size_t>(m_Colunas));
        return Linhas();
    }

    // A cell. Fault 9 outside the table.
    std::string &Celula(std::int32_t coluna, std::int32_t linha)
    {
        Exige(coluna, linha);
        return m_Linhas[static_cast<std::size_t>(linha - 1)][static_cast<std::size_t>(coluna - 1)];
    }
    const std::string &Celula(std::int32_t coluna, std::int32_t linha) const
    {
        Exige(coluna, linha);
        return m_Linhas[static_cast<std::size_t>(linha - 1)][static_cast<std::size_t>(coluna - 1)];
    }

  private:
    void Exige(std::int32_t coluna, std::int32_t linha) const
    {
        if (coluna < 1 || coluna > m_Colunas || linha < 1 || linha > Linhas()) {
            throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
        }
    }

    std::int32_t m_Colunas;
    std::vector<std::vector<std::string>> m_Linhas;
};
