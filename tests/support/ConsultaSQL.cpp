#include "tests/support/ConsultaSQL.h"

#include "host/Falha.h"
#include "host/Texto.h"

#include <cctype>
#include <cstddef>
#include <initializer_list>
#include <string_view>

namespace {

enum class Especie { Fim, Palavra, Numero, Texto, Sinal };

struct Peca {
    Especie Tipo = Especie::Fim;
    std::string Texto;
};

class Leitor {
  public:
    explicit Leitor(const std::string &sql) : m_Sql(sql) { Avanca(); }

    const Peca &Atual() const { return m_Peca; }

    Peca Toma()
    {
        Peca peca = m_Peca;
        Avanca();
        return peca;
    }

    // Takes a word or sign when it is the next one.
    bool Toma(std::string_view texto)
    {
        if ((m_Peca.Tipo == Especie::Palavra || m_Peca.Tipo == Especie::Sinal) && IgualSemCaixa(m_Peca.Texto, texto)) {
            Avanca();
            return true;
        }
        return false;
    }

    void Exige(std::string_view texto)
    {
        if (!Toma(texto)) {
            Recusa();
        }
    }

    std::string Nome()
    {
        if (m_Peca.Tipo != Especie::Palavra) {
            Recusa();
        }
        for (const char *reservada : {"SELECT", "FROM", "WHERE", "AND", "ORDER", "BY"}) {
            if (IgualSemCaixa(m_Peca.Texto, reservada)) {
                Recusa();
            }
        }
        return Toma().Texto;
    }

    [[noreturn]] void Recusa() const
    {
        throw Falha(3075, "BancoLocal", "Erro de sintaxe na expressão de consulta '" + m_Sql + "'.");
    }

  private:
    static bool DeNome(char letra) { return std::isalnum(static_cast<unsigned char>(letra)) != 0 || letra == '_'; }

    void Avanca()
    {
        while (m_Onde < m_Sql.size() && std::isspace(static_cast<unsigned char>(m_Sql[m_Onde])) != 0) {
            ++m_Onde;
        }
        if (m_Onde == m_Sql.size()) {
            m_Peca = {};
            return;
        }
        const char letra = m_Sql[m_Onde];
        if (letra == '\'') {
            TomaTexto();
        } else if (std::isdigit(static_cast<unsigned char>(letra)) != 0 || letra == '-') {
            const std::size_t inicio = m_Onde++;
            while (m_Onde < m_Sql.size() && DeNome(m_Sql[m_Onde])) {
                ++m_Onde;
            }
            m_Peca = {Especie::Numero, m_Sql.substr(inicio, m_Onde - inicio)};
            if (m_Peca.Texto.find_first_not_of("0123456789", letra == '-' ? 1 : 0) != std::string::npos ||
                m_Peca.Texto == "-") {
                Recusa();
            }
        } else if (DeNome(letra)) {
            const std::size_t inicio = m_Onde;
            while (m_Onde < m_Sql.size() && DeNome(m_Sql[m_Onde])) {
                ++m_Onde;
            }
            m_Peca = {Especie::Palavra, m_Sql.substr(inicio, m_Onde - inicio)};
        } else {
            std::size_t tamanho = 1;
            if ((letra == '<' || letra == '>') && m_Onde + 1 < m_Sql.size() &&
                (m_Sql[m_Onde + 1] == '=' || (letra == '<' && m_Sql[m_Onde + 1] == '>'))) {
                tamanho = 2;
            }
            m_Peca = {Especie::Sinal, m_Sql.substr(m_Onde, tamanho)};
            m_Onde += tamanho;
        }
    }

    // A text runs to the next apostrophe; two in a row are one of its own.
    void TomaTexto()
    {
        std::string texto;
        for (++m_Onde; m_Onde < m_Sql.size(); ++m_Onde) {
            if (m_Sql[m_Onde] != '\'') {
                texto += m_Sql[m_Onde];
            } else if (m_Onde + 1 < m_Sql.size() && m_Sql[m_Onde + 1] == '\'') {
                texto += m_Sql[++m_Onde];
            } else {
                ++m_Onde;
                m_Peca = {Especie::Texto, texto};
                return;
            }
        }
        Recusa();
    }

    const std::string &m_Sql;
    std::size_t m_Onde = 0;
    Peca m_Peca;
};

ConsultaSQL::Operando LeOperando(Leitor &leitor)
{
    if (leitor.Atual().Tipo == Especie::Texto) {
        return leitor.Toma().Texto;
    }
    if (leitor.Atual().Tipo == Especie::Numero) {
        return std::stod(leitor.Toma().Texto);
    }
    std::string nome = leitor.Nome();
    if (!leitor.Toma("(")) {
        return ConsultaSQL::Coluna{std::move(nome), false};
    }
    if (!IgualSemCaixa(nome, "UCASE")) {
        leitor.Recusa();
    }
    ConsultaSQL::Coluna coluna{leitor.Nome(), true};
    leitor.Exige(")");
    return coluna;
}

std::string LeOperador(Leitor &leitor)
{
    for (const char *operador : {"=", "<>", "<=", ">=", "<", ">"}) {
        if (leitor.Toma(operador)) {
            return operador;
        }
    }
    leitor.Recusa();
}

} // namespace

ConsultaSQL ConsultaSQL::De(const std::string &sql)
{
    ConsultaSQL consulta;
    Leitor leitor(sql);
    leitor.Exige("SELECT");
    if (!leitor.Toma("*")) {
        do {
            consulta.Colunas.push_back(leitor.Nome());
        } while (leitor.Toma(","));
    }
    leitor.Exige("FROM");
    consulta.Tabela = leitor.Nome();
    if (leitor.Toma("WHERE")) {
        do {
            // Braces, so that they are read in this order.
            consulta.Condicoes.push_back(Condicao{LeOperando(leitor), LeOperador(leitor), LeOperando(leitor)});
        } while (leitor.Toma("AND"));
    }
    if (leitor.Toma("ORDER")) {
        leitor.Exige("BY");
        do {
            consulta.Ordem.push_back(leitor.Nome());
        } while (leitor.Toma(","));
    }
    if (leitor.Atual().Tipo != Especie::Fim) {
        leitor.Recusa();
    }
    return consulta;
}
