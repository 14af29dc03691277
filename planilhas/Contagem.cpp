#include "planilhas/Contagem.h"

#include "planilhas/Falhas.h"

#include <algorithm>
#include <string>
#include <utility>

namespace planilhas {

namespace {

constexpr std::uint64_t MaiorTextoDaLinha = 16777216; // bytes

} // namespace

void Contagem::Poe(LinhaLida &linha, std::uint64_t coluna, Celula celula, std::uint64_t vezes)
{
    if (celula.Nada()) {
        return;
    }
    if (coluna >= m_Limites.Colunas || vezes > m_Limites.Colunas - coluna) {
        FalhaDeFormato("A linha " + std::to_string(linha.Numero) + " tem mais de " + std::to_string(m_Limites.Colunas) +
                       " colunas, que é o máximo.");
    }
    m_OctetosDaLinha += vezes * celula.Texto.size();
    if (m_OctetosDaLinha > MaiorTextoDaLinha) {
        FalhaDeFormato("A linha " + std::to_string(linha.Numero) + " tem texto demais.");
    }
    linha.Celulas.resize(coluna); // empty up to here
    linha.Celulas.resize(coluna + vezes - 1, celula);
    linha.Celulas.push_back(std::move(celula));
}

void Contagem::Conta(const LinhaLida &linha)
{
    m_OctetosDaLinha = 0;
    m_Celulas +=
        linha.Celulas.size() -
        static_cast<std::uint64_t>(std::ranges::count_if(linha.Celulas, [](const Celula &c) { return c.Nada(); }));
    if (++m_Linhas > m_Limites.Linhas) {
        FalhaDeFormato("A tabela tem mais de " + std::to_string(m_Limites.Linhas) + " linhas, que é o máximo.");
    }
    if (m_Celulas > m_Limites.Celulas) {
        FalhaDeFormato("A tabela tem mais de " + std::to_string(m_Limites.Celulas) + " células, que é o máximo.");
    }
}

} // namespace planilhas
