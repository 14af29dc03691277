#pragma once

#include <memory>
#include <string>
#include <vector>

#include <libpq-fe.h>

// A connection to the engine past the services. What fails is a std::runtime_error with the engine's words.
class Ligacao {
  public:
    explicit Ligacao(const std::string &onde);

    // The rows of a statement, empty for a null.
    std::vector<std::vector<std::string>> Linhas(const std::string &comando);
    // The first cell of the first row; empty when there is none.
    std::string Valor(const std::string &comando);
    // Statements that give nothing back.
    void Executa(const std::string &comandos);

    // A statement with "$1", "$2"... under a name, and its runs, which give nothing back.
    struct UmValor {
        std::string Conteudo;
        enum { Nulo, Texto, Octetos } Forma = Nulo; // octets go as they are
    };
    using Valores = std::vector<UmValor>;
    void Prepara(const std::string &nome, const std::string &comando);
    void Executa(const std::string &nome, const Valores &valores);

    // Rows into a table, as text: ComecaCopia, any number of Copia, TerminaCopia.
    void ComecaCopia(const std::string &tabelaEColunas);
    void Copia(const std::string &linhas);
    void TerminaCopia();

  private:
    using Resultado = std::unique_ptr<PGresult, void (*)(PGresult *)>;
    Resultado Pede(const std::string &comando);
    Resultado Aceita(PGresult *resultado, const std::string &comando);

    std::unique_ptr<PGconn, void (*)(PGconn *)> m_Ligacao;
};

// The same place with another database in it: the last part of the path of the connection text.
std::string ComBanco(const std::string &onde, const std::string &banco);
