#pragma once

#include "services/Dialeto.h"

#include <QSqlError>

#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct pg_result;

namespace mesa {

// The networked database. It is told by a text that its own library takes, "postgresql://role@host,host/database?...",
// of whose hosts the writable one is followed. Beside that library's parameters the text may have, after the "?":
//   limite_comando, limite_trava, limite_confirmacao  milliseconds that a statement, the wait for another writer, and
//                                                     a commit may take;
//   papel_de_trabalho                                 the role that works on a registry that is made or brought up to
//                                                     date through this text, when it is not the one that owns it.
class DialetoPostgres : public Dialeto {
  public:
    DialetoPostgres();
    // With the parameters of a text through which it is not opened, for the statements alone.
    explicit DialetoPostgres(const std::string &onde);
    ~DialetoPostgres() override;

    // Whether the text tells a place in this database.
    static bool Reconhece(std::string_view onde);
    // The text without the parameters of ours, as that library takes it.
    static std::string TextoDaBiblioteca(const std::string &onde);

    std::string Abre(const QString &conexao, const std::string &onde, Abertura abertura) override;
    void Limita(const QString &conexao, Prazo ate) override;
    QString IniciaEscrita() const override;
    QString IniciaLeitura() const override;
    void Confirma(const QString &conexao) override;
    // Only an engine that takes writes is connected to, and the right to write may be somebody else's for long.
    bool ProvaEscritaAoAbrir() const override { return false; }
    bool Caiu() const override;
    void Reabre() override;
    std::unique_ptr<Preparada> Prepara(const QString &conexao, const QString &sql) override;
    void Comanda(const QString &conexao, const QString &sql) override;
    std::vector<QString> Esquema() const override;
    std::size_t PrimeiraVersao() const override;
    std::vector<Migracao> Migracoes() const override { return {}; }
    std::vector<QString> AntesDeMigrar() const override { return {}; }
    std::vector<QString> DepoisDeMigrar() const override { return {}; }
    QString ReferenciasPartidas() const override;

    // The schema in two parts, so that rows may come in between: the tables, and then what looks after them (indices,
    // references, exclusions, guards, and the rights of the role that works on them).
    std::vector<QString> Tabelas() const;
    std::vector<QString> Guardas() const;

  private:
    struct Ligacao;

    // What the server answered instead of doing what was asked: the state of its error and its words.
    ErroSql Erro(const QString &estado, const QString &palavras) const;
    ErroSql Erro(const QSqlError &erro) const { return Erro(erro.nativeErrorCode(), erro.databaseText()); }
    ErroSql Erro(const pg_result *resposta) const;
    void Liga();
    void Conecta(const std::map<QString, QString> &opcoes);
    // Whether what it is connected to has not been left behind by one that was promoted.
    bool EstaEmDia() const;
    QString Inicia(const QString &comeco) const;
    void ConfereQueERegistro() const;
    void ConfereQueEstaVazio() const;

    std::unique_ptr<Ligacao> m_Ligacao;
};

} // namespace mesa
