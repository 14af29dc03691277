#pragma once

#include "desk/services/ErroSql.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

#include <string>
#include <vector>

namespace mesa {

// Statements that bring a schema from one version to the next.
using Migracao = std::vector<QString>;

// What differs between one database and another. Everything else is the same SQL for all.
class Dialeto {
  public:
    Dialeto() = default;
    Dialeto(const Dialeto &) = delete;
    Dialeto &operator=(const Dialeto &) = delete;
    virtual ~Dialeto() = default;

    // Opens the connection of that name, ready for work: durable commits, foreign keys obeyed.
    virtual void Abre(const QString &conexao, const std::string &onde) const = 0;

    // Begins a transaction that holds the right to write from its start, and one that only reads.
    virtual QString IniciaEscrita() const = 0;
    virtual QString IniciaLeitura() const = 0;

    // Refuses to go on when what would be written would not be found again. Raises ErroSql.
    virtual void ConfereLugar(const QString &) const {}

    virtual ErroSql Erro(const QSqlError &erro) const = 0;

    // From an empty database to the present version: the first migration gives version 1.
    virtual std::vector<Migracao> Migracoes() const = 0;
};

} // namespace mesa
