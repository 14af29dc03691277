#include "bench/servidor/Ligacao.h"

#include <stdexcept>

Ligacao::Ligacao(const std::string &onde) : m_Ligacao(PQconnectdb(onde.c_str()), PQfinish)
{
    if (PQstatus(m_Ligacao.get()) != CONNECTION_OK) {
        throw std::runtime_error(PQerrorMessage(m_Ligacao.get()));
    }
    PQsetNoticeProcessor(
        m_Ligacao.get(), [](void *, const char *) {}, nullptr);
}

Ligacao::Resultado Ligacao::Aceita(PGresult *pedido, const std::string &comando)
{
    Resultado resultado(pedido, PQclear);
    switch (PQresultStatus(resultado.get())) {
    case PGRES_COMMAND_OK:
    case PGRES_TUPLES_OK:
    case PGRES_COPY_IN:
        return resultado;
    default:
        throw std::runtime_error(std::string(PQerrorMessage(m_Ligacao.get())) + comando.substr(0, 500));
    }
}

Ligacao::Resultado Ligacao::Pede(const std::string &comando)
{
    return Aceita(PQexec(m_Ligacao.get(), comando.c_str()), comando);
}

void Ligacao::Prepara(const std::string &nome, const std::string &comando)
{
    Aceita(PQprepare(m_Ligacao.get(), nome.c_str(), comando.c_str(), 0, nullptr), comando);
}

void Ligacao::Executa(const std::string &nome, const Valores &valores)
{
    std::vector<const char *> lugares;
    std::vector<int> tamanhos;
    std::vector<int> formas;
    for (const UmValor &valor : valores) {
        lugares.push_back(valor.Forma == UmValor::Nulo ? nullptr : valor.Conteudo.c_str());
        tamanhos.push_back(static_cast<int>(valor.Conteudo.size()));
        formas.push_back(valor.Forma == UmValor::Octetos ? 1 : 0);
    }
    Aceita(PQexecPrepared(m_Ligacao.get(), nome.c_str(), static_cast<int>(valores.size()), lugares.data(),
                          tamanhos.data(), formas.data(), 1),
           nome);
}

std::vector<std::vector<std::string>> Ligacao::Linhas(const std::string &comando)
{
    const Resultado resultado = Pede(comando);
    std::vector<std::vector<std::string>> linhas;
    for (int linha = 0; linha < PQntuples(resultado.get()); ++linha) {
        auto &celulas = linhas.emplace_back();
        for (int coluna = 0; coluna < PQnfields(resultado.get()); ++coluna) {
            celulas.emplace_back(PQgetvalue(resultado.get(), linha, coluna));
        }
    }
    return linhas;
}

std::string Ligacao::Valor(const std::string &comando)
{
    const auto linhas = Linhas(comando);
    return linhas.empty() ? "" : linhas.front().front();
}

void Ligacao::Executa(const std::string &comandos)
{
    Pede(comandos);
}

void Ligacao::ComecaCopia(const std::string &tabelaEColunas)
{
    Pede("COPY " + tabelaEColunas + " FROM STDIN");
}

void Ligacao::Copia(const std::string &linhas)
{
    if (PQputCopyData(m_Ligacao.get(), linhas.data(), static_cast<int>(linhas.size())) != 1) {
        throw std::runtime_error(PQerrorMessage(m_Ligacao.get()));
    }
}

void Ligacao::TerminaCopia()
{
    if (PQputCopyEnd(m_Ligacao.get(), nullptr) != 1) {
        throw std::runtime_error(PQerrorMessage(m_Ligacao.get()));
    }
    while (PGresult *resultado = PQgetResult(m_Ligacao.get())) {
        const Resultado guardado(resultado, PQclear);
        if (PQresultStatus(resultado) != PGRES_COMMAND_OK) {
            throw std::runtime_error(PQerrorMessage(m_Ligacao.get()));
        }
    }
}

std::string ComBanco(const std::string &onde, const std::string &banco)
{
    const std::size_t perguntas = onde.find('?');
    const std::size_t barra = onde.rfind('/', perguntas);
    return onde.substr(0, barra + 1) + banco + (perguntas == std::string::npos ? "" : onde.substr(perguntas));
}
