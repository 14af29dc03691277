#include "planilhas/Contagem.h"

#include "planilhas/Falhas.h"

#include <algorithm>
#include <string>
#include <utility>

namespace planilhas {

namespace {

constexpr std::uint64_t MaiorTextoDaLinha = 16777216; // bytes
constexpr std::size_t MaisFolhas = 1000;
constexpr std::size_t MaiorNomeDeFolha = 1000; // bytes

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

void Contagem::Conta(const LinhaLida &linha, std::uint64_t vezes)
{
    m_Textos += vezes * std::exchange(m_OctetosDaLinha, 0);
    m_Celulas += vezes * (linha.Celulas.size() - static_cast<std::uint64_t>(std::ranges::count_if(
                                                     linha.Celulas, [](const Celula &c) { return c.Nada(); })));
    m_Linhas += vezes;
    if (m_Linhas > m_Limites.Linhas) {
        FalhaDeFormato("A tabela tem mais de " + std::to_string(m_Limites.Linhas) + " linhas, que é o máximo.");
    }
    if (m_Celulas > m_Limites.Celulas) {
        FalhaDeFormato("A tabela tem mais de " + std::to_string(m_Limites.Celulas) + " células, que é o máximo.");
    }
    if (m_Textos > m_Limites.Textos) {
        FalhaDeFormato("A tabela tem texto demais, contado tantas vezes quantas está nela.");
    }
}

void PoeFolha(std::vector<std::string> &nomes, std::string_view nome)
{
    if (nomes.size() == MaisFolhas) {
        FalhaDeFormato("O arquivo tem mais de 1.000 folhas, que é o máximo.");
    }
    if (nome.size() > MaiorNomeDeFolha) {
        FalhaDeFormato("O arquivo tem uma folha com um nome longo demais.");
    }
    nomes.emplace_back(nome);
}

} // namespace planilhas
