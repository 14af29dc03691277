#pragma once

#include "host/Falha.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct pg_conn;
struct pg_result;

namespace mesa {

// Whether a place is a database of a server, and not a file.
bool EhDeServidor(const std::string &onde);
// The same place for a sentence, without what is nobody else's business: "banco de dados registro em maquina:5432".
std::string NomeDoServidor(const std::string &onde);

// What the server answered instead of doing what was asked, or why there was no answer.
class ErroDoServidor : public Falha {
  public:
    ErroDoServidor(const std::string &frase, std::string estado, std::string detalhe, bool caiu);

    std::string Estado; // SQLSTATE; empty when the server said nothing
    std::string Detalhe;
    bool Caiu; // the connection is gone
};

// A connection with a database of a server for work on the registry as a whole, where rows pass by one after another
// and none is kept. Of one thread. Everything raises ErroDoServidor.
class LigacaoPostgres {
  public:
    using Celula = std::optional<std::string>;

    // onde: "postgresql://...". With several machines, the one that takes writes; one that was left behind is passed
    // over.
    explicit LigacaoPostgres(const std::string &onde);

    const std::string &Nome() const { return m_Nome; }
    // The text by which it was opened.
    const std::string &Onde() const { return m_Onde; }

    void Comanda(const std::string &sql);
    std::vector<std::vector<Celula>> Linhas(const std::string &sql, const std::vector<std::string> &valores = {});
    // First column of the first row; nothing without rows.
    Celula Unico(const std::string &sql, const std::vector<std::string> &valores = {});
    std::int64_t Inteiro(const std::string &sql, const std::vector<std::string> &valores = {});

    // Hands over the rows of a query one after another, each column in the binary form of its type. What `faz` raises
    // ends the connection.
    using Campos = std::vector<std::optional<std::string_view>>;
    void CadaLinha(const std::string &sql, const std::function<void(const Campos &)> &faz);

    // Puts rows into a table: asks `proxima` for one after another, in the textual form of the server, until it answers
    // false. How many went in.
    std::int64_t Poe(const std::string &tabela, const std::string &colunas,
                     const std::function<bool(std::string &linha)> &proxima);

  private:
    using Resultado = std::unique_ptr<pg_result, void (*)(pg_result *)>;

    // Connects to the first of the places that can be had.
    void Liga(const std::map<std::string, std::string> &lugares, bool comGravacao);
    Resultado Executa(const std::string &sql, const std::vector<std::string> &valores);
    [[noreturn]] void Falha(const pg_result *resultado);

    std::string m_Onde;
    std::string m_Nome;
    std::unique_ptr<pg_conn, void (*)(pg_conn *)> m_Aberta;
};

// A transaction: rolled back in its destructor unless it was confirmed.
class TransacaoPostgres {
  public:
    // comando: what begins it.
    TransacaoPostgres(LigacaoPostgres &ligacao, const std::string &comando);
    TransacaoPostgres(const TransacaoPostgres &) = delete;
    TransacaoPostgres &operator=(const TransacaoPostgres &) = delete;
    ~TransacaoPostgres();

    void Confirma();

  private:
    LigacaoPostgres &m_Ligacao;
    bool m_Aberta = true;
};

inline constexpr const char *UmMomento = "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY";

} // namespace mesa
