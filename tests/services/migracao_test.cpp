#include "host/ConsultaAfericaoED.h"
#include "services/Banco.h"
#include "services/Conferidor.h"
#include "services/DialetoSQLite.h"
#include "services/Esquema.h"
#include "services/Historico.h"
#include "tests/services/MortePorPasso.h"
#include "tests/services/PastaDeTeste.h"
#include "tests/services/RegistroDeTeste.h"
#include "tests/services/RegistroPovoado.h"
#include "tests/support/FalhaLancada.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>

using namespace mesa;

namespace {

Instante Agora()
{
    return {DataDe(22, 11, 2026, 9, 0, 0), -180};
}

// A registry as version 1 left it: the sample of that time, cut down to five equipment.
class ServicosMigracao : public testing::Test {
  protected:
    ServicosMigracao() { CriaRegistroVersao1(caminho); }

    std::string Sql(const std::string &comando)
    {
        const auto linhas = LinhasSql(caminho, comando);
        return linhas.empty() ? "" : linhas.front();
    }
    void Abre() { Servicos::Abre(caminho, Agora); }
    // Refuses with the sentence and leaves the old registry as it was.
    void RecusaComo(const std::string &frase)
    {
        EXPECT_TRUE(Lanca(51, "Servicos < Servicos.Abre", frase, [&] { Abre(); }));
        EXPECT_EQ(Sql("SELECT MAX(Versao) FROM ESQUEMA"), "1");
        EXPECT_EQ(Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "5");
        EXPECT_EQ(Sql("SELECT COUNT(*) FROM sqlite_master WHERE name LIKE 'V1%'"), "0");
    }

    static Ref<SessaoServico> Entra(Servicos &servicos)
    {
        std::string recusa;
        std::int32_t espera = 0;
        return servicos.Entra("ana", "registro2026", "estação de teste", recusa, espera);
    }

    QTemporaryDir diretorio;
    std::string caminho = diretorio.filePath("registro.db").toStdString();
};

TEST_F(ServicosMigracao, Version1_Opened_HasTheSchemaOfANewRegistry)
{
    Abre();
    const std::string novo = diretorio.filePath("novo.db").toStdString();
    Servicos::Cria(novo, TipoDeRegistro::Registro, Agora);
    const std::string esquema = "SELECT type, name, tbl_name, sql FROM sqlite_master ORDER BY type, name";
    EXPECT_EQ(LinhasSql(caminho, esquema), LinhasSql(novo, esquema));
    EXPECT_EQ(Sql("PRAGMA application_id"), LinhasSql(novo, "PRAGMA application_id").front());
    EXPECT_EQ(LinhasSql(caminho, "SELECT Versao FROM ESQUEMA"), (std::vector<std::string>{"1", "2", "3"}));
    EXPECT_EQ(Sql("PRAGMA integrity_check"), "ok");
    EXPECT_EQ(Sql("PRAGMA foreign_key_check"), "");
}

TEST_F(ServicosMigracao, Version1_Opened_KeepsEveryRowAndEntry)
{
    const auto linhas = [&](const std::string &tabela, const std::string &colunas) {
        return LinhasSql(caminho, "SELECT " + colunas + " FROM " + tabela + " ORDER BY 1");
    };
    const std::vector<std::pair<std::string, std::string>> tabelas = {
        {"CLIENTE", "CodCliente, Nome"},
        {"SETOR", "CodCliente, Nome"},
        {"USUARIO", "Numero, Usuario, Chave, Nome, CodCliente, Setor, CodMunic, Senha, Ativo"},
        {"EQUIPAMENTO", "*"},
        {"SENSOR", "*"},
        {"DOCUMENTO", "NroDocumento, ClienteInc, Tamanho, Sha256, Quando, Operador, hex(Conteudo)"},
        {"AFERICAO", "NroIntAfericao, NroIntSensor, Numero, Marca, DataVerificacao, DataVencimento, Ativo, "
                     "NroIntImgCertif, TipoAfer, PortDimel"},
        {"LIMITE", "*"},
        {"DIA", "*"},
    };
    std::vector<std::vector<std::string>> antes;
    for (const auto &[tabela, colunas] : tabelas) {
        antes.push_back(linhas(tabela, colunas));
    }
    const std::string entradas = "Operador, Raiz, NroRaiz, Versao, Entidade, NroEntidade, Acao, Antes, Depois, Quando "
                                 "FROM HISTORICO ";
    const auto historico = LinhasSql(caminho, "SELECT " + entradas + "ORDER BY Nro");
    Abre();
    for (std::size_t n = 0; n < tabelas.size(); ++n) {
        EXPECT_EQ(linhas(tabelas[n].first, tabelas[n].second), antes[n]) << tabelas[n].first;
    }
    EXPECT_EQ(LinhasSql(caminho, "SELECT " + entradas + "WHERE Fuso IS NULL ORDER BY Nro"), historico);
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM PERMISSAO WHERE Objeto = 'VOR-EQP-CS'"), "18");
}

TEST_F(ServicosMigracao, Version1_Opened_HasTheStreetsOfItsSensorsUnderTheirCodes)
{
    Abre();
    // Each as the sensor's own text tells it.
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM SENSOR WHERE CodLograd <> 0"),
              Sql("SELECT COUNT(*) FROM SENSOR s JOIN LOGRADOURO l ON l.CodLograd = s.CodLograd AND l.Ativo = 1 "
                  "AND s.EndDescr = l.Nome || ', ' || s.EndNro || ' - ' || l.Bairro AND s.EndCep = l.Cep"));
    EXPECT_EQ(Sql("SELECT CodLograd, CodMunic, Nome, Bairro, Cep, NomeBusca, Ativo, Versao FROM LOGRADOURO WHERE "
                  "CodLograd = 326002"),
              "326002|4314902|Avenida Getúlio Vargas|Centro|96500020|avenida getulio vargas|1|1");
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM LOGRADOURO"),
              Sql("SELECT COUNT(DISTINCT CodLograd) FROM SENSOR WHERE CodLograd <> 0"));
    EXPECT_EQ(LinhasSql(caminho, "SELECT Nome FROM LAYOUT WHERE Ativo = 1 AND length(Conteudo) > 100 ORDER BY 1"),
              (std::vector<std::string>{"AGENTE", "ESTATICO", "LOMBADA", "PADRAO", "PARDAL"}));
}

TEST_F(ServicosMigracao, Version1_Opened_WritesEveryRowDownAndChainsTheHistory)
{
    Abre();
    EXPECT_EQ(
        Sql("SELECT COUNT(*) FROM HISTORICO WHERE Acao = 'migra' AND Operador IS NULL AND Fuso = -180 AND "
            "Quando = 20261122120000"),
        Sql("SELECT (SELECT COUNT(*) FROM CLIENTE) + (SELECT COUNT(*) FROM SETOR) + (SELECT COUNT(*) FROM USUARIO) "
            "+ (SELECT COUNT(*) FROM PERMISSAO) + (SELECT COUNT(*) FROM EQUIPAMENTO) + (SELECT COUNT(*) FROM "
            "SENSOR) + (SELECT COUNT(*) FROM AFERICAO) + (SELECT COUNT(*) FROM DOCUMENTO) + (SELECT COUNT(*) FROM "
            "LIMITE) + (SELECT COUNT(*) FROM DIA) + (SELECT COUNT(*) FROM LOGRADOURO) + (SELECT COUNT(*) FROM "
            "LAYOUT) + 1"));
    Banco banco(std::make_unique<DialetoSQLite>(), caminho, Agora());
    banco.Le([&] {
        std::string elo = Historico::Origem(Sql("SELECT Identificador FROM REGISTRO"));
        Consulta entradas(banco, "SELECT Nro, Elo, " + Historico::ColunasDoElo() + " FROM HISTORICO ORDER BY Nro");
        std::int64_t nro = 0;
        while (entradas.Proxima()) {
            QVariantList campos;
            for (int coluna = 2; coluna < 14; ++coluna) {
                campos.push_back(entradas.Valor(coluna));
            }
            ASSERT_EQ(entradas.Inteiro(0), ++nro);
            elo = Historico::Encadeia(elo, nro, campos);
            ASSERT_EQ(entradas.Texto(1), elo) << nro;
        }
        EXPECT_GT(nro, 200);
        EXPECT_EQ(Historico(banco).Fim().Tamanho, nro);
    });
    for (const char *tabela : {"AFERICAO", "EQUIPAMENTO", "USUARIO"}) {
        const std::string chave = std::string(tabela) == "USUARIO"    ? "Numero"
                                  : std::string(tabela) == "AFERICAO" ? "NroIntAfericao"
                                                                      : "NroIntEquip";
        const std::string numero = Sql("SELECT MIN(" + chave + ") FROM " + tabela);
        EXPECT_EQ(Historico::Retrato(banco, tabela, std::stoll(numero)),
                  Sql(std::string("SELECT Depois FROM HISTORICO WHERE Entidade = '") + tabela +
                      "' AND NroEntidade = " + numero + " ORDER BY Nro DESC LIMIT 1"));
    }
}

TEST_F(ServicosMigracao, Version1_WithTheUsersOfTheSample_IsASampleWithAnAdministrator)
{
    Abre();
    EXPECT_EQ(Servicos::Abre(caminho, Agora)->Tipo(), TipoDeRegistro::Amostra);
    EXPECT_EQ(Sql("SELECT group_concat(Numero || Acao) FROM PERMISSAO WHERE Objeto = 'VOR-EQP-ADM'"), "101C,101T,101U");
    EXPECT_EQ(Sql("SELECT group_concat(DISTINCT UF) FROM CLIENTE"), "RS");
}

TEST_F(ServicosMigracao, Version1_WithOtherUsers_IsARegistry)
{
    Sql("DROP TRIGGER USUARIO_SEM_DELETE; UPDATE USUARIO SET Chave = 'outra' WHERE Numero = 101");
    Sql("CREATE TRIGGER USUARIO_SEM_DELETE BEFORE DELETE ON USUARIO BEGIN SELECT RAISE(ABORT, 'x'); END");
    Abre();
    EXPECT_EQ(Servicos::Abre(caminho, Agora)->Tipo(), TipoDeRegistro::Registro);
}

TEST_F(ServicosMigracao, Version1_Opened_WorksOn)
{
    const auto servicos = Servicos::Abre(caminho, Agora);
    const auto ana = Entra(*servicos);
    const auto lido = ::Abre(ana, 1);
    const auto mudado = ComoTipo<EquiptoED>(lido->Copia());
    mudado->Descricao = "Depois";
    EXPECT_TRUE(Exigido(Pede(ana, "altera", mudado)).Feita);
}

TEST_F(ServicosMigracao, Version1_Opened_HasAVersionForEachEntryOfACalibration)
{
    Sql("INSERT INTO HISTORICO SELECT (SELECT MAX(Nro) + 1 FROM HISTORICO), 20261122090000, 101, Raiz, NroRaiz, 2, "
        "Entidade, NroEntidade, 'altera', Depois, json_set(Depois, '$.Marca', '5') FROM HISTORICO WHERE Entidade = "
        "'AFERICAO' AND NroEntidade = 64; UPDATE AFERICAO SET Marca = '5' WHERE NroIntAfericao = 64");
    const auto servicos = Servicos::Abre(caminho, Agora);
    EXPECT_EQ(Sql("SELECT group_concat(DISTINCT Versao) FROM AFERICAO WHERE NroIntAfericao <> 64"), "2");
    const auto ana = Entra(*servicos);
    ::Abre(ana, 9);
    const auto pedida = Poe(SoSensor(21), Com(SoAfericao(64), &AfericaoED::Marca, "6"));
    Exigido(Pede(ana, "altera", Poe(SoNumero(9), pedida)));
    EXPECT_EQ(Sql("SELECT Versao FROM AFERICAO WHERE NroIntAfericao = 64"), "4");

    std::vector<VersaoAfericao> versoes;
    std::string recusa;
    ASSERT_TRUE(ana->VersoesDaAfericao(64, versoes, recusa)) << recusa;
    std::vector<std::string> lidas;
    for (const VersaoAfericao &v : versoes) {
        lidas.push_back(std::to_string(v.Versao) + " " + v.Acao + " " + v.Quem + " " + std::to_string(v.Quando) + " " +
                        (v.Fuso ? std::to_string(*v.Fuso) : "sem fuso") + " " + v.Registro->Marca.Valor());
    }
    EXPECT_EQ(lidas, (std::vector<std::string>{"1 inclui Ana Bittencourt 20261122085525 sem fuso 21112452808",
                                               "2 altera Ana Bittencourt 20261122090000 sem fuso 5",
                                               "3 migra  20261122090000 -180 5",
                                               "4 altera Ana Bittencourt 20261122090000 -180 6"}));
}

TEST_F(ServicosMigracao, Version1_Opened_TellsWhatItHeldBeforeAsFarAsItsHistoryDoes)
{
    Sql("INSERT INTO HISTORICO SELECT (SELECT MAX(Nro) + 1 FROM HISTORICO), 20261122085900, 101, Raiz, NroRaiz, Versao "
        "+ "
        "1, Entidade, NroEntidade, 'altera', Depois, json_set(Depois, '$.Descricao', 'Outra') FROM HISTORICO WHERE "
        "Entidade = 'EQUIPAMENTO' AND NroEntidade = 1 ORDER BY Nro DESC LIMIT 1; UPDATE EQUIPAMENTO SET Descricao = "
        "'Outra', Versao = Versao + 1 WHERE NroIntEquip = 1");
    const auto servicos = Servicos::Abre(caminho, Agora);
    const auto ana = Entra(*servicos);
    const auto conhecido = [&](Data quando) {
        EquipamentoConhecido lido;
        std::string recusa;
        EXPECT_TRUE(ana->ComoConhecido(1, {quando, -180}, lido, recusa)) << recusa;
        return lido;
    };
    const EquipamentoConhecido migrado = conhecido(Agora().Local);
    EXPECT_EQ(migrado.Ressalva, "");
    EXPECT_EQ(migrado.Registro->Sensores.Valor()->Count(), 4);
    EXPECT_EQ(migrado.Registro->ListaLimiteDif.Valor()->Count() + migrado.Registro->ListaDiaEspecifico.Valor()->Count(),
              std::stoi(Sql("SELECT (SELECT COUNT(*) FROM LIMITE WHERE NroIntEquip = 1) + (SELECT COUNT(*) FROM DIA "
                            "WHERE NroIntEquip = 1)")));
    const EquipamentoConhecido antes = conhecido(DataDe(22, 11, 2026, 8, 59, 30));
    EXPECT_EQ(antes.Registro->Texto(), migrado.Registro->Texto()); // with the calibrations on their sensors
    EXPECT_EQ(antes.Ressalva,
              "O que o histórico diz deste momento vem de um registro mais antigo: as suas horas são as "
              "do lugar, sem fuso, e o que ele não dizia está em branco.");
    EXPECT_NE(conhecido(DataDe(22, 11, 2026, 8, 58, 59)).Registro->Descricao.Valor(), "Outra");
    EquipamentoConhecido nenhum;
    std::string recusa;
    EXPECT_FALSE(ana->ComoConhecido(1, {DataDe(22, 11, 2026, 8, 55, 24), -180}, nenhum, recusa));
    EXPECT_TRUE(recusa.ends_with("a sua primeira entrada é de 22/11/2026 às 08:55:25.")) << recusa;
}

TEST_F(ServicosMigracao, Version1_WhoseMomentsHaveNoOffset_CountsItsDaysByTheClockOfThePlace)
{
    Sql("INSERT INTO HISTORICO SELECT (SELECT MAX(Nro) + 1 FROM HISTORICO), 20261123003000, 101, Raiz, NroRaiz, Versao "
        "+ "
        "1, Entidade, NroEntidade, 'desativa', Depois, json_set(Depois, '$.Ativo', 2) FROM HISTORICO WHERE Entidade = "
        "'EQUIPAMENTO' AND NroEntidade = 9 ORDER BY Nro DESC LIMIT 1; UPDATE EQUIPAMENTO SET Ativo = 2, Versao = "
        "Versao "
        "+ 1 WHERE NroIntEquip = 9");
    const auto servicos = Servicos::Abre(caminho, [] { return Instante(DataDe(26, 11, 2026, 9, 0, 0), -180); });
    const auto ana = Entra(*servicos);
    const auto vigente = [&](Data dia) {
        return Exigido(Pede(ana, "consultaSimplesAfericaoVigente",
                            Com(Novo<ConsultaAfericaoED>(), &ConsultaAfericaoED::NroIntEquip, 9,
                                &ConsultaAfericaoED::DtInfracao, dia)))
            .Como<AfericaoED>()
            ->NroIntAfericao.Valor();
    };
    EXPECT_EQ(vigente(DataDe(1, 6, 2026)), 64);
    EXPECT_EQ(vigente(DataDe(22, 11, 2026)), 64);
    EXPECT_EQ(vigente(DataDe(23, 11, 2026)), 64);
    EXPECT_EQ(vigente(DataDe(24, 11, 2026)), 0);
    EXPECT_EQ(vigente(DataDe(26, 11, 2026)), 0); // of the migration, which has changed nothing
    Exigido(Pede(ana, "reativa", SoNumero(9)));
    EXPECT_EQ(vigente(DataDe(25, 11, 2026)), 0);
    EXPECT_EQ(vigente(DataDe(26, 11, 2026)), 64);
}

TEST_F(ServicosMigracao, Version1_WithAValueThatItsColumnDoesNotTake_IsRefusedByName)
{
    const std::string qual = Sql("SELECT NroIntAfericao FROM AFERICAO ORDER BY DataVencimento DESC LIMIT 1");
    Sql("UPDATE AFERICAO SET DataVencimento = 20310000 WHERE NroIntAfericao = " + qual);
    RecusaComo("O registro não pôde ser atualizado: na linha " + qual +
               " da tabela AFERICAO, o campo \"data de vencimento\" precisa de uma data válida. Nada foi mudado.");
}

TEST_F(ServicosMigracao, Version1_WithATextForANumber_IsRefusedByName)
{
    Sql("UPDATE LIMITE SET VelocPerm = 'muita' WHERE NroInt = (SELECT MIN(NroInt) FROM LIMITE)");
    RecusaComo("O registro não pôde ser atualizado: na linha " + Sql("SELECT MIN(NroInt) FROM LIMITE") +
               " da tabela LIMITE, o campo \"velocidade permitida\" precisa ser um número. Nada foi mudado.");
}

TEST_F(ServicosMigracao, Version1_WithAReferenceThatLeadsNowhere_IsRefusedByName)
{
    Sql("PRAGMA foreign_keys = OFF; UPDATE SENSOR SET NroIntEquip = 999 WHERE NroIntSensor = 1");
    EXPECT_THROW(Abre(), Falha);
    EXPECT_EQ(Sql("SELECT MAX(Versao) FROM ESQUEMA"), "1");
}

// A registry as version 2 left it, with something in every table of that time.
class ServicosMigracaoDaVersao2 : public testing::Test {
  protected:
    ServicosMigracaoDaVersao2()
    {
        m_Registro.SemGuardas("DROP TABLE REPETICAO; DROP TABLE OPERACAO; UPDATE ESQUEMA SET Versao = 2");
    }

    std::vector<std::string> Tudo() const
    {
        std::vector<std::string> tudo;
        for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
            if (tabela.Desde == 2 && tabela.Nome != "ESQUEMA") {
                for (std::string &linha :
                     LinhasSql(m_Registro.Caminho(), "SELECT * FROM " + std::string(tabela.Nome))) {
                    tudo.push_back(std::move(linha));
                }
            }
        }
        return tudo;
    }
    void ConfereVersao3() const
    {
        EXPECT_EQ(LinhasSql(m_Registro.Caminho(), "SELECT Versao FROM ESQUEMA"), (std::vector<std::string>{"2", "3"}));
        EXPECT_EQ(Tudo(), m_Antes);
        EXPECT_EQ(Conferidor(m_Registro.Caminho()).Confere().Achados, std::vector<std::string>{});
    }

    RegistroPovoado m_Registro;
    std::vector<std::string> m_Antes = Tudo();
};

TEST_F(ServicosMigracaoDaVersao2, Opened_HasTheNewTablesAndAllThatWasThere)
{
    const ResultadoDaConferencia antes = Conferidor(m_Registro.Caminho()).Confere(); // by the tables of its time
    EXPECT_EQ(antes.Achados, std::vector<std::string>{});
    EXPECT_EQ(antes.Como, ResultadoDaConferencia::Desfecho::Inteira);
    Servicos::Abre(m_Registro.Caminho(), Agora);
    ConfereVersao3();
    const std::string novo = m_Registro.Caminho() + ".novo";
    Servicos::Cria(novo, TipoDeRegistro::Registro, Agora);
    const std::string esquema = "SELECT type, name, tbl_name, sql FROM sqlite_master ORDER BY type, name";
    EXPECT_EQ(LinhasSql(m_Registro.Caminho(), esquema), LinhasSql(novo, esquema));
}

TEST_F(ServicosMigracaoDaVersao2, WithWhatItsSchemaDoesNotHave_IsFound)
{
    m_Registro.Sql("CREATE TABLE OPERACAO (NroOperacao INTEGER PRIMARY KEY)");
    EXPECT_EQ(Conferidor(m_Registro.Caminho()).Confere().Achados,
              std::vector<std::string>{"A tabela OPERACAO não é do programa: foi posta no registro por outro meio."});
}

// Killed before each change of the disk in turn: it is of the one version or of the other, whole.
TEST_F(ServicosMigracaoDaVersao2, KilledAtAnyStep_IsWholeAndTheNextOpeningFinishes)
{
    if (!MortePorPasso::Possivel()) {
        GTEST_SKIP() << "no process may be watched here";
    }
    QFile modelo(QString::fromStdString(m_Registro.Caminho()));
    ASSERT_TRUE(modelo.open(QIODevice::ReadOnly));
    const QByteArray octetos = modelo.readAll();
    modelo.close();
    const std::filesystem::path copias = std::filesystem::path(m_Registro.Caminho()).parent_path() / "copias";
    int mortes = 0;
    for (int passo = 0;; passo += 7) {
        for (const char *parte : {"", "-wal", "-shm"}) {
            std::filesystem::remove(m_Registro.Caminho() + parte);
        }
        std::ofstream(m_Registro.Caminho(), std::ios::binary) << octetos.toStdString();
        const auto onde = MortePorPasso::Mata(
            passo, [&] { Servicos::Abre(m_Registro.Caminho(), Agora, CustoDeTeste, copias.string()); });
        EXPECT_EQ(Tudo(), m_Antes) << passo;
        EXPECT_EQ(Conferidor(m_Registro.Caminho()).Confere().Achados, std::vector<std::string>{}) << passo;
        Servicos::Abre(m_Registro.Caminho(), Agora, CustoDeTeste, copias.string());
        ConfereVersao3();
        if (!onde || HasFailure()) {
            break;
        }
        ++mortes;
    }
    EXPECT_GT(mortes, 5);
}

} // namespace
