#pragma once

#include "services/ErroSql.h"
#include "services/Preparada.h"

#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <vector>

struct pg_conn;
struct pg_result;

namespace mesa {

// A statement of the networked database by its own library: the toolkit's driver would write every run of a prepared
// statement out as text, for the server to parse again, and parse all that comes back here.
class PreparadaPostgres : public Preparada {
  public:
    // What the server answered instead: the answer, or null when there was none.
    using Falhou = std::function<ErroSql(const pg_result *)>;

    // ligacao: outlives the statement, or is lost before it is used again. nome: one that the connection has not had.
    // sql: with "?" for each value.
    PreparadaPostgres(pg_conn *ligacao, std::string nome, const QString &sql, Falhou falhou);

    void Executa(const QVariantList &valores) override;
    bool Proxima() override;
    bool TemLinha() const override;
    QVariant Valor(int coluna) const override;
    std::int64_t Inteiro(int coluna) const override;
    std::string Texto(int coluna) const override;
    void Termina() override;

    // The statement with "$1", "$2"... in the places of its values; what stands in quotes stays.
    static std::string ComLugares(const std::string &sql);

  private:
    using Resultado = std::unique_ptr<pg_result, void (*)(pg_result *)>;

    Resultado Aceita(pg_result *resultado) const;

    pg_conn *m_Ligacao;
    std::string m_Nome;
    Falhou m_Falhou;
    // Whether all of its columns are of the types whose binary form is known here; otherwise all travel as text.
    bool m_Binaria = true;
    std::vector<unsigned> m_Tipos;
    Resultado m_Resultado;
    int m_Linha = -1;
};

} // namespace mesa
