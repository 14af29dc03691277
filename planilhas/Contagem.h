#pragma once

#include "planilhas/Leitor.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace planilhas {

// Holds what is read of a sheet against its limits.
class Contagem {
  public:
    explicit Contagem(const LimitesDeLeitura &limites) : m_Limites(limites) {}

    // Puts a cell into its column of the row, which counts from 0, and as many further ones of the same behind it. What
    // is nothing is left out.
    void Poe(LinhaLida &linha, std::uint64_t coluna, Celula celula, std::uint64_t vezes = 1);
    // A row that is whole, and how often it stands there.
    void Conta(const LinhaLida &linha, std::uint64_t vezes = 1);

  private:
    LimitesDeLeitura m_Limites;
    std::uint64_t m_OctetosDaLinha = 0; // of the texts of the row that is not whole yet
    std::uint64_t m_Linhas = 0;
    std::uint64_t m_Celulas = 0;
    std::uint64_t m_Textos = 0; // bytes
};

// Adds the name of one more sheet. A Falha for a sheet too many, and for a name that is too long.
void PoeFolha(std::vector<std::string> &nomes, std::string_view nome);

} // namespace planilhas
