#pragma once

#include "services/ErroSql.h"
#include "services/Preparada.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace mesa {

class Banco;
struct Instante;
using Prazo = std::chrono::steady_clock::time_point;

// What brings a schema from one version to the next: statements, and then the work that statements cannot do. The right
// to write is held, and no reference is looked after until the end, when all are checked.
struct Migracao {
    std::vector<QString> Comandos;
    std::function<void(Banco &, const Instante &agora)> Passo = {};
};

enum class Abertura {
    Existente, // of what is not there, or is no registry, nothing is made
    Consulta,  // the same, and it is looked at only
    Nova       // there may be no file of that name
};

// What differs between one database and another. Everything else is the same SQL for all.
class Dialeto {
  public:
    Dialeto() = default;
    Dialeto(const Dialeto &) = delete;
    Dialeto &operator=(const Dialeto &) = delete;
    virtual ~Dialeto() = default;

    // Opens the connection of that name, ready for work: durable commits, foreign keys obeyed. Refuses what there is in
    // `onde` when it is no registry, and what there is not. Answers why it may only be looked at, as a sentence;
    // nothing when it may be worked on.
    virtual std::string Abre(const QString &conexao, const std::string &onde, Abertura abertura) = 0;

    // What the next transactions wait for (who else writes, a statement, their end) is waited for no longer than that.
    virtual void Limita(const QString &conexao, Prazo ate) = 0;

    // Begins a transaction that holds the right to write from its start, and one that only reads.
    virtual QString IniciaEscrita() const = 0;
    virtual QString IniciaLeitura() const = 0;
    // Ends the transaction with all that it wrote. Raises ErroSql: where that says Incerto nobody knows here whether it
    // was written, and otherwise it was not.
    virtual void Confirma(const QString &conexao) = 0;

    // Whether only a transaction that writes tells those who may not, who are to hear it when they open the registry.
    virtual bool ProvaEscritaAoAbrir() const { return true; }

    // Whether the connection leads nowhere any more; then no statement of it is of use.
    virtual bool Caiu() const { return false; }
    // Opens it anew, under the same name. Raises ErroSql.
    virtual void Reabre() {}

    // A statement with "?" for each value, as this database says it. Raises ErroSql.
    virtual std::unique_ptr<Preparada> Prepara(const QString &conexao, const QString &sql) = 0;
    // Statements that are run once and answer nothing. Raises ErroSql.
    virtual void Comanda(const QString &conexao, const QString &sql) = 0;

    // Refuses to go on when what would be written would not be found again, or what is only looked at is not what was
    // opened any more. Raises ErroSql.
    virtual void ConfereLugar(const QString &) const {}

    // Statements that make the tables of the present version in an empty database.
    virtual std::vector<QString> Esquema() const = 0;
    // The version that the first of the migrations starts from.
    virtual std::size_t PrimeiraVersao() const { return 1; }
    // From there to the present version.
    virtual std::vector<Migracao> Migracoes() const = 0;
    // Before and after migrations, outside the transaction: the looking after references ends, and begins again.
    virtual std::vector<QString> AntesDeMigrar() const = 0;
    virtual std::vector<QString> DepoisDeMigrar() const = 0;
    // Asks for the rows whose references lead nowhere: table, row, table referred to.
    virtual QString ReferenciasPartidas() const = 0;
};

} // namespace mesa
