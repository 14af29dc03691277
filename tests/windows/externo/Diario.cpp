#include "tests/windows/externo/Diario.h"

#include "tests/windows/externo/Var.h"

namespace nativo {

void Diario::Anota(const std::string &linha)
{
    const Guarda guarda(m_Trava);
    m_Linhas.push_back(linha);
    ++m_Chamadas;
    if (m_Chamadas == m_Ordenada) {
        m_Linhas.push_back("FALHOU " + linha);
        throw FalhaExterna{NumeroOrdenado, FonteOrdenada, DescricaoOrdenada};
    }
}

void Diario::Conta(const std::string &linha)
{
    const Guarda guarda(m_Trava);
    m_Linhas.push_back(linha);
}

void Diario::FalhaNa(std::int32_t chamada)
{
    const Guarda guarda(m_Trava);
    m_Ordenada = chamada;
    m_Chamadas = 0;
}

bool Diario::Falhou() const
{
    const Guarda guarda(m_Trava);
    return m_Ordenada != 0 && m_Chamadas >= m_Ordenada;
}

void Diario::Limpa()
{
    const Guarda guarda(m_Trava);
    m_Linhas.clear();
}

std::vector<std::string> Diario::Que(const std::string &comeco) const
{
    const Guarda guarda(m_Trava);
    std::vector<std::string> linhas;
    for (const std::string &linha : m_Linhas) {
        if (linha.rfind(comeco, 0) == 0) {
            linhas.push_back(linha);
        }
    }
    return linhas;
}

std::string Diario::Primeira(const std::string &comeco) const
{
    const std::vector<std::string> linhas = Que(comeco);
    return linhas.empty() ? "" : linhas.front();
}

std::string Diario::Ultima(const std::string &comeco) const
{
    const std::vector<std::string> linhas = Que(comeco);
    return linhas.empty() ? "" : linhas.back();
}

std::string Diario::Tudo() const
{
    const Guarda guarda(m_Trava);
    std::string tudo;
    for (const std::string &linha : m_Linhas) {
        tudo += linha + "\n";
    }
    return tudo;
}

} // namespace nativo
