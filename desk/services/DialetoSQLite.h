#pragma once

#include "desk/services/Dialeto.h"

namespace mesa {

// The embedded database: one file, with a write-ahead log beside it.
class DialetoSQLite : public Dialeto {
  public:
    void Abre(const QString &conexao, const std::string &onde, Abertura abertura) const override;
    QString IniciaEscrita() const override;
    QString IniciaLeitura() const override;
    void ConfereLugar(const QString &conexao) const override;
    ErroSql Erro(const QSqlError &erro) const override;
    std::vector<QString> Esquema() const override;
    std::vector<Migracao> Migracoes() const override;
    std::vector<QString> AntesDeMigrar() const override;
    std::vector<QString> DepoisDeMigrar() const override;
    QString ReferenciasPartidas() const override;
};

} // namespace mesa
