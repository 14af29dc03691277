#include "host/RelatorioAfericaoED.h"
#include "services/Banco.h"
#include "services/DialetoSQLite.h"
#include "services/Dialetos.h"
#include "services/Esquema.h"
#include "tests/services/DiscoApertado.h"
#include "tests/services/RegistroDeTeste.h"
#include "tests/support/FalhaLancada.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using namespace mesa;

namespace {

Data Hoje()
{
    return DataDe(20, 11, 2026);
}

// The present schema, with a further migration of the test's own.
class DialetoFuturo : public DialetoSQLite {
  public:
    explicit DialetoFuturo(Migracao proxima) : m_Proxima(std::move(proxima)) {}
    std::vector<Migracao> Migracoes() const override
    {
        auto migracoes = DialetoSQLite::Migracoes();
        migracoes.push_back(m_Proxima);
        return migracoes;
    }

  private:
    Migracao m_Proxima;
};

class ServicosBanco : public testing::Test {
  protected:
    void ConfereArquivo()
    {
        EXPECT_EQ(registro.Sql("PRAGMA integrity_check"), "ok");
        EXPECT_EQ(registro.Sql("PRAGMA foreign_key_check"), "");
    }
    std::string Conta(const std::string &tabela) { return registro.Sql("SELECT COUNT(*) FROM " + tabela); }

    RegistroDeTeste registro;
};
using ServicosHistorico = ServicosBanco;

TEST_F(ServicosBanco, Open_ANewFile_IsWhole)
{
    ConfereArquivo();
    EXPECT_EQ(registro.Sql("SELECT Versao FROM ESQUEMA"), "3");
    EXPECT_EQ(registro.Sql("PRAGMA application_id"), std::to_string(Esquema::Aplicacao));
}

TEST_F(ServicosBanco, Connection_IsFullySynchronousWithForeignKeys)
{
    Banco banco(std::make_unique<DialetoSQLite>(), registro.Caminho(), Instante(DataDe(20, 11, 2026)));
    const auto pragma = [&](const QString &nome) {
        Consulta valor(banco, "PRAGMA " + nome);
        valor.Proxima();
        return valor.Texto(0);
    };
    EXPECT_EQ(pragma("synchronous"), "2");
    EXPECT_EQ(pragma("foreign_keys"), "1");
    EXPECT_EQ(pragma("journal_mode"), "wal");
    EXPECT_EQ(pragma("recursive_triggers"), "1");
}

TEST_F(ServicosBanco, Open_ANewerRegistry_RaisesAFault)
{
    registro.Fecha();
    registro.Sql("INSERT INTO ESQUEMA VALUES (7)");
    EXPECT_TRUE(Lanca(51, "Servicos < Servicos.Abre",
                      "O registro é da versão 7, mais nova que a deste programa (versão 3). Atualize o programa.",
                      [&] { registro.Reabre(); }));
}

TEST_F(ServicosBanco, Open_AnOlderRegistry_IsMigratedWithWhatItHolds)
{
    Inclui(registro.Sessao("ana"), EquipamentoDe("R-001"));
    registro.Fecha();
    {
        Banco banco(std::make_unique<DialetoFuturo>(Migracao{
                        {"ALTER TABLE EQUIPAMENTO ADD COLUMN Cor TEXT", "UPDATE EQUIPAMENTO SET Cor = 'azul'"}}),
                    registro.Caminho(), Hoje());
        Consulta linha(banco, "SELECT Cor, Codigo FROM EQUIPAMENTO");
        ASSERT_TRUE(linha.Proxima());
        EXPECT_EQ(linha.Texto(0), "azul");
        EXPECT_EQ(linha.Texto(1), "R-001");
    }
    EXPECT_EQ(registro.Sql("SELECT MAX(Versao) FROM ESQUEMA"), "4");
}

TEST_F(ServicosBanco, Open_WithAMigrationThatFails_LeavesTheOldRegistryWhole)
{
    registro.Fecha();
    const Migracao quebrada{{"ALTER TABLE EQUIPAMENTO ADD COLUMN Cor TEXT", "ISTO NÃO É SQL"}};
    EXPECT_EQ(
        FalhaLancada([&] { Banco(std::make_unique<DialetoFuturo>(quebrada), registro.Caminho(), Hoje()); }).Numero, 51);
    EXPECT_EQ(registro.Sql("SELECT MAX(Versao) FROM ESQUEMA"), "3");
    EXPECT_EQ(Conta("pragma_table_info('EQUIPAMENTO') WHERE name = 'Cor'"), "0");
    registro.Reabre();
}

TEST_F(ServicosBanco, Open_WhatIsNoRegistry_RaisesAFault)
{
    const QTemporaryDir diretorio;
    const std::string caminho = diretorio.filePath("texto.db").toStdString();
    std::ofstream(caminho) << std::string(4096, 'x');
    EXPECT_TRUE(Lanca(51, "Servicos < Servicos.Abre",
                      "O arquivo do registro está danificado ou não é um registro (file is not a database).",
                      [&] { Servicos::Abre(caminho, Hoje); }));
}

TEST_F(ServicosBanco, Open_InADirectoryThatIsNotThere_RaisesAFault)
{
    const QTemporaryDir diretorio;
    const std::string caminho = diretorio.filePath("nada/r.db").toStdString();
    EXPECT_TRUE(Lanca(75, "Servicos < Servicos.Cria",
                      "Não foi possível fazer o arquivo " + caminho + ": o arquivo ou a pasta não existe.",
                      [&] { Servicos::Cria(caminho, TipoDeRegistro::Registro, Hoje); }));
    EXPECT_TRUE(Lanca(53, "Servicos < Servicos.Abre", "O registro não foi encontrado em " + caminho + ".",
                      [&] { Servicos::Abre(caminho, Hoje); }));
}

TEST_F(ServicosBanco, Save_WhenTheDiskTakesNoMore_RaisesAFaultAndStoresNothing)
{
    const auto ana = registro.Sessao("ana");
    double numero = 0;
    std::string recusa;
    {
        const DiscoApertado apertado(1000000);
        EXPECT_TRUE(Lanca(75, "Servicos < SessaoServico.GuardaDocumento",
                          "O disco em que está o registro não aceitou a gravação (disk I/O error). Nada foi gravado: "
                          "confira o espaço e o disco e tente de novo.",
                          [&] { ana->GuardaDocumento(Pdf("grande", 5000000), numero, recusa); }));
    }
    EXPECT_EQ(Conta("DOCUMENTO"), "0");
    ASSERT_TRUE(ana->GuardaDocumento(Pdf("grande", 5000000), numero, recusa)) << recusa; // and goes on afterwards
    ConfereArquivo();
}

TEST_F(ServicosBanco, Error_ByTheDatabasesCode_HasItsNumberAndSentence)
{
    const DialetoSQLite dialeto;
    const auto erro = [&](const char *codigo) {
        return dialeto.Erro(QSqlError("", "detalhe", QSqlError::UnknownError, codigo));
    };
    EXPECT_EQ(erro("13").Numero, 61);
    EXPECT_EQ(erro("13").Descricao,
              "O disco em que está o registro ficou cheio. Nada foi gravado: libere espaço e tente de novo.");
    EXPECT_EQ(erro("5").Descricao,
              "Outra estação está gravando no registro há muito tempo. Nada foi gravado: tente de novo.");
    const std::vector<std::pair<const char *, MotivoSql>> motivos = {
        {"5", MotivoSql::Ocupado},      {"261", MotivoSql::Ocupado},    // while another one recovers
        {"778", MotivoSql::NaoGravou},  {"4874", MotivoSql::NaoGravou}, // the log's index has no room
        {"8", MotivoSql::SoLeitura},    {"266", MotivoSql::Acesso},     {"11", MotivoSql::Danificado},
        {"2067", MotivoSql::Unicidade}, {"1811", MotivoSql::Regra},     {"1", MotivoSql::Outro},
    };
    for (const auto &[codigo, motivo] : motivos) {
        EXPECT_EQ(erro(codigo).Motivo, motivo) << codigo;
    }
}

TEST_F(ServicosBanco, Transaction_LeftByAnException_RollsBack)
{
    Banco banco(DialetoPara(registro.Caminho()), registro.Caminho(), Instante(DataDe(20, 11, 2026)));
    EXPECT_THROW(banco.Escreve([&] {
        Consulta(banco, "INSERT INTO CLIENTE VALUES (9, 'X', 'RS', 1, 1)");
        throw std::runtime_error("no meio");
    }),
                 std::runtime_error);
    EXPECT_EQ(Conta("CLIENTE WHERE CodCliente = 9"), "0");
    banco.Escreve([&] { Consulta(banco, "INSERT INTO CLIENTE VALUES (9, 'X', 'RS', 1, 1)"); });
    EXPECT_EQ(Conta("CLIENTE WHERE CodCliente = 9"), "1");
}

TEST_F(ServicosBanco, Transaction_InTheMiddleOfAnother_RaisesAFaultAndEndsNeither)
{
    Banco banco(DialetoPara(registro.Caminho()), registro.Caminho(), Instante(DataDe(20, 11, 2026)));
    banco.Escreve([&] {
        EXPECT_EQ(FalhaLancada([&] { banco.Le([] {}); }).Descricao, "Uma operação foi pedida no meio de outra.");
        Consulta(banco, "INSERT INTO CLIENTE VALUES (9, 'X', 'RS', 1, 1)");
    });
    EXPECT_EQ(Conta("CLIENTE WHERE CodCliente = 9"), "1");
}

// Without a limit it would try six times, of five seconds each.
TEST_F(ServicosBanco, TimeIsLimited_OthersWrite_IsGivenUpInTimeAndGoesOnLater)
{
    Banco dono(std::make_unique<DialetoSQLite>(), registro.Caminho(), Instante(Hoje()));
    Banco outro(std::make_unique<DialetoSQLite>(), registro.Caminho(), Instante(Hoje()));
    const auto motivo = [&](const std::function<void()> &faz) {
        try {
            outro.Escreve(faz);
        } catch (const ErroSql &erro) {
            return erro.Motivo;
        }
        return MotivoSql::Outro;
    };
    const auto agora = [] { return std::chrono::steady_clock::now(); };
    dono.Escreve([&] {
        const auto inicio = agora();
        outro.Limita(inicio + std::chrono::milliseconds(500));
        EXPECT_EQ(motivo([] { FAIL(); }), MotivoSql::Ocupado);
        EXPECT_LT(agora() - inicio, std::chrono::seconds(20));
    });
    EXPECT_EQ(motivo([] { FAIL(); }), MotivoSql::Demora); // it is over
    outro.Limita(agora() + std::chrono::seconds(60));
    EXPECT_EQ(motivo([&] {
                  Consulta(outro, "INSERT INTO CLIENTE VALUES (9, 'X', 'RS', 1, 1)");
                  outro.Limita(agora());
              }),
              MotivoSql::Demora); // before the end
    EXPECT_EQ(Conta("CLIENTE WHERE CodCliente = 9"), "0");
    outro.Limita(agora() + std::chrono::seconds(60));
    EXPECT_EQ(motivo([&] { Consulta(outro, "INSERT INTO CLIENTE VALUES (9, 'X', 'RS', 1, 1)"); }), MotivoSql::Outro);
    EXPECT_EQ(Conta("CLIENTE WHERE CodCliente = 9"), "1");
    EXPECT_EQ(ErroSql(MotivoSql::Demora, "").Descricao,
              "O banco de dados demorou mais do que o permitido. Nada foi gravado: tente de novo.");
}

TEST_F(ServicosBanco, Erasing_IsRefusedInEveryTable)
{
    const auto ana = registro.Sessao("ana");
    const auto sensor = Poe(SensorDe(1), AfericaoDe("1", Hoje(), Hoje().MaisDias(1), GuardaPdf(ana, "x")));
    const std::int32_t numero = Inclui(ana, Poe(EquipamentoDe("F-1"), sensor));
    ASSERT_TRUE(Pede(ana, "alteraListaLimitesDif", ListaDeLimites({LimiteDe(numero, 1, 0, 1)})).Feita);
    ASSERT_TRUE(Pede(ana, "adicionaDiaEspecifico", DiaDe(numero, DataDe(25, 12, 2026), 0, 1)).Feita);
    for (const char *tabela : {"CLIENTE", "SETOR", "USUARIO", "PERMISSAO", "EQUIPAMENTO", "SENSOR", "AFERICAO",
                               "DOCUMENTO", "LIMITE", "DIA", "HISTORICO"}) {
        EXPECT_NE(Conta(tabela), "0") << tabela;
        try {
            registro.Sql(std::string("DELETE FROM ") + tabela);
            ADD_FAILURE() << tabela << " was erased";
        } catch (const std::runtime_error &erro) {
            EXPECT_EQ(std::string(erro.what()), std::string(tabela) + "_SEM_DELETE");
        }
    }
}

// On a connection of the services a row that is replaced counts as erased.
TEST_F(ServicosBanco, Replacing_IsRefusedAsErasing)
{
    Inclui(registro.Sessao("ana"), EquipamentoDe("R-001"));
    Banco banco(std::make_unique<DialetoSQLite>(), registro.Caminho(), Instante(DataDe(20, 11, 2026)));
    const auto motivo = [&](const char *sql) {
        try {
            banco.Escreve([&] { Consulta(banco, sql); });
        } catch (const ErroSql &erro) {
            return erro.Detalhe;
        }
        return std::string("done");
    };
    EXPECT_EQ(motivo("INSERT OR REPLACE INTO CLIENTE VALUES (2, 'OUTRO', 'RS', 1, 1)"), "CLIENTE_REPETIDO");
    EXPECT_EQ(motivo("REPLACE INTO HISTORICO SELECT * FROM HISTORICO WHERE Nro = 1"), "HISTORICO_REPETIDO");
    EXPECT_EQ(motivo("INSERT OR REPLACE INTO USUARIO SELECT 77, Usuario, Chave, Nome, CodCliente, Setor, CodMunic, "
                     "Senha, Ativo, TrocaSenha, Versao FROM USUARIO"),
              "USUARIO_REPETIDO");
    EXPECT_EQ(Conta("USUARIO WHERE Numero = 77"), "0");
}

TEST_F(ServicosBanco, Executa_WithWhatItDoesNotKnow_IsRefused)
{
    const auto ana = registro.Sessao("ana");
    for (const auto &[servico, metodo] :
         {std::pair("EquiptoRN", "apaga"), {"EquiptoRN", ""}, {"EquiptoRN", "Consulta"}, {"OutroRN", "consulta"}}) {
        EXPECT_EQ(Pede(ana, metodo, Novo<EquiptoED>(), servico).Recusa,
                  std::string("O serviço ") + servico + " não tem a operação \"" + metodo + "\".");
    }
    EXPECT_EQ(Pede(ana, "consulta", Novo<SensorED>()).Recusa,
              "A operação pede um registro EquiptoED e recebeu SensorED.");
}

TEST_F(ServicosBanco, Executa_EveryOperationWithNothingOrAnEmptyRecord_NeverCrashes)
{
    const auto ana = registro.Sessao("ana");
    for (const char *metodo :
         {"consulta", "inclui", "altera", "lista2", "desativa", "reativa", "consultaSimples",
          "consultaSimplesAfericaoVigente", "listaLimiteDif", "listaDiaEspecifico", "desativaLimiteDif",
          "desativaDiaEspecifico", "consultaSimplesLimiteDif", "consultaSimplesDiaEspecifico", "alteraListaLimitesDif",
          "adicionaDiaEspecifico", "alteraDiaEspecifico"}) {
        const Retorno nada = Pede(ana, metodo, nullptr);
        EXPECT_FALSE(nada.Feita) << metodo;
        EXPECT_NE(nada.Recusa.find(" e recebeu nenhum."), std::string::npos) << metodo << nada.Recusa;
        const Retorno outro = Pede(ana, metodo, Novo<RelatorioAfericaoED>());
        EXPECT_FALSE(outro.Feita) << metodo;
        EXPECT_NE(outro.Recusa.find(" e recebeu RelatorioAfericaoED."), std::string::npos) << metodo << outro.Recusa;
    }
    EXPECT_FALSE(Pede(ana, "consultaRelatorioRVOR011", nullptr, "RelatorioRN").Feita);
    EXPECT_FALSE(Pede(ana, "consultaRelatorioRVOR011", Novo<RelatorioAfericaoED>(), "RelatorioRN").Feita);
    for (const char *metodo : {"inclui", "altera", "consulta", "alteraListaLimitesDif"}) {
        EXPECT_FALSE(Pede(ana, metodo, Novo<EquiptoED>()).Feita) << metodo;
    }
}

TEST_F(ServicosBanco, Session_OutlivesTheServices)
{
    const auto ana = registro.Sessao("ana");
    registro.Fecha();
    EXPECT_EQ(Inclui(ana, EquipamentoDe("R-001")), 1);
}

TEST_F(ServicosHistorico, EveryChange_IsWrittenWithBeforeAndAfter)
{
    const auto ana = registro.Sessao("ana");
    const std::int32_t numero = Inclui(ana, EquipamentoDe("R-001"));
    registro.PassaSegundos(1);
    const auto sensor = Poe(SensorDe(1), AfericaoDe("77", DataDe(1, 1, 2026), DataDe(31, 12, 2026)));
    const auto mudado = Documenta(ana, Poe(Com(SoNumero(numero), &EquiptoED::Descricao, "Depois"), sensor));
    ASSERT_TRUE(Pede(ana, "altera", mudado).Feita);
    ASSERT_TRUE(Pede(ana, "desativa", SoNumero(numero)).Feita);
    EXPECT_EQ(
        registro.Sql("SELECT group_concat(Quando || ' ' || Operador || ' ' || Versao || ' ' || Entidade || ' ' || "
                     "NroEntidade || ' ' || Acao, '; ') FROM (SELECT * FROM HISTORICO WHERE Raiz = 'EQUIPAMENTO' "
                     "ORDER BY Nro) h"),
        "20261120100000 1 1 EQUIPAMENTO 1 inclui; 20261120100001 1 2 SENSOR 1 inclui; "
        "20261120100001 1 2 AFERICAO 1 inclui; 20261120100001 1 2 EQUIPAMENTO 1 altera; "
        "20261120100001 1 3 EQUIPAMENTO 1 desativa");
    const std::string altera = "FROM HISTORICO WHERE Entidade = 'EQUIPAMENTO' AND Acao = 'altera'";
    EXPECT_EQ(registro.Sql("SELECT json_extract(Antes, '$.Descricao') " + altera), "Av. Ipiranga, sentido centro");
    EXPECT_EQ(registro.Sql("SELECT json_extract(Depois, '$.Descricao') " + altera), "Depois");
    EXPECT_EQ(
        registro.Sql("SELECT json_extract(Depois, '$.DataVencimento') FROM HISTORICO WHERE Entidade = 'AFERICAO'"),
        "20261231");
    EXPECT_EQ(Conta("HISTORICO WHERE Antes IS NULL AND Acao <> 'inclui' AND Raiz <> 'SESSAO'"), "0");
}

TEST_F(ServicosHistorico, Row_IsNeverChanged)
{
    Inclui(registro.Sessao("ana"), EquipamentoDe("R-001"));
    EXPECT_THROW(registro.Sql("UPDATE HISTORICO SET Operador = 2"), std::runtime_error);
}

TEST_F(ServicosHistorico, OneChangedCalibration_WritesItAndItsEquipment)
{
    const auto ana = registro.Sessao("ana");
    IncluiComSensores(ana, {{AfericaoDe("1", DataDe(1, 1, 2026), DataDe(30, 6, 2026)),
                             AfericaoDe("2", DataDe(1, 7, 2026), DataDe(31, 12, 2026))}});
    const int antes = std::stoi(Conta("HISTORICO"));
    const auto mudanca = Poe(SoNumero(1), Poe(SoSensor(1), Com(SoAfericao(2), &AfericaoED::Marca, "55")));
    ASSERT_TRUE(Pede(ana, "altera", mudanca).Feita);
    EXPECT_EQ(Conta("HISTORICO"), std::to_string(antes + 2)); // and the equipment, whose version is another
    EXPECT_EQ(Abre(ana, 1)->HoraTrans.Valor(), 100000);
    EXPECT_EQ(registro.Sql("SELECT Versao FROM EQUIPAMENTO"), "2");
}

} // namespace
