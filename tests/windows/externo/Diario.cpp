#include "tests/windows/externo/Diario.h"

#include "tests/windows/externo/Var.h"

namespace nativo {

void Diario::Anota(const std::string &linha)
{
    m_Linhas.push_back(linha);
    ++m_Chamadas;
    if (m_Chamadas == m_Ordenada) {
        m_Linhas.push_back("FALHOU " + linha);
        throw FalhaExterna{NumeroOrdenado, FonteOrdenada, DescricaoOrdenada};
    }
}

std::vector<std::string> Diario::Que(const std::string &comeco) const
{
    std::vector<std::string> linhas;
    for (const std::string &linha : m_Linhas) {
        if (linha.rfind(comeco, 0) == 0) {
            linhas.push_back(linha);
        }
    }
    return linhas;
}

std::string Diario::Tudo() const
{
    std::string tudo;
    for (const std::string &linha : m_Linhas) {
        tudo += linha + "\n";
    }
    return tudo;
}

} // namespace nativo
