#include "services/Banco.h"
#include "services/DialetoSQLite.h"
#include "services/Esquema.h"
#include "services/Historico.h"
#include "services/Resumo.h"
#include "services/SessaoSql.h"
#include "tests/services/ServicosTeste.h"
#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>

using namespace mesa;

namespace {

// What the database itself keeps, tried with a plain connection, on which nothing was set.
class ServicosEsquema : public ServicosTeste {
  protected:
    ServicosEsquema()
    {
        const auto afericao = AfericaoDe("1", DataDe(1, 1, 2026), DataDe(31, 12, 2026), GuardaPdf(m_Ana, "x"));
        const std::int32_t numero = Inclui(m_Ana, Poe(EquipamentoDe("R-001"), Poe(SensorDe(1), afericao)));
        Exigido(Pede(m_Ana, "alteraListaLimitesDif", ListaDeLimites({LimiteDe(numero, 2, 730, 900)})));
        Exigido(Pede(m_Ana, "adicionaDiaEspecifico", DiaDe(numero, DataDe(25, 12, 2026), 730, 900)));
        m_Registro.Sql("INSERT INTO LOGRADOURO VALUES (1, 4314902, 'Rua A', '', '', 'rua a', 1, 1)");
        m_Registro.Sql("INSERT INTO LAYOUT SELECT 900, 'MEU', '', 1, 1");
        m_Registro.Sql("INSERT INTO ESTACAO SELECT 900, 1, 'estacao'");
        m_Registro.Sql(
            "INSERT OR IGNORE INTO ENTRADA_RECUSADA SELECT 900, 1, 'estacao', 0, 0, Elo FROM HISTORICO LIMIT 1");
        const auto sql = ComoTipo<SessaoSql>(m_Ana);
        for (int vezes = 0; vezes < 2; ++vezes) { // and repeated
            std::string recusa;
            double documento = 0;
            sql->Numera({"0d9f6f0e-5a53-4a7b-8f5c-1f0b6f1f2a01", Resumo("y"), [] { return std::string(); }});
            sql->GuardaDocumento(Pdf("y"), documento, recusa);
        }
    }

    std::string Motivo(const std::string &sql)
    {
        try {
            m_Registro.Sql(sql);
        } catch (const std::runtime_error &erro) {
            return erro.what();
        }
        return "done";
    }
    static std::string Nome(const Esquema::Tabela &tabela) { return std::string(tabela.Nome); }
    static std::string Chave(const Esquema::Tabela &tabela) { return std::string(tabela.Chave().Nome); }
    std::string UmaChave(const Esquema::Tabela &tabela)
    {
        return m_Registro.Sql("SELECT MAX(" + Chave(tabela) + ") FROM " + Nome(tabela));
    }
};

TEST_F(ServicosEsquema, EveryTable_ReplacedInAPlainConnection_IsRefused)
{
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        const std::string nome = Nome(tabela);
        SCOPED_TRACE(nome);
        ASSERT_NE(UmaChave(tabela), "");
        const std::string mesma = " INTO " + nome + " SELECT * FROM " + nome + " LIMIT 1";
        for (const char *como : {"REPLACE", "INSERT OR REPLACE", "INSERT OR IGNORE", "INSERT OR FAIL"}) {
            EXPECT_EQ(Motivo(como + mesma), nome + "_REPETIDO") << como;
        }
    }
}

TEST_F(ServicosEsquema, EveryTable_WithTheSameUniqueValuesUnderAnotherKey_IsRefused)
{
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        std::string colunas;
        for (const Esquema::Coluna &coluna : tabela.Colunas) {
            colunas += colunas.empty() ? "777" : ", " + std::string(coluna.Nome);
        }
        const std::string outra = "INSERT OR REPLACE INTO " + Nome(tabela) + " SELECT " + colunas + " FROM " +
                                  Nome(tabela) + " ORDER BY 1 LIMIT 1";
        if (!tabela.Unicas.empty()) {
            EXPECT_EQ(Motivo(outra), Nome(tabela) + "_REPETIDO");
        }
    }
}

TEST_F(ServicosEsquema, EveryTable_ErasedOrMovedInAPlainConnection_IsRefused)
{
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        const std::string nome = Nome(tabela);
        EXPECT_EQ(Motivo("DELETE FROM " + nome), nome + "_SEM_DELETE");
        EXPECT_EQ(Motivo("UPDATE OR REPLACE " + nome + " SET " + Chave(tabela) + " = " + Chave(tabela) + " + 50"),
                  nome + (tabela.SoInclui ? "_SEM_UPDATE" : "_FIXA"));
    }
}

TEST_F(ServicosEsquema, WhatNeverChanges_IsRefused)
{
    for (const char *sql : {"UPDATE EQUIPAMENTO SET Codigo = 'OUTRO'", "UPDATE EQUIPAMENTO SET CodMunic = 1"}) {
        EXPECT_EQ(Motivo(sql), "EQUIPAMENTO_FIXA") << sql;
    }
    EXPECT_EQ(Motivo("UPDATE SENSOR SET NroIntEquip = 2"), "SENSOR_FIXA");
    EXPECT_EQ(Motivo("UPDATE AFERICAO SET NroIntSensor = 2"), "AFERICAO_FIXA");
    EXPECT_EQ(Motivo("UPDATE LOGRADOURO SET CodMunic = 4314902 + 1"), "LOGRADOURO_FIXA");
    EXPECT_EQ(Motivo("UPDATE DOCUMENTO SET Quando = Quando"), "DOCUMENTO_SEM_UPDATE");
    EXPECT_EQ(Motivo("UPDATE REGISTRO SET Tipo = 2"), "REGISTRO_SEM_UPDATE");
}

TEST_F(ServicosEsquema, UniqueValues_TakenByAChange_AreRefused)
{
    Inclui(m_Ana, EquipamentoDe("R-002"));
    EXPECT_EQ(Motivo("UPDATE OR REPLACE EQUIPAMENTO SET CodigoChave = 'R-001' WHERE NroIntEquip = 2"),
              "EQUIPAMENTO_REPETIDO");
    m_Registro.Sql("UPDATE EQUIPAMENTO SET Ativo = 2 WHERE NroIntEquip = 1");
    EXPECT_EQ(Motivo("UPDATE EQUIPAMENTO SET CodigoChave = 'R-001' WHERE NroIntEquip = 2"), "done");
    EXPECT_EQ(Motivo("UPDATE OR REPLACE EQUIPAMENTO SET Ativo = 1 WHERE NroIntEquip = 1"), "EQUIPAMENTO_REPETIDO");
}

TEST_F(ServicosEsquema, Columns_OfAnotherTypeOrOutOfRange_AreRefusedByName)
{
    const auto recusa = [&](const std::string &tabela, const std::string &coluna, const std::string &valor) {
        const std::string versao = tabela == "AFERICAO" ? ", Versao = 2" : ""; // a change is a version
        return Motivo("UPDATE " + tabela + " SET " + coluna + " = " + valor + versao);
    };
    const auto restricao = [](const std::string &nome) { return "CHECK constraint failed: " + nome; };
    // days that look like days
    for (const char *dia : {"20310000", "20310230", "20311301", "20310132", "0", "-20310101", "20310101.0 + 0.0"}) {
        EXPECT_EQ(recusa("AFERICAO", "DataVencimento", dia),
                  std::string(dia) == "20310101.0 + 0.0" ? "done" : restricao("AFERICAO_DataVencimento"))
            << dia;
    }
    EXPECT_EQ(recusa("AFERICAO", "DataVencimento", "'31/12/2031'"),
              "cannot store TEXT value in INTEGER column AFERICAO.DataVencimento");
    EXPECT_EQ(recusa("AFERICAO", "DataVencimento", "20310101.5"),
              "cannot store REAL value in INTEGER column AFERICAO.DataVencimento");
    EXPECT_EQ(recusa("AFERICAO", "DataVencimento", "NULL"), "NOT NULL constraint failed: AFERICAO.DataVencimento");
    EXPECT_EQ(recusa("AFERICAO", "DataVencimento", "20250101"), restricao("AFERICAO_Verificacao_ate_Vencimento"));
    EXPECT_EQ(recusa("AFERICAO", "TipoAfer", "3"), restricao("AFERICAO_TipoAfer"));
    EXPECT_EQ(recusa("AFERICAO", "Ativo", "0"), restricao("AFERICAO_Ativo"));
    EXPECT_EQ(recusa("AFERICAO", "Numero", "'12345678901'"), restricao("AFERICAO_Numero"));
    EXPECT_EQ(recusa("AFERICAO", "Numero", "'çççççççççç'"), "done"); // characters, not bytes
    EXPECT_EQ(recusa("AFERICAO", "Numero", "'1' || char(0) || '2'"), restricao("AFERICAO_Numero"));
    EXPECT_EQ(recusa("AFERICAO", "Numero", "x'31'"), "cannot store BLOB value in TEXT column AFERICAO.Numero");
    EXPECT_EQ(recusa("EQUIPAMENTO", "VelocPermitida", "1000"), restricao("EQUIPAMENTO_VelocPermitida"));
    EXPECT_EQ(recusa("LIMITE", "HoraInicio", "760"), restricao("LIMITE_HoraInicio"));
    EXPECT_EQ(recusa("LIMITE", "HoraFim", "2400"), restricao("LIMITE_HoraFim"));
    EXPECT_EQ(recusa("LIMITE", "HoraFim", "700"), restricao("LIMITE_Inicio_ate_Fim"));
    EXPECT_EQ(recusa("USUARIO", "Nome", "''"), restricao("USUARIO_Nome"));
    EXPECT_EQ(
        Motivo("INSERT INTO HISTORICO SELECT (SELECT MAX(Nro) + 1 FROM HISTORICO), 20261120106000, Fuso, Operador, "
               "Raiz, NroRaiz, Versao, Entidade, NroEntidade, Acao, Motivo, Antes, Depois, Elo FROM HISTORICO "
               "LIMIT 1"),
        restricao("HISTORICO_Quando"));
    EXPECT_EQ(Motivo("INSERT INTO HISTORICO SELECT (SELECT MAX(Nro) + 2 FROM HISTORICO), Quando, Fuso, Operador, Raiz, "
                     "NroRaiz, Versao, Entidade, NroEntidade, Acao, Motivo, Antes, Depois, Elo FROM HISTORICO LIMIT 1"),
              "HISTORICO_EM_SEQUENCIA");
}

TEST_F(ServicosEsquema, ColumnThatTheDatabaseRefuses_IsAFaultInWords)
{
    Banco banco(std::make_unique<DialetoSQLite>(), m_Registro.Caminho(), Instante(DataDe(20, 11, 2026)));
    const auto frase = [&](const QString &sql) {
        return FalhaLancada([&] { banco.Escreve([&] { Consulta(banco, sql); }); }).Descricao;
    };
    EXPECT_EQ(frase("UPDATE AFERICAO SET DataVencimento = 20310000, Versao = 2"),
              "O campo \"data de vencimento\" veio com um valor que não pode ser gravado. Nada foi gravado.");
    EXPECT_EQ(
        frase("UPDATE AFERICAO SET DataVencimento = 20250101, Versao = 2"),
        "O banco de dados não aceitou a operação (CHECK constraint failed: AFERICAO_Verificacao_ate_Vencimento).");
}

TEST(Esquema, Column_OfEachForm_SaysWhyItRefuses)
{
    const auto recusa = [](const char *tabela, const char *coluna, const QVariant &valor) {
        return Esquema::Acha(tabela)->Acha(coluna)->Recusa(valor);
    };
    EXPECT_EQ(recusa("AFERICAO", "DataVencimento", 20260229), "precisa de uma data válida");
    EXPECT_EQ(recusa("AFERICAO", "DataVencimento", 20280229), "");
    EXPECT_EQ(recusa("AFERICAO", "DataVencimento", "amanhã"), "precisa ser um número");
    EXPECT_EQ(recusa("AFERICAO", "DataVencimento", QVariant()), "precisa ser informado");
    EXPECT_EQ(recusa("AFERICAO", "NroIntImgCertif", QVariant()), "");
    EXPECT_EQ(recusa("AFERICAO", "Numero", QString(11, 'x')), "aceita até 10 caracteres e veio com 11");
    EXPECT_EQ(recusa("EQUIPAMENTO", "Codigo", "  "), "precisa ser informado");
    EXPECT_EQ(recusa("LIMITE", "HoraFim", 2360), "precisa de uma hora de 00:00 a 23:59");
    EXPECT_EQ(recusa("LIMITE", "Dia", 9), "deve estar entre 1 e 8; veio 9");
    EXPECT_EQ(recusa("HISTORICO", "Quando", qlonglong(20261120240000)), "precisa de um momento válido");
    EXPECT_EQ(recusa("HISTORICO", "Quando", qlonglong(20261120235959)), "");
    EXPECT_EQ(recusa("DOCUMENTO", "Conteudo", QByteArray()), "deve estar entre 1 e 5242880; veio 0");
    EXPECT_EQ(Esquema::Acha("NADA"), nullptr);
    EXPECT_EQ(Esquema::Acha("DIA")->Acha("Nada"), nullptr);
}

class ServicosCorrente : public ServicosTeste {};

TEST_F(ServicosCorrente, Moments_AreInUtcWithTheOffset)
{
    const motor::RegistroVazio vazio;
    const std::string &caminho = vazio.Onde();
    const auto servicos = Servicos::Cria(caminho, TipoDeRegistro::Registro,
                                         [] { return Instante(DataDe(31, 12, 2026, 22, 30, 5), -180); });
    EXPECT_EQ(LinhasSql(caminho, "SELECT Quando, Fuso FROM HISTORICO").front(), "20270101013005|-180");
    EXPECT_EQ(LinhasSql(caminho, "SELECT CriadoEm, Fuso FROM REGISTRO").front(), "20270101013005|-180");
}

TEST_F(ServicosCorrente, ClockThatWentBack_IsNotedBeforeTheChange)
{
    m_Registro.PassaSegundos(-3600);
    Inclui(m_Ana, EquipamentoDe("R-001"));
    Inclui(m_Ana, EquipamentoDe("R-002"));
    EXPECT_EQ(LinhasSql(m_Registro.Caminho(),
                        "SELECT Entidade || ' ' || Acao || ' ' || Quando || ' ' || CASE Entidade "
                        "WHEN 'RELOGIO' THEN Depois ELSE '' END FROM HISTORICO ORDER BY Nro DESC LIMIT 3"),
              (std::vector<std::string>{"EQUIPAMENTO inclui 20261120090000 ", "EQUIPAMENTO inclui 20261120090000 ",
                                        "RELOGIO volta 20261120090000 {\"Agora\":20261120090000,"
                                        "\"Ultimo\":20261120100000}"}));
}

TEST_F(ServicosCorrente, Entry_HasTheWholeRowBeforeAndAfter)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    const auto entrada = [&](const char *coluna, const char *acao) {
        return m_Registro.Sql(std::string("SELECT ") + coluna +
                              " FROM HISTORICO WHERE Entidade = 'EQUIPAMENTO' AND "
                              "Acao = '" +
                              acao + "'");
    };
    const std::string incluido = entrada("Depois", "inclui");
    EXPECT_NE(incluido.find("\"CodigoBusca\":\"r-001\""), std::string::npos) << incluido;
    EXPECT_NE(incluido.find("\"Versao\":1"), std::string::npos);
    const auto lido = Abre(m_Ana, numero);
    Exigido(Pede(m_Ana, "altera", Com(lido, &EquiptoED::Descricao, "Depois")));
    EXPECT_EQ(entrada("Antes", "altera"), incluido);
    EXPECT_NE(entrada("Depois", "altera").find("\"Versao\":2"), std::string::npos);
    EXPECT_EQ(entrada("Antes", "inclui"), "");
}

TEST_F(ServicosCorrente, SecretsInAnEntry_AreTheirHashes)
{
    const std::string usuario = m_Registro.Sql("SELECT Depois FROM HISTORICO WHERE Entidade = 'USUARIO'");
    EXPECT_EQ(usuario.find("argon2"), std::string::npos);
    EXPECT_NE(usuario.find("\"Senha\":\""), std::string::npos);
    const std::string registro = m_Registro.Sql("SELECT Depois FROM HISTORICO WHERE Entidade = 'REGISTRO'");
    EXPECT_EQ(registro.find(m_Registro.Sql("SELECT ChaveSecreta FROM REGISTRO")), std::string::npos);
}

TEST(Corrente, Hash_IsOfTheFieldsWithTheirLengths)
{
    const QVariantList campos{1, QVariant(QMetaType::fromType<qlonglong>()), "ab", "c"};
    const std::string elo = Historico::Encadeia("x", 1, campos);
    EXPECT_EQ(elo.size(), 64U);
    EXPECT_EQ(Historico::Encadeia("x", 1, campos), elo);
    for (const QVariantList &outros :
         {QVariantList{1, QVariant(QMetaType::fromType<qlonglong>()), "a", "bc"}, QVariantList{1, 0, "ab", "c"},
          QVariantList{1, "", "ab", "c"}, QVariantList{1, QVariant(QMetaType::fromType<qlonglong>()), "ab"}}) {
        EXPECT_NE(Historico::Encadeia("x", 1, outros), elo);
    }
    EXPECT_NE(Historico::Encadeia("y", 1, campos), elo);
    EXPECT_NE(Historico::Encadeia("x", 2, campos), elo);
    // written down once, so that no later program makes them otherwise
    EXPECT_EQ(Historico::Origem("0"), "21d3b55b077cd6803d92b2a67aa9a039ca6f44b6ac2674b0a6b4f5a88e3117c1");
    EXPECT_EQ(elo, "6fc46e63dd839c96cf7fe308523d3fcb6460666d565851d5e6b675534e768902");
}

} // namespace
