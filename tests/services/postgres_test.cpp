#include "services/Banco.h"
#include "services/DialetoPostgres.h"
#include "services/DialetoSQLite.h"
#include "services/Dialetos.h"
#include "services/Esquema.h"
#include "services/Historico.h"
#include "services/LigacaoPostgres.h"
#include "services/Resumo.h"
#include "services/ServicosSql.h"
#include "tests/services/Motor.h"
#include "tests/services/PapelDeTrabalho.h"
#include "tests/services/RegistroDeTeste.h"
#include "tests/support/FalhaLancada.h"

#include <QDate>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <future>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <unistd.h>

using namespace mesa;

namespace {

// For its scope the tests' registries are on that engine.
class NoMotor {
  public:
    explicit NoMotor(const char *qual)
    {
        const char *era = std::getenv("MOTOR_DE_TESTE");
        m_Era = era == nullptr ? "sqlite" : era;
        setenv("MOTOR_DE_TESTE", qual, 1);
    }
    NoMotor(const NoMotor &) = delete;
    NoMotor &operator=(const NoMotor &) = delete;
    ~NoMotor() { setenv("MOTOR_DE_TESTE", m_Era.c_str(), 1); }

  private:
    std::string m_Era;
};

Instante Agora()
{
    return DataDe(20, 11, 2026, 10, 0, 0);
}

std::unique_ptr<Banco> Abre(const std::string &onde)
{
    return std::make_unique<Banco>(DialetoPara(onde), onde, Agora());
}

std::string Com(const std::string &onde, const std::string &parametros)
{
    return onde + (onde.find('?') == std::string::npos ? "?" : "&") + parametros;
}

std::string Primeira(const std::string &onde, const std::string &sql)
{
    const auto linhas = LinhasSql(onde, sql);
    return linhas.empty() ? "" : linhas.front();
}

std::string MotivoDe(const std::string &onde, const std::string &sql)
{
    try {
        LinhasSql(onde, sql);
    } catch (const std::runtime_error &erro) {
        return erro.what();
    }
    return "done";
}

// A failure of the database, and Outro with no words when there was none.
template <class Acao> ErroSql ErroDe(Acao acao)
{
    try {
        acao();
    } catch (const ErroSql &erro) {
        return erro;
    }
    return ErroSql(MotivoSql::Outro, "");
}

// A registry on the server, with a row in every table.
class Postgres : public testing::Test {
  protected:
    Postgres()
    {
        const auto ana = m_Registro.Sessao("ana");
        const auto afericao = AfericaoDe("1", DataDe(1, 1, 2026), DataDe(31, 12, 2026), GuardaPdf(ana, "x"));
        const std::int32_t numero = Inclui(ana, Poe(EquipamentoDe("R-001"), Poe(SensorDe(1), afericao)));
        Exigido(Pede(ana, "alteraListaLimitesDif", ListaDeLimites({LimiteDe(numero, 2, 730, 900)})));
        Exigido(Pede(ana, "adicionaDiaEspecifico", DiaDe(numero, DataDe(25, 12, 2026), 730, 900)));
        Sql("INSERT INTO LOGRADOURO VALUES (1, 4314902, 'Rua A', '', '', 'rua a', 1, 1)");
        std::string recusa;
        std::int32_t espera = 0;
        m_Registro.Aberto().Entra("ana", "outra senha", "estação", recusa, espera);
        const auto sql = ComoTipo<SessaoSql>(ana);
        for (int vezes = 0; vezes < 2; ++vezes) {
            double documento = 0;
            sql->Numera({"0d9f6f0e-5a53-4a7b-8f5c-1f0b6f1f2a01", Resumo("y"), [] { return std::string(); }});
            sql->GuardaDocumento(Pdf("y"), documento, recusa);
        }
    }

    const std::string &Onde() const { return m_Registro.Caminho(); }
    std::string Sql(const std::string &comando) const { return Primeira(Onde(), comando); }
    std::string Motivo(const std::string &comando) const { return MotivoDe(Onde(), comando); }
    // Asks until it is so; false when it has not come to be for a long time.
    bool EsperaQue(const std::string &pergunta) const
    {
        for (const auto fim = std::chrono::steady_clock::now() + std::chrono::seconds(60); Sql(pergunta) != "t";) {
            if (std::chrono::steady_clock::now() > fim) {
                return false;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return true;
    }

    NoMotor m_Motor{"postgres"};
    RegistroDeTeste m_Registro;
};

std::string NomeDe(const Esquema::Tabela &tabela)
{
    return std::string(tabela.Nome);
}

// --- what the database itself keeps ---

TEST_F(Postgres, EveryTable_ErasedEmptiedOrMoved_IsRefusedToItsOwner)
{
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        const std::string nome = NomeDe(tabela);
        const std::string chave(tabela.Chave().Nome);
        const std::string antes = Sql("SELECT COUNT(*) FROM " + nome);
        ASSERT_NE(antes, "0") << nome;
        EXPECT_EQ(Motivo("TRUNCATE " + nome + " CASCADE"), nome + "_SEM_TRUNCATE");
        EXPECT_EQ(Motivo("DELETE FROM " + nome), nome + "_SEM_DELETE");
        EXPECT_EQ(Motivo("MERGE INTO " + nome + " t USING (SELECT 1) u ON true WHEN MATCHED THEN DELETE"),
                  nome + "_SEM_DELETE");
        EXPECT_EQ(Motivo("UPDATE " + nome + " SET " + chave + " = " + chave + " + 50"),
                  nome + (tabela.SoInclui ? "_SEM_UPDATE" : "_FIXA"));
        EXPECT_EQ(Motivo("SET session_replication_role = replica; DELETE FROM " + nome), nome + "_SEM_DELETE");
        std::string colunas;
        for (const Esquema::Coluna &coluna : tabela.Colunas) {
            colunas += (colunas.empty() ? "" : ", ") + std::string(coluna.Nome);
        }
        EXPECT_EQ(Motivo("INSERT INTO " + nome + " (" + colunas + ") SELECT " + colunas + " FROM " + nome +
                         " LIMIT 1 ON CONFLICT DO NOTHING"),
                  nome + "_REPETIDO");
        EXPECT_EQ(Sql("SELECT COUNT(*) FROM " + nome), antes);
    }
}

TEST_F(Postgres, Guards_AreAlwaysOn)
{
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM pg_trigger WHERE NOT tgisinternal AND tgenabled <> 'A'"), "0");
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM pg_trigger WHERE NOT tgisinternal"),
              std::to_string(4 * Esquema::Tabelas().size()));
}

TEST_F(Postgres, Columns_OutOfRange_AreRefusedByName)
{
    auto banco = Abre(Onde());
    const auto erro = [&](const QString &sql) {
        return ErroDe([&] { banco->Escreve([&] { Consulta(*banco, sql); }); });
    };
    for (const char *dia : {"20310000", "20310230", "20311301", "20310132", "0", "-20310101", "20270229"}) {
        const ErroSql recusa = erro(QString("UPDATE AFERICAO SET Versao = 2, DataVencimento = ") + dia);
        EXPECT_EQ(recusa.Motivo, MotivoSql::Coluna) << dia;
        EXPECT_EQ(recusa.Descricao,
                  "O campo \"data de vencimento\" veio com um valor que não pode ser gravado. Nada foi gravado.")
            << dia;
    }
    EXPECT_EQ(erro("UPDATE AFERICAO SET Versao = 2, DataVencimento = 20280229").Detalhe, "");
    EXPECT_EQ(erro("UPDATE AFERICAO SET Versao = 3, DataVencimento = 20250101").Detalhe, "AFERICAO_VERSAO");
    EXPECT_EQ(erro("UPDATE LIMITE SET HoraFim = 700").Detalhe, "CHECK constraint failed: LIMITE_Inicio_ate_Fim");
    EXPECT_EQ(erro("UPDATE LIMITE SET HoraFim = 2400").Detalhe, "CHECK constraint failed: LIMITE_HoraFim");
    EXPECT_EQ(erro("UPDATE USUARIO SET Nome = ''").Detalhe, "CHECK constraint failed: USUARIO_Nome");
    EXPECT_EQ(erro("UPDATE EQUIPAMENTO SET Codigo = 'OUTRO'").Detalhe, "EQUIPAMENTO_FIXA");
    EXPECT_EQ(erro("UPDATE EQUIPAMENTO SET Codigo = NULL").Motivo, MotivoSql::Regra);
    EXPECT_EQ(erro("UPDATE EQUIPAMENTO SET Descricao = NULL").Motivo, MotivoSql::Outro);
    EXPECT_EQ(erro("INSERT INTO HISTORICO SELECT (SELECT MAX(Nro) + 2 FROM HISTORICO), Quando, Fuso, Operador, Raiz, "
                   "NroRaiz, Versao, Entidade, NroEntidade, Acao, Motivo, Antes, Depois, Elo FROM HISTORICO LIMIT 1")
                  .Detalhe,
              "HISTORICO_EM_SEQUENCIA");
}

// With the guards off, which only the owner can do, the exclusion stands alone.
class PostgresExclusao : public Postgres {
  protected:
    PostgresExclusao()
    {
        for (const char *tabela : {"AFERICAO", "LIMITE", "DIA"}) {
            Sql(std::string("ALTER TABLE ") + tabela + " DISABLE TRIGGER USER");
        }
    }
    std::string Aferida(const std::string &de, const std::string &ate, const std::string &ativo = "1") const
    {
        return Motivo("INSERT INTO AFERICAO SELECT (SELECT MAX(NroIntAfericao) + 1 FROM AFERICAO), 1, '', '', " + de +
                      ", " + ate + ", " + ativo + ", NULL, 1, '', 1");
    }
    std::string Limitado(int de, int ate) const
    {
        return Motivo("INSERT INTO LIMITE SELECT (SELECT MAX(NroInt) + 1 FROM LIMITE), 1, 2, " + std::to_string(de) +
                      ", " + std::to_string(ate) + ", 40, 0, 1, 1, 1");
    }
    static bool EhExclusao(const std::string &motivo, const std::string &qual)
    {
        return motivo.find("exclusion constraint \"" + qual + "\"") != std::string::npos;
    }
};

TEST_F(PostgresExclusao, Calibrations_OfOneSensorOnOneDay_AreRefused)
{
    EXPECT_TRUE(EhExclusao(Aferida("20261231", "20270101"), "AFERICAO_SOBREPOSTA")); // the last day counts
    EXPECT_TRUE(EhExclusao(Aferida("20250101", "20260101"), "AFERICAO_SOBREPOSTA"));
    EXPECT_TRUE(EhExclusao(Aferida("20260601", "20260601"), "AFERICAO_SOBREPOSTA"));
    EXPECT_EQ(Aferida("20270101", "20271231"), "done");
    EXPECT_EQ(Aferida("20251231", "20251231"), "done");
    EXPECT_EQ(Aferida("20260601", "20260601", "2"), "done"); // one that is not active
    EXPECT_TRUE(EhExclusao(Motivo("UPDATE AFERICAO SET Ativo = 1"), "AFERICAO_SOBREPOSTA"));
    // What an exclusion alone would let pass.
    EXPECT_NE(Aferida("NULL", "20290101"), "done");
    EXPECT_NE(Aferida("20290101", "NULL"), "done");
    EXPECT_NE(Aferida("20290102", "20290101"), "done");
    EXPECT_NE(Motivo("UPDATE AFERICAO SET Periodo = 'empty'"), "done");
    EXPECT_NE(Motivo("UPDATE AFERICAO SET Periodo = NULL"), "done");
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM AFERICAO WHERE Periodo IS NULL OR isempty(Periodo)"), "0");
}

TEST_F(PostgresExclusao, Limits_WithAMinuteInCommon_AreRefusedAsByTheGuard)
{
    // The guard's own words for all pairs of a few minutes, ends and points among them.
    const std::vector<int> horas = {0, 1, 2, 3};
    for (const int de : horas) {
        for (const int ate : horas) {
            for (const int outroDe : horas) {
                for (const int outroAte : horas) {
                    if (de > ate || outroDe > outroAte) {
                        continue;
                    }
                    Sql("UPDATE LIMITE SET Ativo = 2");
                    ASSERT_EQ(Limitado(de, ate), "done");
                    const bool comum = (de < outroAte && ate > outroDe) || (de == outroDe && ate == outroAte);
                    EXPECT_EQ(Limitado(outroDe, outroAte) != "done", comum)
                        << de << "-" << ate << " " << outroDe << "-" << outroAte;
                }
            }
        }
    }
}

// --- who may do what ---

TEST(PostgresPapeis, WorkingRole_AddsAndChangesAndNothingElse)
{
    const NoMotor motor("postgres");
    const motor::RegistroVazio vazio;
    const std::string postgres = motor::TextoComum("postgres");
    const std::string papel = "trabalho_" + std::to_string(getpid());
    LinhasSql(postgres, "CREATE ROLE " + papel + " LOGIN");
    {
        const auto servicos = Servicos::Cria(
            Com(vazio.Onde(), "papel_de_trabalho=" + papel), TipoDeRegistro::Registro, [] { return Agora(); },
            CustoDeTeste);
        servicos->CadastraCliente({1, "Autoridade Estadual de Trânsito", {"Fiscalização"}, "RS"});
    }
    std::string onde = vazio.Onde();
    onde.replace(onde.find("postgres@"), 8, papel);
    {
        // It works: somebody registers, signs in and adds an equipment.
        const auto servicos = Servicos::Abre(
            onde, [] { return Agora(); }, CustoDeTeste);
        servicos->CadastraUsuario({1, "ana", "Ana Souza", 1, "Autoridade Estadual de Trânsito", "Fiscalização", 0},
                                  "senha de ana", {"", "I", "A", "E"});
        std::string recusa;
        std::int32_t espera = 0;
        const auto ana = servicos->Entra("ana", "senha de ana", "estação", recusa, espera);
        ASSERT_FALSE(ana.Nada()) << recusa;
        Inclui(ana,
               Poe(EquipamentoDe("R-001"),
                   Poe(SensorDe(1), AfericaoDe("1", DataDe(1, 1, 2026), DataDe(31, 12, 2026), GuardaPdf(ana, "x")))));
    }
    const auto negado = [&](const std::string &sql) {
        return MotivoDe(onde, sql).find("permission denied") != std::string::npos ||
               MotivoDe(onde, sql).find("must be owner") != std::string::npos;
    };
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        const std::string nome = NomeDe(tabela);
        const std::string chave(tabela.Chave().Nome);
        EXPECT_EQ(MotivoDe(onde, "SELECT * FROM " + nome), "done");
        EXPECT_TRUE(negado("DELETE FROM " + nome)) << nome;
        EXPECT_TRUE(negado("TRUNCATE " + nome)) << nome;
        EXPECT_TRUE(negado("ALTER TABLE " + nome + " DISABLE TRIGGER ALL")) << nome;
        EXPECT_TRUE(negado("DROP TABLE " + nome)) << nome;
        EXPECT_EQ(negado("UPDATE " + nome + " SET " + chave + " = " + chave), tabela.SoInclui || nome == "ESQUEMA")
            << nome;
    }
    EXPECT_TRUE(negado("INSERT INTO ESQUEMA VALUES (99)"));
    EXPECT_TRUE(negado("CREATE TABLE MINHA (N int)"));
    EXPECT_TRUE(negado("CREATE TEMP TABLE AFERICAO (N int)"));
    EXPECT_TRUE(negado("CREATE FUNCTION f() RETURNS int LANGUAGE sql RETURN 1"));
    EXPECT_TRUE(negado("SET session_replication_role = replica"));
    EXPECT_EQ(MotivoDe(onde, "UPDATE EQUIPAMENTO SET Codigo = 'X'"), "EQUIPAMENTO_FIXA");
    EXPECT_NE(MotivoDe(onde, "UPDATE AFERICAO SET Periodo = 'empty'"), "done");
    const ErroSql erro = ErroDe([&] {
        auto banco = Abre(onde);
        banco->Escreve([&] { banco->Comanda("DELETE FROM HISTORICO"); });
    });
    EXPECT_EQ(erro.Motivo, MotivoSql::SoLeitura);
    EXPECT_TRUE(erro.Descricao.starts_with("O banco de dados não permite esta operação")) << erro.Descricao;
    LinhasSql(vazio.Onde(), "DROP OWNED BY " + papel);
    LinhasSql(postgres, "DROP ROLE " + papel);
}

// --- opening ---

class PostgresAbertura : public testing::Test {
  protected:
    NoMotor m_Motor{"postgres"};
    motor::RegistroVazio m_Vazio;
};

TEST_F(PostgresAbertura, Create_WhereThereIsAnything_IsRefused)
{
    const auto cria = [&] {
        return FalhaLancada([&] { Servicos::Cria(m_Vazio.Onde(), TipoDeRegistro::Registro, [] { return Agora(); }); });
    };
    for (const auto &[faz, desfaz] : {std::pair("CREATE TABLE NOTAS (N int)", "DROP TABLE NOTAS"),
                                      {"CREATE SCHEMA NOTAS", "DROP SCHEMA NOTAS"},
                                      {"CREATE FUNCTION f() RETURNS int LANGUAGE sql RETURN 1", "DROP FUNCTION f"},
                                      {"CREATE TYPE notas AS ENUM ('a')", "DROP TYPE notas"}}) {
        LinhasSql(m_Vazio.Onde(), faz);
        const Falha falha = cria();
        EXPECT_EQ(falha.Numero, NumeroFalha::ArquivoJaExiste) << faz;
        EXPECT_TRUE(falha.Descricao.starts_with("O banco de dados não está vazio")) << falha.Descricao;
        LinhasSql(m_Vazio.Onde(), desfaz);
    }
    LinhasSql(m_Vazio.Onde(), "CREATE EXTENSION btree_gist"); // as its administrator may have done before
    Servicos::Cria(m_Vazio.Onde(), TipoDeRegistro::Registro, [] { return Agora(); });
    EXPECT_EQ(cria().Numero, NumeroFalha::ArquivoJaExiste);
    EXPECT_TRUE(Servicos::Abre(m_Vazio.Onde(), [] { return Agora(); })->Vazio());
}

TEST_F(PostgresAbertura, Open_WhatIsNoRegistry_SaysSo)
{
    const auto frase = [&](const std::string &onde) {
        return FalhaLancada([&] { Servicos::Abre(onde, [] { return Agora(); }); }).Descricao;
    };
    EXPECT_EQ(frase(m_Vazio.Onde()), "No banco de dados informado não há um registro de equipamentos.");
    LinhasSql(m_Vazio.Onde(), "CREATE TABLE ESQUEMA (Versao bigint); INSERT INTO ESQUEMA VALUES (2)");
    EXPECT_EQ(frase(m_Vazio.Onde()), "No banco de dados informado não há um registro de equipamentos.");
    for (const std::string &onde :
         {std::string("postgresql://ninguem@%2Ftmp%2Fnada/registro"), motor::TextoComum("nao_existe"),
          std::string("postgresql://@@@?x=%ZZ"), Com(m_Vazio.Onde(), "limite_trava=muito"),
          Com(m_Vazio.Onde(), "parametro_que_nao_ha=1")}) {
        EXPECT_TRUE(frase(onde).starts_with("Não foi possível conectar ao banco de dados do registro")) << frase(onde);
    }
}

TEST_F(PostgresAbertura, Open_DatabaseOfAnotherEncoding_IsRefusedInWords)
{
    LinhasSql(m_Vazio.Onde(), "CREATE DATABASE latino ENCODING 'LATIN1' LOCALE 'C' TEMPLATE template0");
    const std::string onde = motor::TextoComum("latino");
    const Falha falha = FalhaLancada([&] { Servicos::Cria(onde, TipoDeRegistro::Registro, [] { return Agora(); }); });
    EXPECT_NE(falha.Descricao.find("o banco de dados não está em UTF-8 (server_encoding = LATIN1)"), std::string::npos)
        << falha.Descricao;
    LinhasSql(m_Vazio.Onde(), "DROP DATABASE latino");
}

// The present schema, with a further migration.
class DialetoPostgresFuturo : public DialetoPostgres {
  public:
    explicit DialetoPostgresFuturo(QString depois = "CREATE TABLE CORES (Nome text)") : m_Depois(std::move(depois)) {}
    std::vector<Migracao> Migracoes() const override
    {
        return {Migracao{{"ALTER TABLE EQUIPAMENTO ADD COLUMN Cor text", m_Depois}}};
    }

  private:
    QString m_Depois;
};

// Both find it old, wait for whoever is writing, and then for each other.
TEST_F(Postgres, TwoProgramsThatOpenAnOlderRegistryAtOnce_OneBringsItUpToDate)
{
    m_Registro.Fecha();
    auto dono = Abre(Onde());
    std::atomic<int> abertos = 0;
    std::vector<std::thread> programas;
    dono->Escreve([&] {
        for (int n = 0; n < 2; ++n) {
            programas.emplace_back([&] {
                Banco(std::make_unique<DialetoPostgresFuturo>(), Com(Onde(), "limite_trava=60000"), Agora());
                ++abertos;
            });
        }
        EXPECT_TRUE(EsperaQue("SELECT COUNT(*) = 2 FROM pg_locks WHERE locktype = 'advisory' AND NOT granted AND "
                              "database = (SELECT oid FROM pg_database WHERE datname = current_database())"));
    });
    for (std::thread &programa : programas) {
        programa.join();
    }
    EXPECT_EQ(abertos, 2);
    EXPECT_EQ(Sql("SELECT MAX(Versao), SUM(CASE WHEN Versao > 3 THEN 1 ELSE 0 END) FROM ESQUEMA"), "4|1");
    EXPECT_EQ(FalhaLancada([&] { Abre(Onde()); }).Descricao,
              "O registro é da versão 4, mais nova que a deste programa (versão 3). Atualize o programa.");
}

// The role that serves may not change the schema, and whoever starts the server has to know who does it and how.
TEST_F(Postgres, OlderRegistry_OpenedByTheWorkingRole_SaysHowItIsBroughtUpToDate)
{
    EXPECT_EQ(FalhaLancada([&] {
                  Banco(std::make_unique<DialetoPostgresFuturo>(), papel::DeTrabalho(Onde()), Agora());
              }).Descricao,
              "O registro é da versão 3 e precisa ser atualizado para a versão 4, o que este usuário do banco de dados "
              "não pode fazer: atualize-o com o do dono (registro-servidor --atualiza). Nada foi mudado.");
    EXPECT_EQ(Sql("SELECT MAX(Versao) FROM ESQUEMA"), "3");
    Abre(papel::DeTrabalho(Onde()));
}

TEST_F(Postgres, OlderRegistry_WithAMigrationThatFails_StaysWhole)
{
    EXPECT_NE(
        ErroDe([&] { Banco(std::make_unique<DialetoPostgresFuturo>("ISTO NÃO É SQL"), Onde(), Agora()); }).Detalhe, "");
    EXPECT_EQ(Sql("SELECT MAX(Versao) FROM ESQUEMA"), "3");
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM information_schema.columns WHERE column_name = 'cor'"), "0");
    Abre(Onde());
}

// --- one after another ---

TEST_F(Postgres, OpeningWhileAnotherSaves_DoesNotWait)
{
    auto dono = Abre(Onde());
    dono->Escreve([&] { EXPECT_EQ(ErroDe([&] { Abre(Com(Onde(), "limite_trava=1")); }).Detalhe, ""); });
}

TEST_F(Postgres, TwoThatSave_WaitForEachOtherAndTheChainIsWhole)
{
    constexpr int cada = 500;
    std::atomic<int> falhas = 0;
    const auto trabalha = [&](int quem) {
        auto banco = Abre(Onde());
        for (int n = 0; n < cada; ++n) {
            try {
                banco->Escreve([&] {
                    Historico(*banco).Registra(Agora(), 1,
                                               {"EQUIPAMENTO", 1, 1, "EQUIPAMENTO", 1, quem == 0 ? "a" : "b"});
                });
            } catch (const ErroSql &) {
                ++falhas;
            }
        }
    };
    const int antes = std::stoi(Sql("SELECT COUNT(*) FROM HISTORICO"));
    {
        std::thread um(trabalha, 0);
        std::thread outro(trabalha, 1);
        um.join();
        outro.join();
    }
    EXPECT_EQ(falhas, 0);
    EXPECT_EQ(Sql("SELECT COUNT(*), MAX(Nro) FROM HISTORICO"),
              std::to_string(antes + 2 * cada) + "|" + std::to_string(antes + 2 * cada));
    auto banco = Abre(Onde());
    banco->Le([&] {
        std::string elo = Historico::Origem(Sql("SELECT Identificador FROM REGISTRO"));
        Consulta linhas(*banco, "SELECT " + Historico::ColunasDoElo() + ", Elo FROM HISTORICO ORDER BY Nro");
        for (int nro = 1; linhas.Proxima(); ++nro) {
            QVariantList campos;
            for (int coluna = 0; coluna < 12; ++coluna) {
                campos.push_back(linhas.Valor(coluna));
            }
            elo = Historico::Encadeia(elo, nro, campos);
            ASSERT_EQ(elo, linhas.Texto(12)) << nro;
        }
    });
}

// Each waits for somebody who saves at a later second than the one in which it began to wait.
TEST_F(Postgres, ActsThatWaitedForAnother_AreNotWrittenDownAsEarlier)
{
    m_Registro.Cadastra("bia");
    std::atomic<int> segundo = 0;
    const auto relogio = [&] { return Instante(DataDe(20, 11, 2026, 11, 0, segundo)); };
    const auto entra = [](Servicos &servicos) {
        std::string recusa;
        std::int32_t espera = 0;
        const auto bia = servicos.Entra("bia", "senha de bia", "aqui", recusa, espera);
        EXPECT_TRUE(bia) << recusa;
        EXPECT_EQ(bia->AvisoDeRelogio(), "");
        return bia;
    };
    for (const bool jaEntrou : {false, true}) {
        auto dono = Abre(Onde());
        std::promise<void> pronta;
        std::promise<void> vai;
        std::thread quem([&] {
            const auto servicos = Servicos::Abre(Onde(), relogio, CustoDeTeste);
            const auto bia = jaEntrou ? entra(*servicos) : nullptr;
            pronta.set_value();
            vai.get_future().wait();
            if (jaEntrou) {
                EXPECT_TRUE(Pede(bia, "inclui", EquipamentoDe("R-002")).Feita);
            } else {
                entra(*servicos);
            }
        });
        pronta.get_future().wait();
        dono->Escreve([&] {
            vai.set_value();
            EXPECT_TRUE(EsperaQue("SELECT COUNT(*) = 1 FROM pg_locks WHERE locktype = 'advisory' AND NOT granted AND "
                                  "database = (SELECT oid FROM pg_database WHERE datname = current_database())"));
            segundo += 5;
            Historico(*dono).Registra(relogio(), 1, {"EQUIPAMENTO", 1, 1, "EQUIPAMENTO", 1, "a"});
        });
        quem.join();
    }
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM HISTORICO WHERE Entidade = 'RELOGIO'"), "0");
}

TEST_F(Postgres, OneThatWaitsTooLongForAnother_HearsThatItIsBusy)
{
    auto dono = Abre(Onde());
    auto outro = Abre(Com(Onde(), "limite_trava=50"));
    dono->Escreve([&] {
        const ErroSql erro = ErroDe([&] { outro->Escreve([] {}); });
        EXPECT_EQ(erro.Motivo, MotivoSql::Ocupado);
        EXPECT_EQ(erro.Descricao, "Outros estão gravando no registro há muito tempo. Nada foi gravado: tente de novo.");
        EXPECT_EQ(ErroDe([&] { outro->Le([&] { Consulta(*outro, "SELECT 1"); }); }).Detalhe, ""); // reads go on
    });
    EXPECT_EQ(ErroDe([&] { outro->Escreve([] {}); }).Detalhe, "");
}

TEST_F(Postgres, StatementThatTakesTooLong_IsEnded)
{
    auto banco = Abre(Com(Onde(), "limite_comando=1000"));
    const ErroSql erro = ErroDe([&] { banco->Le([&] { Consulta(*banco, "SELECT pg_sleep(60)"); }); });
    EXPECT_EQ(erro.Motivo, MotivoSql::Demora);
    EXPECT_EQ(ErroDe([&] { banco->Le([&] { Consulta(*banco, "SELECT 1"); }); }).Detalhe, "");
}

// Without a limit of its own it would wait for the other one six times, of five seconds each, and for the statement a
// minute.
TEST_F(Postgres, TimeIsLimited_WaitForAnotherOrForAStatement_EndsInTime)
{
    auto dono = Abre(Onde());
    auto outro = Abre(Onde());
    const auto demora = [&](const std::function<ErroSql()> &faz) {
        const auto inicio = std::chrono::steady_clock::now();
        outro->Limita(inicio + std::chrono::milliseconds(200));
        EXPECT_EQ(faz().Motivo, MotivoSql::Demora);
        EXPECT_LT(std::chrono::steady_clock::now() - inicio, std::chrono::seconds(10));
    };
    dono->Escreve([&] { demora([&] { return ErroDe([&] { outro->Escreve([] { FAIL(); }); }); }); });
    demora([&] { return ErroDe([&] { outro->Le([&] { Consulta(*outro, "SELECT pg_sleep(20)"); }); }); });
    demora([&] {
        return ErroDe([&] {
            outro->Escreve([&] {
                Consulta(*outro, "INSERT INTO LOGRADOURO VALUES (9, 4314902, 'Rua B', '', '', 'rua b', 1, 1)");
                Consulta(*outro, "SELECT pg_sleep(20)");
            });
        });
    });
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM LOGRADOURO WHERE CodLograd = 9"), "0");
    outro->Limita(std::chrono::steady_clock::now() + std::chrono::minutes(5));
    EXPECT_EQ(ErroDe([&] {
                  outro->Escreve([&] {
                      Consulta limite(*outro, "SELECT setting FROM pg_settings WHERE name = 'statement_timeout'");
                      EXPECT_TRUE(limite.Proxima());
                      EXPECT_EQ(limite.Texto(0), "60000"); // that of before is not left
                  });
              }).Detalhe,
              "");
}

TEST_F(Postgres, RoleThatWaitsForNobody_WaitsAllTheSame)
{
    const auto espera = [&] {
        auto banco = Abre(Onde());
        std::string como;
        banco->Le([&] {
            Consulta linha(*banco, "SELECT setting FROM pg_settings WHERE name = 'synchronous_commit'");
            linha.Proxima();
            como = linha.Texto(0);
        });
        return como;
    };
    const std::string banco = Sql("SELECT current_database()");
    for (const auto &[posto, fica] :
         {std::pair("off", "on"), std::pair("local", "on"), std::pair("remote_apply", "remote_apply")}) {
        Sql("ALTER DATABASE \"" + banco + "\" SET synchronous_commit = " + posto);
        EXPECT_EQ(espera(), fica) << posto;
    }
}

// Whether anybody waits for somebody else in this database.
constexpr const char *AlguemEspera =
    "SELECT COUNT(*) > 0 FROM pg_stat_activity WHERE wait_event_type = 'Lock' AND datname = current_database()";

// Nobody holds up the others by saying nothing any more.
TEST_F(Postgres, OneThatHoldsTheRightToWriteAndSaysNothing_LosesItAndRunsAgain)
{
    auto dono = Abre(Com(Onde(), "limite_comando=3000"));
    auto outro = Abre(Com(Onde(), "limite_trava=60000"));
    int vezes = 0;
    dono->Escreve([&] {
        if (++vezes == 1) {
            outro->Escreve([] {});
        }
        Consulta(*dono, "INSERT INTO LOGRADOURO VALUES (9, 4314902, 'Rua B', '', '', 'rua b', 1, 1)");
    });
    EXPECT_EQ(vezes, 2);
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM LOGRADOURO WHERE CodLograd = 9"), "1");
}

// Somebody past the services holds one row and wants the other.
TEST_F(Postgres, SaveThatWaitsInACircleWithAnother_RunsAgainAndIsDoneOnce)
{
    auto banco = Abre(Com(Onde(), "options=-cdeadlock_timeout%3D10ms&limite_trava=60000"));
    std::promise<void> comUm;
    std::promise<void> comOOutro;
    std::promise<void> foi;
    std::string doEstranho;
    std::thread fio([&] {
        doEstranho = ErroDe([&] {
                         auto estranho = Abre(Com(Onde(), "options=-cdeadlock_timeout%3D1h&limite_trava=60000"));
                         estranho->Comanda("BEGIN");
                         estranho->Comanda("UPDATE LOGRADOURO SET Versao = Versao + 1");
                         comUm.set_value();
                         comOOutro.get_future().wait();
                         estranho->Comanda("UPDATE LAYOUT SET Versao = Versao + 1");
                         estranho->Comanda("COMMIT");
                     }).Detalhe;
        foi.set_value();
    });
    comUm.get_future().wait();
    int vezes = 0;
    banco->Escreve([&] {
        if (++vezes == 2) { // otherwise it may come between once more
            foi.get_future().wait();
        }
        Consulta(*banco, "UPDATE LAYOUT SET Versao = Versao + 1");
        if (vezes == 1) {
            comOOutro.set_value();
            EXPECT_TRUE(EsperaQue(AlguemEspera));
        }
        Consulta(*banco, "UPDATE LOGRADOURO SET Versao = Versao + 1");
    });
    fio.join();
    EXPECT_EQ(doEstranho, "");
    EXPECT_EQ(vezes, 2);
    EXPECT_EQ(Sql("SELECT MIN(Versao), MAX(Versao) FROM LAYOUT"), "3|3");
    EXPECT_EQ(Sql("SELECT Versao FROM LOGRADOURO"), "3");
}

// The server says of some saves that they are to be run again: at a statement, or only when all is to be confirmed.
class PostgresDeNovo : public Postgres {
  protected:
    void Recusa(const std::string &codigo, int vezes, bool noFim) const
    {
        Sql("CREATE SEQUENCE VEZ; GRANT ALL ON VEZ TO PUBLIC; "
            "CREATE FUNCTION de_novo() RETURNS trigger LANGUAGE plpgsql AS $f$BEGIN IF nextval('VEZ') <= " +
            std::to_string(vezes) + " THEN RAISE EXCEPTION 'de novo' USING ERRCODE = '" + codigo +
            "'; END IF; RETURN NULL; END$f$; CREATE " +
            (noFim ? "CONSTRAINT TRIGGER de_novo AFTER INSERT ON SENSOR DEFERRABLE INITIALLY DEFERRED FOR EACH ROW"
                   : "TRIGGER de_novo AFTER INSERT ON SENSOR FOR EACH STATEMENT") +
            " EXECUTE FUNCTION de_novo()");
    }
    void Desfaz() const { Sql("DROP FUNCTION de_novo CASCADE; DROP SEQUENCE VEZ"); }
    std::string Conta() const
    {
        return Sql("SELECT (SELECT COUNT(*) FROM EQUIPAMENTO) || ' ' || (SELECT COUNT(*) FROM SENSOR) || ' ' || "
                   "(SELECT COUNT(*) FROM HISTORICO)");
    }
};

TEST_F(PostgresDeNovo, SaveThatIsToBeRunAgain_IsDoneOnce)
{
    const auto ana = m_Registro.Sessao("ana");
    const std::string antes = Sql("SELECT COUNT(*) FROM HISTORICO");
    Inclui(ana, Poe(EquipamentoDe("N-0"), SensorDe(1)));
    const int entradas = std::stoi(Sql("SELECT COUNT(*) - " + antes + " FROM HISTORICO"));
    for (const char *codigo : {"40001", "40P01", "55P03"}) {
        for (const bool noFim : {false, true}) {
            SCOPED_TRACE(std::string(codigo) + (noFim ? " in COMMIT" : ""));
            const std::string codigoDoEquipamento = std::string(codigo) + (noFim ? "-F" : "-M");
            const int tinha = std::stoi(Sql("SELECT COUNT(*) FROM HISTORICO"));
            Recusa(codigo, 3, noFim);
            const std::int32_t numero = Inclui(ana, Poe(EquipamentoDe(codigoDoEquipamento), SensorDe(1)));
            EXPECT_EQ(Sql("SELECT last_value FROM VEZ"), "4");
            Desfaz();
            EXPECT_EQ(
                Sql("SELECT COUNT(*), MAX(NroIntEquip) FROM EQUIPAMENTO WHERE Codigo = '" + codigoDoEquipamento + "'"),
                "1|" + std::to_string(numero));
            EXPECT_EQ(std::stoi(Sql("SELECT COUNT(*) FROM HISTORICO")), tinha + entradas);
        }
    }
}

TEST_F(PostgresDeNovo, SaveThatIsToBeRunAgainWithoutEnd_IsToldAndNothingIsWritten)
{
    const auto ana = m_Registro.Sessao("ana");
    const std::string antes = Conta();
    Recusa("40001", 1000, false);
    const Falha falha = FalhaLancada([&] { Pede(ana, "inclui", Poe(EquipamentoDe("N-1"), SensorDe(1))); });
    EXPECT_TRUE(falha.Descricao.ends_with("Nada foi gravado: tente de novo.")) << falha.Descricao;
    EXPECT_EQ(Conta(), antes);
    Desfaz();
    Inclui(ana, Poe(EquipamentoDe("N-1"), SensorDe(1)));
}

// Without the right to write, which nothing obliges a connection past the services to take.
TEST_F(Postgres, TwoConnectionsThatCalibrateOneSensorAtOnce_OneIsRefused)
{
    auto um = Abre(Onde());
    const std::string inclui = "INSERT INTO AFERICAO (NroIntAfericao, NroIntSensor, Numero, Marca, DataVerificacao, "
                               "DataVencimento, Ativo, TipoAfer, PortDimel, Versao) VALUES (%1, 1, '', '', 20280101, "
                               "20281231, 1, 1, '', 1)";
    const QString sql = Q(inclui);
    um->Comanda("BEGIN");
    um->Comanda(QString(sql).arg(77));
    std::string motivo;
    std::thread outro([&] { motivo = MotivoDe(Onde(), QString(sql).arg(78).toStdString()); });
    EXPECT_TRUE(EsperaQue(AlguemEspera));
    um->Comanda("COMMIT");
    outro.join();
    EXPECT_NE(motivo.find("AFERICAO_SOBREPOSTA"), std::string::npos) << motivo;
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM AFERICAO WHERE DataVerificacao = 20280101"), "1");
}

// --- a lost connection ---

// Every statement that writes counts in a sequence, which no end of a transaction takes back; one of them, or all from
// it on, ends the connection that runs it.
class PostgresQueda : public Postgres {
  protected:
    PostgresQueda()
    {
        Sql("CREATE SEQUENCE PASSO; CREATE TABLE MORTE (De bigint, Ate bigint); INSERT INTO MORTE VALUES (0, 0); "
            "GRANT ALL ON PASSO, MORTE TO PUBLIC; "
            "CREATE FUNCTION morre() RETURNS trigger LANGUAGE plpgsql AS $f$BEGIN "
            "IF (SELECT nextval('PASSO') BETWEEN De AND Ate FROM MORTE) THEN "
            "PERFORM pg_terminate_backend(pg_backend_pid()); PERFORM pg_sleep(10); END IF; RETURN NULL; END$f$");
        for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
            for (const char *quando : {"BEFORE", "AFTER"}) {
                Sql(std::string("CREATE TRIGGER morre_") + quando + " " + quando + " INSERT OR UPDATE ON " +
                    NomeDe(tabela) + " FOR EACH STATEMENT EXECUTE FUNCTION morre()");
            }
        }
    }
    void Morre(int de, int ate) const
    {
        Sql("UPDATE MORTE SET De = " + std::to_string(de) + ", Ate = " + std::to_string(ate) +
            "; SELECT setval('PASSO', 1, false)");
    }
    std::string Estado() const
    {
        return Sql("SELECT (SELECT COUNT(*) FROM HISTORICO) || '/' || (SELECT COUNT(*) FROM EQUIPAMENTO) || '/' || "
                   "(SELECT COUNT(*) FROM SENSOR)");
    }
};

TEST_F(PostgresQueda, ConnectionLostAtAnyStatementOfASave_IsTakenUpAgainAndTheSaveIsDoneOnce)
{
    const auto ana = m_Registro.Sessao("ana");
    Morre(0, 0);
    Inclui(ana, Poe(EquipamentoDe("Q-0"), SensorDe(1)));
    const int passos = std::stoi(Sql("SELECT last_value FROM PASSO"));
    ASSERT_GT(passos, 6);
    const int entradas = std::stoi(Sql("SELECT COUNT(*) FROM HISTORICO WHERE Raiz = 'EQUIPAMENTO' AND NroRaiz = 2"));
    for (int passo = 1; passo <= passos; ++passo) {
        Morre(passo, passo);
        const std::int32_t numero = Inclui(ana, Poe(EquipamentoDe("Q-" + std::to_string(passo)), SensorDe(1)));
        EXPECT_EQ(numero, passo + 2);
        EXPECT_EQ(
            Sql("SELECT COUNT(*) FROM HISTORICO WHERE Raiz = 'EQUIPAMENTO' AND NroRaiz = " + std::to_string(numero)),
            std::to_string(entradas))
            << passo;
    }
}

TEST_F(PostgresQueda, ConnectionThatIsLostAgainAndAgain_IsToldAndNothingIsWritten)
{
    const auto ana = m_Registro.Sessao("ana");
    const std::string antes = Estado();
    Morre(3, 1000);
    const Falha falha = FalhaLancada([&] { Pede(ana, "inclui", EquipamentoDe("Q-1")); });
    EXPECT_TRUE(falha.Descricao.starts_with("A conexão com o banco de dados caiu")) << falha.Descricao;
    EXPECT_TRUE(falha.Descricao.ends_with("Nada foi gravado: tente de novo.")) << falha.Descricao;
    EXPECT_EQ(Estado(), antes);
    Morre(0, 0);
    Inclui(ana, EquipamentoDe("Q-1")); // the same session goes on
}

TEST_F(PostgresQueda, ConnectionThatWentBetweenTwoOperations_IsOpenedAgain)
{
    const auto ana = m_Registro.Sessao("ana");
    LinhasSql(Onde(), "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE datname = current_database() AND "
                      "pid <> pg_backend_pid()");
    Inclui(ana, EquipamentoDe("Q-1"));
    LinhasSql(Onde(), "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE datname = current_database() AND "
                      "pid <> pg_backend_pid()");
    EXPECT_TRUE(Pede(ana, "consulta", SoNumero(1)).Feita);
}

// What a new connection has to be told before it is worked over is refused here. The statements of the one before are
// of no use any more, and nothing runs on one that was told half of it.
TEST_F(PostgresQueda, ConnectionThatCannotBeMadeReady_IsNotWorkedOver)
{
    const auto banco = Abre(papel::DeTrabalho(Onde()));
    const auto conta = [&] {
        return banco->Le([&] {
            Consulta linha(*banco, "SELECT COUNT(*) FROM EQUIPAMENTO");
            linha.Proxima();
            return linha.Inteiro(0);
        });
    };
    EXPECT_EQ(conta(), 1);
    Sql("REVOKE EXECUTE ON FUNCTION pg_control_system() FROM PUBLIC");
    LinhasSql(Onde(), "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE datname = current_database() AND "
                      "pid <> pg_backend_pid()");
    EXPECT_EQ(ErroDe(conta).Motivo, MotivoSql::Queda);
    EXPECT_EQ(ErroDe(conta).Motivo, MotivoSql::Queda);
    Sql("GRANT EXECUTE ON FUNCTION pg_control_system() TO PUBLIC");
    EXPECT_EQ(conta(), 1);
    banco->Le([&] {
        Consulta linha(*banco, "SELECT current_setting('statement_timeout'), current_setting('search_path')");
        linha.Proxima();
        EXPECT_EQ(linha.Texto(0), "1min");
        EXPECT_EQ(linha.Texto(1), "public, pg_temp");
    });
}

// Inside COMMIT itself, before it is done.
// Rows that were handed over cannot be taken back: who asked hears that the connection fell, and asks anew.
TEST_F(PostgresQueda, ConnectionLostInTheMiddleOfTheReplica_IsToldAsThatAndNotGoneThroughAgain)
{
    const auto ana = m_Registro.Sessao("ana");
    std::string colunas;
    std::string valores;
    for (const Esquema::Coluna &coluna : Esquema::Acha("EQUIPAMENTO")->Colunas) {
        const std::string nome(coluna.Nome);
        colunas += (colunas.empty() ? "" : ", ") + nome;
        valores += (valores.empty() ? "" : ", ") + (nome == "NroIntEquip"                       ? "n"
                                                    : nome == "Codigo" || nome == "CodigoChave" ? "'C' || n"
                                                                                                : nome);
    }
    Sql("INSERT INTO EQUIPAMENTO (" + colunas + ") SELECT " + valores +
        " FROM EQUIPAMENTO, generate_series(2, 2500) n WHERE NroIntEquip = 1");
    int linhas = 0;
    const auto conta = [&](const LinhaReplica &) {
        if (++linhas == 1) {
            LinhasSql(Onde(), "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE datname = "
                              "current_database() AND pid <> pg_backend_pid()");
        }
    };
    EXPECT_EQ(ErroDe([&] { ana->LeReplica(0, conta); }).Motivo, MotivoSql::Queda);
    EXPECT_EQ(linhas, 1000); // those that were here already
    EXPECT_EQ(ana->LeReplica(0, [](const LinhaReplica &) {}).Quantas, 2500);
}

TEST_F(PostgresQueda, ConnectionLostInCommit_IsUncertainAndNotRunAgain)
{
    Sql("CREATE FUNCTION morre_no_fim() RETURNS trigger LANGUAGE plpgsql AS $f$BEGIN "
        "PERFORM pg_terminate_backend(pg_backend_pid()); PERFORM pg_sleep(10); RETURN NULL; END$f$; "
        "CREATE CONSTRAINT TRIGGER morre_no_fim AFTER INSERT ON LOGRADOURO DEFERRABLE INITIALLY DEFERRED FOR EACH ROW "
        "EXECUTE FUNCTION morre_no_fim()");
    auto banco = Abre(Onde());
    int vezes = 0;
    const ErroSql erro = ErroDe([&] {
        banco->Escreve([&] {
            ++vezes;
            Consulta(*banco, "INSERT INTO LOGRADOURO VALUES (9, 4314902, 'Rua B', '', '', 'rua b', 1, 1)");
        });
    });
    EXPECT_EQ(erro.Motivo, MotivoSql::Incerto);
    EXPECT_EQ(vezes, 1);
    EXPECT_NE(erro.Descricao.find("Não se sabe se ela foi feita"), std::string::npos) << erro.Descricao;
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM LOGRADOURO WHERE CodLograd = 9"), "0");
    EXPECT_EQ(ErroDe([&] { banco->Escreve([&] { Consulta(*banco, "SELECT 1"); }); }).Detalhe, "");
}

// A failed statement that nobody minded: the server would take back everything and call it done.
TEST_F(PostgresQueda, CommitAfterAFailedStatement_IsNoSuccess)
{
    auto banco = Abre(Onde());
    const ErroSql erro = ErroDe([&] {
        banco->Escreve([&] {
            Consulta(*banco, "INSERT INTO LOGRADOURO VALUES (9, 4314902, 'Rua B', '', '', 'rua b', 1, 1)");
            ErroDe([&] { Consulta(*banco, "SELECT 1 / 0"); });
        });
    });
    EXPECT_EQ(erro.Detalhe, "COMMIT");
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM LOGRADOURO WHERE CodLograd = 9"), "0");
}

TEST(PostgresReserva, CommitThatNoStandbyConfirms_IsGivenUpInTimeAndUncertain)
{
    const NoMotor motor("postgres");
    motor::Aglomerado primario;
    auto reserva = primario.Reserva("reserva");
    LinhasSql(primario.Texto("postgres"), "CREATE DATABASE registro");
    const std::string onde =
        Com(motor::Aglomerado::TextoDeTodos({&primario, reserva.get()}, "registro"), "limite_confirmacao=3000");
    Servicos::Cria(onde, TipoDeRegistro::Registro, [] { return Agora(); });
    primario.ExigeReserva("reserva");
    auto banco = Abre(onde);
    const auto inclui = [&](int numero) {
        return ErroDe([&] {
            banco->Escreve([&] {
                Consulta(*banco, "INSERT INTO LOGRADOURO VALUES (?, 4314902, 'Rua B', '', '', 'rua b', 1, 1)",
                         {numero});
            });
        });
    };
    EXPECT_EQ(inclui(1).Detalhe, "");
    { // whichever is named first
        auto outro = Abre(motor::Aglomerado::TextoDeTodos({reserva.get(), &primario}, "registro"));
        outro->Escreve([&] { Consulta(*outro, "UPDATE LOGRADOURO SET Versao = Versao + 1"); });
    }
    reserva->Mata();
    const auto inicio = std::chrono::steady_clock::now();
    EXPECT_EQ(inclui(2).Motivo, MotivoSql::Incerto);
    EXPECT_LT(std::chrono::steady_clock::now() - inicio, std::chrono::seconds(30));
    // It was written here, and the standby may never have heard of it.
    EXPECT_EQ(Primeira(primario.Texto("registro"), "SELECT COUNT(*) FROM LOGRADOURO"), "2");
    // The time of the operation counts, too, when a commit may take longer.
    auto apressado =
        Abre(Com(motor::Aglomerado::TextoDeTodos({&primario, reserva.get()}, "registro"), "limite_confirmacao=60000"));
    const auto outroInicio = std::chrono::steady_clock::now();
    apressado->Limita(outroInicio + std::chrono::seconds(3));
    EXPECT_EQ(ErroDe([&] {
                  apressado->Escreve([&] {
                      Consulta(*apressado,
                               "INSERT INTO LOGRADOURO VALUES (9, 4314902, 'Rua C', '', '', 'rua c', 1, 1)");
                  });
              }).Motivo,
              MotivoSql::Incerto);
    EXPECT_LT(std::chrono::steady_clock::now() - outroInicio, std::chrono::seconds(10));
    reserva->Inicia();
    for (const auto fim = std::chrono::steady_clock::now() + std::chrono::seconds(30);
         Primeira(primario.Texto("postgres"), "SELECT COUNT(*) FROM pg_stat_replication WHERE sync_state = 'sync'") !=
             "1" &&
         std::chrono::steady_clock::now() < fim;) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_EQ(inclui(3).Detalhe, "");
    // The primary dies; the same connection goes on with the one that took its place.
    primario.Mata();
    reserva->Promove();
    LinhasSql(reserva->Texto("postgres"), "SELECT 1");
    EXPECT_EQ(inclui(4).Detalhe, "");
    EXPECT_EQ(Primeira(reserva->Texto("registro"), "SELECT COUNT(*) FROM LOGRADOURO"), "5");
    // The old one comes back by itself, first in the text and ready to write: nobody goes back to it.
    primario.Inicia();
    banco = Abre(onde);
    EXPECT_EQ(inclui(5).Detalhe, "");
    EXPECT_EQ(Primeira(reserva->Texto("registro"), "SELECT COUNT(*) FROM LOGRADOURO"), "6");
    EXPECT_EQ(Primeira(primario.Texto("registro"), "SELECT COUNT(*) FROM LOGRADOURO"), "4");
    // Nor does what works on the registry as a whole.
    EXPECT_EQ(LigacaoPostgres(onde).Inteiro("SELECT COUNT(*) FROM LOGRADOURO"), 6);
    reserva->Mata();
    const std::string recusa = FalhaLancada([&] { const LigacaoPostgres sozinha(onde); }).Descricao;
    EXPECT_TRUE(recusa.ends_with(" ficou para trás: outro foi promovido no lugar dele.")) << recusa;
    EXPECT_EQ(ErroDe([&] { Abre(onde); }).Detalhe,
              "este banco de dados ficou para trás: outro foi promovido no lugar dele");
    EXPECT_EQ(inclui(6).Motivo, MotivoSql::Queda);
    EXPECT_EQ(Primeira(primario.Texto("registro"), "SELECT COUNT(*) FROM LOGRADOURO"), "4");
}

// --- the same on both ---

// What the history says, apart from what no two registries have in common.
std::vector<std::string> Contado(const std::string &onde)
{
    return LinhasSql(onde, "SELECT Nro, Quando, Fuso, Operador, Raiz, NroRaiz, Versao, Entidade, NroEntidade, Acao, "
                           "Motivo, Antes, Depois FROM HISTORICO WHERE Entidade NOT IN ('REGISTRO', 'USUARIO') "
                           "ORDER BY Nro");
}

TEST(PostgresIgual, TheSameWork_IsWrittenDownInTheSameWords)
{
    const auto trabalha = [](const char *qual) {
        const NoMotor motor(qual);
        RegistroDeTeste registro;
        const auto ana = registro.Sessao("ana");
        const auto afericao = AfericaoDe("1", DataDe(1, 1, 2026), DataDe(31, 12, 2026), GuardaPdf(ana, "x"));
        const std::int32_t numero =
            Inclui(ana, Poe(Com(EquipamentoDe("R-001"), &EquiptoED::Descricao, "A \"B\" \\ 'ção' %"),
                            Poe(SensorDe(1), afericao)));
        Exigido(Pede(ana, "alteraListaLimitesDif", ListaDeLimites({LimiteDe(numero, 2, 730, 900)})));
        Exigido(Pede(ana, "adicionaDiaEspecifico", DiaDe(numero, DataDe(25, 12, 2026), 730, 900)));
        registro.IncluiRua("Rua São José");
        registro.IncluiLayout("NOVO");
        registro.PassaSegundos(60);
        Exigido(Pede(ana, "altera", Com(Abre(ana, numero), &EquiptoED::SubCodigo, "Ünico")));
        Exigido(Pede(ana, "desativa", SoNumero(numero)));
        Exigido(Pede(ana, "reativa", SoNumero(numero)));
        return Contado(registro.Caminho());
    };
    const auto daqui = trabalha("sqlite");
    ASSERT_GT(daqui.size(), 20U);
    EXPECT_EQ(trabalha("postgres"), daqui);
}

// A history of calibrations of one sensor: each step adds one, takes one back, or corrects one.
struct Passo {
    enum class Que { Inclui, Desativa, Reativa, Corrige } O = Que::Inclui;
    int Qual = 0; // of those of the sensor
    int De = 0;   // days, from 0
    int Ate = 0;
};
struct UmaAfericao {
    int De = 0;
    int Ate = 0;
    bool Ativa = true;
};

constexpr int Historias = 10000;
constexpr int Dias = 20;
constexpr int PorSensor = 100; // numbers of calibrations
enum class Vigencia { Lacuna, Vigente, Conflito };

// Around the end of February of a leap year.
std::string DiaNumero(int dia)
{
    return QDate(2024, 2, 20).addDays(dia).toString("yyyyMMdd").toStdString();
}

std::vector<std::vector<Passo>> AoAcaso()
{
    std::mt19937 sorte(14);
    const auto ate = [&](int n) { return static_cast<int>(sorte() % static_cast<unsigned>(n)); };
    std::vector<std::vector<Passo>> todas(Historias);
    for (auto &historia : todas) {
        int quantas = 0;
        for (int n = 3 + ate(5); n > 0; --n) {
            const int de = ate(Dias);
            const int fim = std::min(Dias - 1, de + ate(12));
            const int sorteado = ate(10);
            if (quantas == 0 || sorteado < 5) {
                historia.push_back({Passo::Que::Inclui, quantas++, de, fim});
            } else {
                historia.push_back({sorteado < 7   ? Passo::Que::Corrige
                                    : sorteado < 9 ? Passo::Que::Desativa
                                                   : Passo::Que::Reativa,
                                    ate(quantas), de, fim});
            }
        }
    }
    return todas;
}

std::string DiasDe(const std::vector<UmaAfericao> &afericoes)
{
    std::string dias;
    for (int dia = 0; dia < Dias; ++dia) {
        int quantas = 0;
        for (const UmaAfericao &uma : afericoes) {
            quantas += uma.Ativa && uma.De <= dia && dia <= uma.Ate ? 1 : 0;
        }
        dias += quantas == 0 ? 'L' : quantas == 1 ? 'V' : 'C';
    }
    return dias;
}

// What the steps lead to, day by day, and which of them are refused because some day would be claimed twice. A step on
// one that never came to be changes nothing.
struct Previsto {
    std::string Recusas;
    std::string Dias;
};
Previsto Preve(const std::vector<Passo> &historia, bool comGuardas)
{
    Previsto previsto;
    std::vector<std::pair<bool, UmaAfericao>> todas;
    const auto ativas = [](const auto &quais) {
        std::vector<UmaAfericao> lista;
        for (const auto &[ha, uma] : quais) {
            if (ha) {
                lista.push_back(uma);
            }
        }
        return lista;
    };
    for (const Passo &passo : historia) {
        auto depois = todas;
        if (passo.O == Passo::Que::Inclui) {
            depois.emplace_back(true, UmaAfericao{passo.De, passo.Ate, true});
        } else {
            UmaAfericao &uma = depois[static_cast<std::size_t>(passo.Qual)].second;
            if (passo.O == Passo::Que::Corrige) {
                uma.De = passo.De;
                uma.Ate = passo.Ate;
            } else {
                uma.Ativa = passo.O == Passo::Que::Reativa;
            }
        }
        const bool recusa = comGuardas && DiasDe(ativas(depois)).find('C') != std::string::npos;
        previsto.Recusas += recusa ? 'R' : '.';
        if (!recusa) {
            todas = depois;
        } else if (passo.O == Passo::Que::Inclui) {
            todas.emplace_back(false, UmaAfericao{});
        }
    }
    previsto.Dias = DiasDe(ativas(todas));
    return previsto;
}

QString Comando(int sensor, const Passo &passo)
{
    const QString numero = QString::number(sensor * PorSensor + passo.Qual);
    const QString de = Q(DiaNumero(passo.De));
    const QString ate = Q(DiaNumero(passo.Ate));
    const QString muda = "UPDATE AFERICAO SET %1 WHERE NroIntAfericao = " + numero;
    switch (passo.O) {
    case Passo::Que::Inclui:
        return QString(
                   "INSERT INTO AFERICAO (NroIntAfericao, NroIntSensor, Numero, Marca, DataVerificacao, "
                   "DataVencimento, Ativo, TipoAfer, PortDimel, Versao) VALUES (%1, %2, '', '', %3, %4, 1, 1, '', 1)")
            .arg(numero, QString::number(sensor), de, ate);
    case Passo::Que::Corrige:
        return muda.arg("DataVerificacao = " + de + ", DataVencimento = " + ate);
    default:
        return muda.arg(QString("Ativo = %1").arg(passo.O == Passo::Que::Reativa ? 1 : 2));
    }
}

// A place with that many sensors and the days, told apart by their numbers.
void Prepara(Banco &banco)
{
    banco.Escreve([&] {
        banco.Comanda("CREATE TABLE DIAS (Dia bigint PRIMARY KEY)");
        for (int dia = 0; dia < Dias; ++dia) {
            banco.Comanda("INSERT INTO DIAS VALUES (" + Q(DiaNumero(dia)) + ")");
        }
        banco.Comanda("CREATE TABLE PASSOS (Nro bigint PRIMARY KEY, Comando text NOT NULL, Recusado text)");
        banco.Comanda(
            QString("WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n WHERE i < %1) INSERT INTO "
                    "SENSOR SELECT i, 1, 1, 0, 0, 0, '', '', '', 1, '' FROM n")
                .arg(Historias));
    });
}

// Runs all steps in one transaction; "R" for each that the database refused, a text for each sensor.
std::vector<std::string> Roda(Banco &banco, const std::vector<std::vector<Passo>> &historias, bool naRede)
{
    std::vector<std::string> recusas(historias.size());
    banco.Escreve([&] {
        if (!naRede) {
            for (std::size_t n = 0; n < historias.size(); ++n) {
                for (const Passo &passo : historias[n]) {
                    const ErroSql erro = ErroDe([&] { banco.Comanda(Comando(static_cast<int>(n) + 1, passo)); });
                    recusas[n] += erro.Detalhe == "AFERICAO_SOBREPOSTA" ? "R"
                                  : erro.Detalhe.empty()                ? "."
                                                                        : erro.Detalhe;
                }
            }
            return;
        }
        // One statement that fails ends a transaction there, unless it is caught where it runs.
        QStringList linhas;
        qlonglong nro = 0;
        const auto manda = [&] {
            banco.Comanda("INSERT INTO PASSOS (Nro, Comando) VALUES " + linhas.join(", "));
            linhas.clear();
        };
        for (std::size_t n = 0; n < historias.size(); ++n) {
            for (const Passo &passo : historias[n]) {
                linhas.push_back(QString("(%1, $c$%2$c$)").arg(++nro).arg(Comando(static_cast<int>(n) + 1, passo)));
                if (linhas.size() == 1000) {
                    manda();
                }
            }
        }
        if (!linhas.isEmpty()) {
            manda();
        }
        banco.Comanda("DO $faz$DECLARE p record; BEGIN FOR p IN SELECT Nro, Comando FROM PASSOS ORDER BY Nro LOOP "
                      "BEGIN EXECUTE p.Comando; EXCEPTION WHEN OTHERS THEN "
                      "UPDATE PASSOS SET Recusado = SQLERRM WHERE Nro = p.Nro; END; END LOOP; END$faz$");
        Consulta desfechos(banco, "SELECT COALESCE(Recusado, '') FROM PASSOS ORDER BY Nro");
        for (std::size_t n = 0; n < historias.size(); ++n) {
            for (std::size_t passo = 0; passo < historias[n].size(); ++passo) {
                desfechos.Proxima();
                const std::string recusado = desfechos.Texto(0);
                recusas[n] += recusado == "AFERICAO_SOBREPOSTA" ? "R" : recusado.empty() ? "." : recusado;
            }
        }
    });
    return recusas;
}

// Day by day, by the statement's own reading.
std::vector<std::string> LeDias(Banco &banco)
{
    std::vector<std::string> dias(Historias);
    banco.Le([&] {
        Consulta linhas(banco, "SELECT s.NroIntSensor, (SELECT COUNT(*) FROM AFERICAO a WHERE a.NroIntSensor = "
                               "s.NroIntSensor AND a.Ativo = 1 AND a.DataVerificacao <= d.Dia AND a.DataVencimento >= "
                               "d.Dia) FROM SENSOR s JOIN DIAS d ON 1 = 1 ORDER BY s.NroIntSensor, d.Dia");
        while (linhas.Proxima()) {
            const auto quantas = linhas.Inteiro(1);
            dias[static_cast<std::size_t>(linhas.Inteiro(0)) - 1] += quantas == 0 ? 'L' : quantas == 1 ? 'V' : 'C';
        }
    });
    return dias;
}

class VigenciaNosDois : public testing::TestWithParam<bool> {};

TEST_P(VigenciaNosDois, TenThousandHistories_DayByDay_AreAsCountedByHand)
{
    const bool comGuardas = GetParam();
    const auto historias = AoAcaso();
    std::vector<Previsto> previstos;
    std::size_t recusas = 0;
    for (const auto &historia : historias) {
        previstos.push_back(Preve(historia, comGuardas));
        recusas +=
            static_cast<std::size_t>(std::count(previstos.back().Recusas.begin(), previstos.back().Recusas.end(), 'R'));
    }
    std::string todosOsDias;
    for (const Previsto &previsto : previstos) {
        todosOsDias += previsto.Dias;
    }
    for (const char qual : {'L', 'V'}) { // the histories are worth something
        EXPECT_GT(std::count(todosOsDias.begin(), todosOsDias.end(), qual), 20000);
    }
    EXPECT_EQ(std::count(todosOsDias.begin(), todosOsDias.end(), 'C') > 10000, !comGuardas);
    EXPECT_EQ(recusas > 10000, comGuardas);
    for (const char *qual : {"sqlite", "postgres"}) {
        SCOPED_TRACE(qual);
        const NoMotor motor(qual);
        const bool naRede = motor::DeTeste() == motor::Qual::Postgres;
        RegistroDeTeste registro;
        Inclui(registro.Sessao("ana"), Poe(EquipamentoDe("R-001"), SensorDe(1)));
        const auto banco = Abre(naRede ? Com(registro.Caminho(), "limite_comando=300000") : registro.Caminho());
        Prepara(*banco);
        if (!comGuardas) {
            for (const char *comando : naRede
                                           ? std::vector{"ALTER TABLE AFERICAO DROP CONSTRAINT \"AFERICAO_SOBREPOSTA\"",
                                                         "ALTER TABLE AFERICAO DISABLE TRIGGER USER"}
                                           : std::vector{"DROP TRIGGER AFERICAO_SEM_SOBREPOSICAO",
                                                         "DROP TRIGGER AFERICAO_SEM_SOBREPOSICAO_NOVA"}) {
                banco->Escreve([&] { banco->Comanda(comando); });
            }
        }
        const auto obtidas = Roda(*banco, historias, naRede);
        const auto dias = LeDias(*banco);
        for (std::size_t n = 0; n < historias.size(); ++n) {
            ASSERT_EQ(obtidas[n], previstos[n].Recusas) << "history " << n;
            ASSERT_EQ(dias[n], previstos[n].Dias) << "history " << n;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(PostgresComESemGuardas, VigenciaNosDois, testing::Bool());

} // namespace
