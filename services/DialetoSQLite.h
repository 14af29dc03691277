#pragma once

#include "services/Dialeto.h"
#include "services/Disco.h"

#include <QSqlDatabase>
#include <QSqlError>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace mesa {

// The embedded database: one file, with a write-ahead log beside it.
class DialetoSQLite : public Dialeto {
  public:
    // rede: tells the disks on which nobody may write, since their locks do not reach everybody.
    explicit DialetoSQLite(DetectorDeRede rede = DiscoDeRede);

    std::string Abre(const QString &conexao, const std::string &onde, Abertura abertura) override;
    void Limita(const QString &conexao, Prazo ate) override;
    QString IniciaEscrita() const override;
    QString IniciaLeitura() const override;
    void Confirma(const QString &conexao) override;
    void ConfereLugar(const QString &conexao) const override;
    std::unique_ptr<Preparada> Prepara(const QString &conexao, const QString &sql) override;
    void Comanda(const QString &conexao, const QString &sql) override;
    std::vector<QString> Esquema() const override;
    std::vector<Migracao> Migracoes() const override;
    std::vector<QString> AntesDeMigrar() const override;
    std::vector<QString> DepoisDeMigrar() const override;
    QString ReferenciasPartidas() const override;

    // Statements that make the tables of that version, from 2 on.
    static std::vector<QString> EsquemaDaVersao(std::int64_t versao);
    // What the driver's error, and one of the database's codes, stand for.
    static ErroSql Erro(const QSqlError &erro);
    static ErroSql ErroDoCodigo(int codigo, const std::string &detalhe);

  private:
    // A file as it was when it was opened to be looked at: nothing tells the database when somebody changes it.
    struct Retrato {
        std::filesystem::path Arquivo;
        std::uintmax_t Tamanho = 0;
        std::filesystem::file_time_type Quando;
    };

    void AbreParaTrabalho(QSqlDatabase &banco, const std::string &arquivo, Abertura abertura) const;
    void AbreParaConsulta(QSqlDatabase &banco, const std::filesystem::path &arquivo);

    DetectorDeRede m_Rede;
    std::optional<Retrato> m_Consultado;
};

} // namespace mesa
