#include "services/Banco.h"
#include "services/Conferidor.h"
#include "services/DialetoSQLite.h"
#include "services/Esquema.h"
#include "services/Servicos.h"
#include "tests/services/RegistroPovoado.h"
#include "tests/services/SemPrivilegio.h"

#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace mesa;

namespace {

using Desfecho = ResultadoDaConferencia::Desfecho;
using Frases = std::vector<std::string>;

const std::string SemCabeca =
    " Sem uma cabeça do histórico guardada fora do registro, esta conferência não prova que nada foi cortado do fim do "
    "histórico, nem que o registro não foi refeito por inteiro.";
const std::string PorAna = "; a última mudança registrada é por Ana Souza em 20/11/2026 às 10:00:00.";

class ServicosConferencia : public testing::Test {
  protected:
    ResultadoDaConferencia Confere() const { return Conferidor(m_Registro.Caminho()).Confere(); }
    Frases Achados() const { return Confere().Achados; }
    Frases AchadosRapidos() const { return Conferidor(m_Registro.Caminho()).ConfereRapido().Achados; }
    void SemGuardas(const std::string &sql) const { m_Registro.SemGuardas(sql); }
    // What a whole check of the registry as it was made says first.
    std::string Inteiro() const
    {
        int linhas = 0;
        for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
            if (tabela.Nome != "ESQUEMA" && tabela.Nome != "HISTORICO") {
                linhas += std::stoi(m_Registro.Sql("SELECT COUNT(*) FROM " + std::string(tabela.Nome)));
            }
        }
        return "O registro está inteiro: " + std::to_string(linhas) + " linhas, 1 documento e " + m_Fim +
               " entradas do histórico conferem.";
    }

    RegistroPovoado m_Registro;
    const int m_Entradas = std::stoi(m_Registro.Sql("SELECT MAX(Nro) FROM HISTORICO"));
    const std::string m_Fim = std::to_string(m_Entradas);
    const std::string m_Estacao = m_Registro.Sql("SELECT MAX(NroEstacao) FROM ESTACAO");
};

bool Ha(const Frases &frases, const std::string &comeco)
{
    for (const std::string &frase : frases) {
        if (frase.starts_with(comeco)) {
            return true;
        }
    }
    return false;
}

std::string Le(const std::string &caminho)
{
    std::stringstream tudo;
    tudo << std::ifstream(caminho, std::ios::binary).rdbuf();
    return tudo.str();
}

TEST_F(ServicosConferencia, SoundRegistry_IsWholeAndSaysWhatItCannotProve)
{
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        EXPECT_NE(m_Registro.Sql("SELECT COUNT(*) FROM " + std::string(tabela.Nome)), "0") << tabela.Nome;
    }
    const ResultadoDaConferencia inteira = Confere();
    EXPECT_EQ(inteira.Achados, Frases{});
    EXPECT_EQ(inteira.Avisos, Frases{});
    EXPECT_EQ(inteira.Como, Desfecho::Inteira);
    EXPECT_EQ(inteira.CodigoDeSaida(), 0);
    EXPECT_EQ(inteira.Frase, Inteiro() + SemCabeca);
    EXPECT_EQ(inteira.Fim.Tamanho, m_Entradas);
    EXPECT_EQ(inteira.Fim.Elo, m_Registro.Sql("SELECT Elo FROM HISTORICO WHERE Nro = " + m_Fim));
    const ResultadoDaConferencia rapida = Conferidor(m_Registro.Caminho()).ConfereRapido();
    EXPECT_EQ(rapida.Achados, Frases{});
    EXPECT_EQ(rapida.Como, Desfecho::Inteira);
    EXPECT_EQ(rapida.Frase, "A conferência rápida do registro, com " + m_Fim +
                                " entradas do histórico, nada encontrou: olhou as "
                                "guardas, o fim do histórico e as linhas mudadas por último." +
                                SemCabeca);
}

TEST_F(ServicosConferencia, ChangedRow_IsNamedWithWhatItWasAndWhoChangedItLast)
{
    SemGuardas("UPDATE AFERICAO SET DataVencimento = 20271231 WHERE Numero = '123'");
    const Frases esperados = {"A aferição 123 (sensor 2 do equipamento R-001): data de vencimento era 31/12/2026 e é "
                              "31/12/2027" +
                              PorAna};
    EXPECT_EQ(Achados(), esperados);
    EXPECT_EQ(AchadosRapidos(), esperados);
    EXPECT_EQ(Confere().Frase, "A conferência do registro encontrou 1 problema." + SemCabeca);
    EXPECT_EQ(Confere().CodigoDeSaida(), 1);
}

TEST_F(ServicosConferencia, ChangedSecret_IsToldWithoutBeingShown)
{
    SemGuardas("UPDATE USUARIO SET Senha = 'outra' WHERE Usuario = 'bruno'; UPDATE REGISTRO SET ChaveSecreta = "
               "ChavePublica || ChavePublica");
    EXPECT_EQ(Achados(),
              (Frases{"A identidade do registro: chave secreta não é mais o que foi registrado; a última mudança "
                      "registrada é pelo próprio sistema em 20/11/2026 às 10:00:00.",
                      "O usuário bruno: senha não é mais o que foi registrado; a última mudança registrada é pelo "
                      "próprio sistema em 20/11/2026 às 10:00:00."}));
}

TEST_F(ServicosConferencia, RowTakenAwayOrPutIn_IsNamed)
{
    SemGuardas("DELETE FROM LIMITE WHERE TipoLimite = 2; INSERT INTO DIA SELECT 50, NroIntEquip, 20270101, HoraInicio, "
               "HoraFim, VelocPerm, VelocMin, Ativo, Versao FROM DIA");
    EXPECT_EQ(Achados(), (Frases{"O horário proibido de número interno 2 do equipamento R-001 está no histórico e não "
                                 "está mais na tabela" +
                                     PorAna,
                                 "O dia específico de número interno 50 está na tabela e não está no histórico: foi "
                                 "posta no registro por outro meio."}));
}

TEST_F(ServicosConferencia, EntryThatWasChanged_BreaksTheChainThere)
{
    SemGuardas("UPDATE HISTORICO SET Operador = 2 WHERE Entidade = 'EQUIPAMENTO' AND Acao = 'altera'");
    const std::string nro = m_Registro.Sql("SELECT Nro FROM HISTORICO WHERE Acao = 'altera'");
    const Frases esperados = {"A corrente do histórico se parte na entrada " + nro +
                              " (o equipamento R-001, por Bruno Lima em 20/11/2026 às 11:00:00): ela, ou a anterior, "
                              "não é a que foi gravada."};
    EXPECT_EQ(Achados(), esperados);
    EXPECT_EQ(AchadosRapidos(), esperados);
}

TEST_F(ServicosConferencia, EntriesTakenOutOfTheMiddle_AreCounted)
{
    SemGuardas("DELETE FROM HISTORICO WHERE Nro IN (20, 21); DELETE FROM HISTORICO WHERE Nro = 5");
    const Frases achados = Achados();
    EXPECT_TRUE(Ha(achados, "Falta a entrada 5 do histórico."));
    EXPECT_TRUE(Ha(achados, "Faltam as entradas 20 a 21 do histórico."));
    EXPECT_TRUE(Ha(AchadosRapidos(), "O histórico vai até a entrada " + m_Fim + " e tem " +
                                         std::to_string(m_Entradas - 3) + " entradas."));
}

TEST_F(ServicosConferencia, EntryThatDoesNotStartWhereTheOneBeforeEnded_IsNamed)
{
    SemGuardas("UPDATE HISTORICO SET Antes = replace(Antes, 'sentido centro', 'sentido bairro') WHERE Acao = 'altera'");
    m_Registro.RefazCorrente();
    const std::string nro = m_Registro.Sql("SELECT Nro FROM HISTORICO WHERE Acao = 'altera'");
    const std::string anterior = m_Registro.Sql(
        "SELECT Nro FROM HISTORICO WHERE Entidade = 'EQUIPAMENTO' AND NroEntidade = 1 AND Acao = 'inclui'");
    EXPECT_EQ(Achados(), (Frases{"A entrada " + nro +
                                 " do histórico (o equipamento R-001, por Ana Souza em 20/11/2026 às 11:00:00) não "
                                 "parte do que a entrada " +
                                 anterior + " deixou."}));
}

// Numbers and moments at the ends of what the file can hold.
TEST_F(ServicosConferencia, ExtremeNumbers_AreFindingsLikeOthers)
{
    SemGuardas("UPDATE HISTORICO SET Quando = 99991231235959, Fuso = 1440 WHERE Nro = " + m_Fim +
               "; UPDATE HISTORICO SET Nro = "
               "9223372036854775807 WHERE Nro = 5; UPDATE HISTORICO SET Nro = -9223372036854775807 WHERE Nro = 6; "
               "UPDATE ESTACAO SET NroEstacao = -9223372036854775808 WHERE NroEstacao = " +
               m_Estacao +
               "; UPDATE DIA SET NroInt = 9223372036854775807, "
               "Data = -9223372036854775807, Versao = 9223372036854775807");
    const Frases achados = Achados();
    EXPECT_TRUE(Ha(achados, "A corrente do histórico se parte na entrada " + m_Fim + " (a estação " + m_Estacao +
                                " do usuário ana, pelo próprio "
                                "sistema em 31/12/9999 às 23:59:59 (UTC))"));
    EXPECT_TRUE(
        Ha(achados, "Faltam as entradas " + std::to_string(m_Entradas + 1) + " a 9223372036854775806 do histórico."));
    EXPECT_TRUE(Ha(achados, "A estação " + m_Estacao + " do usuário ana está no histórico e não está mais na tabela"));
    EXPECT_TRUE(Ha(achados, "O dia específico de número interno 1 do equipamento R-001 está no histórico"));
    EXPECT_FALSE(AchadosRapidos().empty());
}

TEST_F(ServicosConferencia, SchemaThatWasChanged_IsNamedItemByItem)
{
    m_Registro.Sql("DROP TRIGGER AFERICAO_SEM_DELETE; DROP INDEX SENSOR_Equip; CREATE TABLE OUTRA (x); "
                   "CREATE VIEW VISTA AS SELECT 1; DROP TRIGGER DIA_FIXA; CREATE TRIGGER DIA_FIXA BEFORE UPDATE ON DIA "
                   "BEGIN SELECT 1; END; CREATE INDEX OUTRO ON DIA (Data)");
    const Frases esperados = {
        "A tabela OUTRA não é do programa: foi posta no registro por outro meio.",
        "A visão VISTA não é do programa: foi posta no registro por outro meio.",
        "A guarda DIA_FIXA não é a do programa: foi mudada por outro meio.",
        "O índice OUTRO não é do programa: foi posta no registro por outro meio.",
        "O índice SENSOR_Equip falta no registro: foi tirada por outro meio.",
        "A guarda AFERICAO_SEM_DELETE falta no registro: foi tirada por outro meio.",
    };
    EXPECT_EQ(Achados(), esperados);
    EXPECT_EQ(AchadosRapidos(), esperados);
}

TEST_F(ServicosConferencia, MarkAndVersionThatWereChanged_AreTold)
{
    m_Registro.Sql("PRAGMA application_id = 7");
    EXPECT_EQ(Achados(), (Frases{"O arquivo não tem a marca dos registros de equipamentos."}));
    m_Registro.Sql("PRAGMA application_id = " + std::to_string(Esquema::Aplicacao));
    for (const char *versao : {"1", "4"}) {
        SemGuardas(std::string("UPDATE ESQUEMA SET Versao = ") + versao);
        EXPECT_EQ(Achados(), (Frases{std::string("O registro diz ter passado pelas versões ") + versao +
                                     ", e não por aquelas que levam à versão 3."}));
    }
}

TEST_F(ServicosConferencia, NewerRegistry_IsNotLookedThrough)
{
    SemGuardas("UPDATE ESQUEMA SET Versao = 9; CREATE TABLE MAIS (x)");
    const ResultadoDaConferencia resultado = Confere();
    EXPECT_EQ(resultado.Como, Desfecho::NaoConferida);
    EXPECT_EQ(resultado.CodigoDeSaida(), 2);
    EXPECT_EQ(resultado.Frase,
              "O registro é da versão 9, mais nova que a deste programa (versão 3). Atualize o programa.");
}

// Something else in the place of a table may answer without end.
TEST_F(ServicosConferencia, ViewInThePlaceOfATable_IsNotRead)
{
    m_Registro.Sql("PRAGMA legacy_alter_table = ON; ALTER TABLE LAYOUT RENAME TO OUTRA; CREATE VIEW LAYOUT AS WITH "
                   "RECURSIVE r(NroLayout, Nome, Conteudo, Ativo, Versao) AS (SELECT 1, 'x', '', 1, 1 UNION ALL SELECT "
                   "NroLayout + 1, Nome, Conteudo, Ativo, Versao FROM r) SELECT * FROM r");
    const Frases achados = Achados();
    EXPECT_TRUE(Ha(achados, "A visão LAYOUT não é do programa"));
    EXPECT_TRUE(Ha(achados, "A tabela LAYOUT não tem as colunas do programa e não foi conferida."));
}

TEST_F(ServicosConferencia, DocumentWithOtherBytes_IsNamed)
{
    SemGuardas("UPDATE DOCUMENTO SET Conteudo = CAST(replace(CAST(Conteudo AS TEXT), '1.4', '1.5') AS BLOB)");
    EXPECT_EQ(Achados(), (Frases{"O documento 1 não tem mais o conteúdo com que foi guardado por Ana Souza em "
                                 "20/11/2026 às 10:00:00."}));
}

TEST_F(ServicosConferencia, DocumentWithOtherBytesAndTheirHash_DiffersFromTheHistory)
{
    SemGuardas("UPDATE DOCUMENTO SET Conteudo = x'00', Tamanho = 1, Sha256 = "
               "'6e340b9cffb37a989ca544e6bb780a2c78901d3fb33738768511a30617afa01d'");
    const Frases achados = Achados();
    ASSERT_EQ(achados.size(), 1U);
    EXPECT_TRUE(achados[0].starts_with("O documento 1: tamanho era "));
    EXPECT_TRUE(achados[0].ends_with(PorAna));
}

TEST_F(ServicosConferencia, ReferencesThatLeadNowhere_AreNamed)
{
    SemGuardas("UPDATE SENSOR SET NroIntEquip = 77 WHERE NroSensor = 1; UPDATE SENSOR SET CodLograd = 99 WHERE "
               "NroSensor = 2; UPDATE EQUIPAMENTO SET SetorInc = 'Nenhum' WHERE Codigo = 'R-002'");
    const Frases achados = Achados();
    EXPECT_TRUE(Ha(achados, "O sensor 1 do equipamento R-001 se refere a uma linha de EQUIPAMENTO que não existe."));
    EXPECT_TRUE(Ha(achados, "O sensor 2 do equipamento R-001: logradouro \"99\" não existe."));
    EXPECT_TRUE(Ha(achados, "O equipamento R-002: setor \"Nenhum\" não existe."));
}

TEST_F(ServicosConferencia, DerivedColumns_AreMadeAgain)
{
    SemGuardas("UPDATE EQUIPAMENTO SET CodigoBusca = 'x', SubCodigoBusca = 'y', CodigoChave = 'Z', TrabFoto = 2 WHERE "
               "Codigo = 'R-001'; UPDATE LOGRADOURO SET NomeBusca = 'rua'");
    const Frases achados = Achados();
    for (const char *frase : {"O equipamento R-001: código sem distinção de letras não é o que se faz de código.",
                              "O equipamento R-001: código para busca não é o que se faz de código.",
                              "O equipamento R-001: subcódigo para busca não é o que se faz de subcódigo.",
                              "O equipamento R-001: trabalho com fotos não é o do tipo do equipamento.",
                              "O logradouro 1 (Rua São José): nome para busca não é o que se faz de nome."}) {
        EXPECT_TRUE(Ha(achados, frase)) << frase;
    }
}

TEST_F(ServicosConferencia, CodesThatWouldNotBeTakenToday_AreListedAndAreNoFault)
{
    SemGuardas("UPDATE EQUIPAMENTO SET Codigo = 'R/001', CodigoChave = 'R/001', CodigoBusca = 'r/001' WHERE Codigo = "
               "'R-001'; UPDATE HISTORICO SET Antes = replace(replace(Antes, 'R-001', 'R/001'), 'r-001', 'r/001'), "
               "Depois = replace(replace(Depois, 'R-001', 'R/001'), 'r-001', 'r/001') WHERE Entidade = 'EQUIPAMENTO'");
    m_Registro.RefazCorrente();
    const ResultadoDaConferencia resultado = Confere();
    EXPECT_EQ(resultado.Achados, Frases{});
    EXPECT_EQ(resultado.Como, Desfecho::Inteira);
    ASSERT_EQ(resultado.Avisos.size(), 1U);
    EXPECT_TRUE(resultado.Avisos[0].starts_with("O equipamento R/001: código ")) << resultado.Avisos[0];
    EXPECT_TRUE(resultado.Avisos[0].ends_with(", o que hoje não seria aceito.")) << resultado.Avisos[0];
}

TEST_F(ServicosConferencia, RowsThatMeet_AreNamed)
{
    SemGuardas("UPDATE AFERICAO SET NroIntSensor = 2, DataVencimento = 20260101 WHERE Numero = '122'; "
               "UPDATE LIMITE SET TipoLimite = 1, Dia = 2, HoraInicio = 859, HoraFim = 930 WHERE TipoLimite = 2; "
               "INSERT INTO DIA SELECT 2, NroIntEquip, Data, HoraInicio, HoraFim, VelocPerm, VelocMin, 1, 1 FROM DIA");
    const Frases achados = Achados();
    EXPECT_TRUE(Ha(achados, "A aferição 122 (sensor 1 do equipamento R-001) e a aferição 123 (sensor 2 do equipamento "
                            "R-001) se sobrepõem."));
    EXPECT_TRUE(Ha(achados, "O limite diferenciado de número interno 1 do equipamento R-001 e o horário proibido de "
                            "número interno 2 do equipamento R-001 se sobrepõem."));
    EXPECT_TRUE(Ha(achados, "O dia específico de número interno 1 do equipamento R-001 e o dia específico de número "
                            "interno 2 se sobrepõem."));
}

TEST_F(ServicosConferencia, RowsThatOnlyTouch_DoNotMeet)
{
    SemGuardas("UPDATE LIMITE SET TipoLimite = 1, Dia = 2, HoraInicio = 900, HoraFim = 930 WHERE TipoLimite = 2");
    for (const std::string &frase : Achados()) {
        EXPECT_EQ(frase.find("sobrepõem"), std::string::npos) << frase;
    }
}

TEST_F(ServicosConferencia, CountOfWrongPasswordsSetBack_IsNamed)
{
    SemGuardas("UPDATE ENTRADA_RECUSADA SET Vezes = 0 WHERE Vezes > 0");
    EXPECT_EQ(Achados(), (Frases{"A contagem de senhas incorretas na linha " +
                                 m_Registro.Sql("SELECT MAX(NroEntrada) FROM ENTRADA_RECUSADA") +
                                 " de ENTRADA_RECUSADA foi mudada por outro "
                                 "meio: a sua soma não confere."}));
}

TEST_F(ServicosConferencia, ValueThatItsColumnDoesNotTake_IsNamed)
{
    SemGuardas("UPDATE AFERICAO SET DataVencimento = 20310000 WHERE Numero = "
               "'123'");
    const Frases achados = Achados();
    EXPECT_TRUE(Ha(achados, "A aferição 123 (sensor 2 do equipamento R-001): data de vencimento precisa de uma data "
                            "válida."));
    EXPECT_TRUE(Ha(achados, "A aferição 123 (sensor 2 do equipamento R-001): data de vencimento era 31/12/2026 e é "
                            "20310000; "));
}

TEST_F(ServicosConferencia, ConditionOverTwoColumnsThatDoesNotHold_IsNamed)
{
    SemGuardas("UPDATE AFERICAO SET DataVencimento = 20251231 WHERE Numero = '123'");
    EXPECT_TRUE(Ha(Achados(), "A aferição 123 (sensor 2 do equipamento R-001): não vale a condição \"Verificacao ate "
                              "Vencimento\"."));
}

TEST_F(ServicosConferencia, RowThatCannotBeRead_IsNamedAndTheOthersGoOn)
{
    SemGuardas("UPDATE AFERICAO SET DataVencimento = 20271231 WHERE Numero = '123'; "
               "UPDATE LAYOUT SET Conteudo = CAST(zeroblob(9000000) AS TEXT)");
    const Frases achados = Achados();
    EXPECT_TRUE(Ha(achados, "A linha 1 da tabela LAYOUT não pôde ser lida: o arquivo está danificado (string or blob "
                            "too big)."));
    EXPECT_TRUE(Ha(achados, "A aferição 123 (sensor 2 do equipamento R-001): data de vencimento era 31/12/2026 e é "
                            "31/12/2027"));
}

// Every column of every table, by somebody who takes the guards away and puts them back.
TEST_F(ServicosConferencia, EveryColumnOfEveryTable_Changed_IsFound)
{
    int mudadas = 0;
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        for (const Esquema::Coluna &coluna : tabela.Colunas) {
            const RegistroPovoado outro;
            const std::string nome(coluna.Nome);
            const std::string valor =
                coluna.Tipo == Esquema::Forma::Texto
                    ? "substr('z' || COALESCE(" + nome + ", ''), 1, " + std::to_string(coluna.Ate) + ")"
                : coluna.Tipo == Esquema::Forma::Octetos ? "CAST('z' || substr(CAST(" + nome + " AS TEXT), 2) AS BLOB)"
                : coluna.Tipo == Esquema::Forma::SimNao  ? "3 - " + nome
                : nome == "Nro" && tabela.Nome == "REGISTRO" ? "2"
                                                             : "COALESCE(" + nome + ", 0) + 1";
            const std::string chave(tabela.Chave().Nome);
            outro.SemGuardas("UPDATE " + std::string(tabela.Nome) + " SET " + nome + " = " + valor + " WHERE " + chave +
                             " = (SELECT MAX(" + chave + ") FROM " + std::string(tabela.Nome) + ")");
            const ResultadoDaConferencia resultado = Conferidor(outro.Caminho()).Confere();
            EXPECT_EQ(resultado.Como, Desfecho::ComAchados) << tabela.Nome << "." << nome;
            EXPECT_FALSE(resultado.Achados.empty());
            ++mudadas;
        }
    }
    EXPECT_GE(mudadas, 130);
}

TEST_F(ServicosConferencia, TextOfTheSchemaThatHasBecomeBytes_IsFound)
{
    SemGuardas("PRAGMA writable_schema = ON; UPDATE sqlite_master SET sql = CAST(sql AS BLOB) WHERE name = 'DIA_FIXA'");
    EXPECT_EQ(Achados(), (Frases{"A guarda DIA_FIXA não é a do programa: foi mudada por outro meio."}));
}

// The same with their guards taken away before and put back after.
TEST_F(ServicosConferencia, GuardsPutBackAfterAChange_HideNothing)
{
    const std::string guarda = m_Registro.Sql("SELECT sql FROM sqlite_master WHERE name = 'DOCUMENTO_SEM_UPDATE'");
    m_Registro.Sql("DROP TRIGGER DOCUMENTO_SEM_UPDATE; UPDATE DOCUMENTO SET Quando = Quando + 1; " + guarda);
    EXPECT_EQ(Achados(),
              (Frases{"O documento 1: momento era 20/11/2026 às 10:00:00 e é 20/11/2026 às 10:00:01" + PorAna}));
}

// Whoever has the file, and a program that makes the chain anew, leaves nothing that the file itself would tell.
TEST_F(ServicosConferencia, ChangeWithTheChainMadeAnew_IsFoundOnlyByAHeadFromOutside)
{
    const CabecaAssinada cabeca = ExportacaoDeCabeca::Le(m_Registro.Caminho(), DataDe(21, 11, 2026, 8, 0, 0));
    const Conferidor conferidor(m_Registro.Caminho());
    const std::string inteiro = Inteiro();
    const ResultadoDaConferencia antes = conferidor.Confere({}, &cabeca);
    EXPECT_EQ(antes.Como, Desfecho::Inteira);
    EXPECT_EQ(antes.Frase,
              inteiro +
                  " A "
                  "cabeça de 21/11/2026 às 08:00:00 (UTC) confere: nada foi mudado nem cortado até a entrada " +
                  m_Fim + " do histórico.");
    SemGuardas("UPDATE AFERICAO SET DataVencimento = 20271231 WHERE Numero = '123'; UPDATE HISTORICO SET Depois = "
               "replace(Depois, '\"DataVencimento\":20261231', '\"DataVencimento\":20271231') WHERE Entidade = "
               "'AFERICAO'");
    EXPECT_TRUE(Ha(Achados(), "A corrente do histórico se parte"));
    m_Registro.RefazCorrente();
    const ResultadoDaConferencia sem = Confere();
    EXPECT_EQ(sem.Achados, Frases{});
    EXPECT_TRUE(sem.Frase.ends_with(SemCabeca));
    const Frases esperados = {"O histórico foi refeito: até a entrada " + m_Fim +
                              " não é o mesmo que em 21/11/2026 às 08:00:00 (UTC)."};
    EXPECT_EQ(conferidor.Confere({}, &cabeca).Achados, esperados);
    EXPECT_EQ(conferidor.ConfereRapido({}, &cabeca).Achados, esperados);
}

TEST_F(ServicosConferencia, TailCutOffWithItsRows_IsFoundOnlyByAHeadFromOutside)
{
    const CabecaAssinada cabeca = ExportacaoDeCabeca::Le(m_Registro.Caminho(), DataDe(21, 11, 2026, 8, 0, 0));
    SemGuardas("DELETE FROM HISTORICO WHERE Nro = " + m_Fim + "; DELETE FROM ESTACAO WHERE NroEstacao = " + m_Estacao);
    EXPECT_EQ(Achados(), Frases{});
    EXPECT_EQ(Conferidor(m_Registro.Caminho()).Confere({}, &cabeca).Achados,
              (Frases{"O histórico foi cortado: tinha " + m_Fim + " entradas em 21/11/2026 às 08:00:00 (UTC) e tem " +
                      std::to_string(m_Entradas - 1) + "."}));
}

TEST_F(ServicosConferencia, WorkAfterTheHead_KeepsItTrue)
{
    const CabecaAssinada cabeca = ExportacaoDeCabeca::Le(m_Registro.Caminho(), DataDe(20, 11, 2026, 12, 0, 0));
    const auto servicos = Servicos::Abre(m_Registro.Caminho(), [] { return Instante(DataDe(20, 11, 2026, 13, 0, 0)); });
    servicos->CadastraCliente({3, "Autoridade das Estradas de Rodagem", {}, "SC"});
    // others work on it meanwhile
    const ResultadoDaConferencia resultado = Conferidor(m_Registro.Caminho()).Confere({}, &cabeca);
    EXPECT_EQ(resultado.Achados, Frases{});
    EXPECT_TRUE(resultado.Frase.ends_with(
        "A cabeça de 20/11/2026 às 12:00:00 (UTC) confere: nada foi mudado nem cortado até a entrada " + m_Fim +
        " do histórico. "
        "As entradas seguintes só a própria corrente as prova: delas vale o que vale sem cabeça."))
        << resultado.Frase;
}

TEST_F(ServicosConferencia, HeadOfAnotherRegistryOrAltered_IsTold)
{
    const Instante quando = DataDe(21, 11, 2026, 8, 0, 0);
    const CabecaAssinada boa = ExportacaoDeCabeca::Le(m_Registro.Caminho(), quando);
    const auto achados = [&](const CabecaAssinada &cabeca) {
        return Conferidor(m_Registro.Caminho()).Confere({}, &cabeca).Achados;
    };
    for (int qual = 0; qual < 6; ++qual) {
        CabecaAssinada cabeca = boa;
        const auto troca = [](std::string &texto) { texto.back() = texto.back() == '0' ? '1' : '0'; };
        qual == 0   ? troca(cabeca.Registro)
        : qual == 1 ? troca(cabeca.Elo)
        : qual == 2 ? troca(cabeca.ChavePublica)
        : qual == 3 ? troca(cabeca.Assinatura)
        : qual == 4 ? static_cast<void>(--cabeca.Tamanho)
                    : static_cast<void>(++cabeca.Quando);
        const Frases lidos = achados(cabeca);
        ASSERT_EQ(lidos.size(), 1U) << qual;
        EXPECT_TRUE(lidos[0].ends_with("foi alterada depois de exportada: a sua assinatura não confere.")) << lidos[0];
    }
    const std::string outro = m_Registro.Caminho() + ".outro";
    Servicos::Cria(outro, TipoDeRegistro::Registro, [&] { return quando; });
    const CabecaAssinada alheia = ExportacaoDeCabeca::Le(outro, quando);
    EXPECT_EQ(achados(alheia), (Frases{"A cabeça de 21/11/2026 às 08:00:00 (UTC) é de outro registro: o dela é o " +
                                       alheia.Registro + "."}));
    // made anew under the old identifier
    SemGuardas("UPDATE REGISTRO SET ChavePublica = '" + alheia.ChavePublica + "'");
    EXPECT_TRUE(Ha(achados(boa), "A cabeça de 21/11/2026 às 08:00:00 (UTC) foi assinada com outra chave que a deste "
                                 "registro: um dos dois foi refeito."));
}

TEST_F(ServicosConferencia, FileThatIsNoRegistry_IsToldByName)
{
    const auto frase = [&](const std::string &conteudo) {
        const std::string caminho = m_Registro.Caminho() + ".estranho";
        std::ofstream(caminho, std::ios::binary | std::ios::trunc) << conteudo;
        const ResultadoDaConferencia resultado = Conferidor(caminho).Confere();
        EXPECT_EQ(resultado.CodigoDeSaida(), 2);
        return resultado.Frase;
    };
    EXPECT_EQ(Conferidor("/nao/ha").Confere().Frase, "O registro não foi encontrado em /nao/ha.");
    EXPECT_TRUE(frase("").ends_with(".estranho está vazio: não é um registro."));
    EXPECT_EQ(frase(std::string(5000, 'x')),
              "O arquivo não pôde ser lido, ou não é um registro (file is not a database).");
    LinhasSql(m_Registro.Caminho(), "VACUUM INTO '" + m_Registro.Caminho() + ".alheio'");
    LinhasSql(m_Registro.Caminho() + ".alheio", "DROP TABLE REGISTRO; DROP TABLE AFERICAO");
    EXPECT_EQ(Conferidor(m_Registro.Caminho() + ".alheio").Confere().Frase,
              "O arquivo é um banco de dados de outro programa: não é um registro de equipamentos.");
}

TEST_F(ServicosConferencia, FileCutOffAnywhere_IsNeverWhole)
{
    const std::string octetos = Le(m_Registro.Caminho());
    for (std::size_t tamanho = 1000; tamanho < octetos.size(); tamanho += 4096 * 3 + 100) {
        std::ofstream(m_Registro.Caminho(), std::ios::binary | std::ios::trunc) << octetos.substr(0, tamanho);
        const ResultadoDaConferencia resultado = Conferidor(m_Registro.Caminho(), Conferidor::Lugar::Parado).Confere();
        EXPECT_NE(resultado.Como, Desfecho::Inteira) << tamanho;
        EXPECT_NE(resultado.Frase, "");
    }
}

TEST_F(ServicosConferencia, GivenUp_SaysSoAndNothingMore)
{
    int vezes = 0;
    const ResultadoDaConferencia resultado =
        Conferidor(m_Registro.Caminho()).Confere([&](double, const std::string &) { return ++vezes < 3; });
    EXPECT_EQ(resultado.Como, Desfecho::Cancelada);
    EXPECT_EQ(resultado.CodigoDeSaida(), 2);
    EXPECT_EQ(resultado.Frase, "A conferência foi cancelada antes do fim: nada se pode dizer do registro.");
    EXPECT_EQ(vezes, 3);
}

TEST_F(ServicosConferencia, Progress_NeverGoesBackAndNamesWhatIsLookedAt)
{
    double ate = 0;
    std::vector<std::string> partes;
    Conferidor(m_Registro.Caminho()).Confere([&](double parte, const std::string &oQue) {
        EXPECT_GE(parte, ate);
        EXPECT_LE(parte, 1);
        ate = parte;
        if (partes.empty() || partes.back() != oQue) {
            partes.push_back(oQue);
        }
        return true;
    });
    EXPECT_GT(ate, 0.8);
    EXPECT_TRUE(Ha(partes, "A estrutura do arquivo"));
    EXPECT_TRUE(Ha(partes, "A corrente do histórico"));
    EXPECT_TRUE(Ha(partes, "A tabela AFERICAO"));
}

// A change that is under way, or not yet in the file itself, is neither half seen nor waited for.
TEST_F(ServicosConferencia, RegistryThatOthersWriteTo_IsSeenAsOfOneMoment)
{
    const auto servicos = Servicos::Abre(m_Registro.Caminho(), [] { return Instante(DataDe(20, 11, 2026, 13, 0, 0)); });
    bool escrito = false;
    const ResultadoDaConferencia resultado =
        Conferidor(m_Registro.Caminho()).Confere([&](double, const std::string &oQue) {
            if (!escrito && oQue == "A tabela CLIENTE") {
                escrito = true;
                servicos->CadastraCliente({3, "Autoridade das Estradas de Rodagem", {}, "SC"});
            }
            return true;
        });
    EXPECT_TRUE(escrito);
    EXPECT_EQ(resultado.Achados, Frases{});
    EXPECT_EQ(resultado.Fim.Tamanho, m_Entradas);
    EXPECT_EQ(Confere().Fim.Tamanho, m_Entradas + 1);
}

TEST_F(ServicosConferencia, Check_LeavesTheFileAsItWas)
{
    const std::string antes = Le(m_Registro.Caminho());
    Confere();
    EXPECT_EQ(Le(m_Registro.Caminho()), antes);
    const Frases achados = Conferidor::Achados(m_Registro.Caminho());
    EXPECT_EQ(achados, Frases{});
    EXPECT_EQ(Le(m_Registro.Caminho()), antes);
    EXPECT_EQ(Conferidor::Achados("/nao/ha"), (Frases{"O registro não foi encontrado em /nao/ha."}));
}

// Where nothing can be written there is no log beside the file, and none can be made.
TEST_F(ServicosConferencia, RegistryInADirectoryThatTakesNothing_IsLookedThrough)
{
    const std::filesystem::path pasta = std::filesystem::path(m_Registro.Caminho()).parent_path();
    std::filesystem::permissions(m_Registro.Caminho(), std::filesystem::perms(0444));
    std::filesystem::permissions(pasta, std::filesystem::perms(0555));
    ResultadoDaConferencia resultado;
    {
        const SemPrivilegio sem;
        resultado = Confere();
    }
    std::filesystem::permissions(pasta, std::filesystem::perms(0755));
    EXPECT_EQ(resultado.Frase, Inteiro() + SemCabeca);
    EXPECT_EQ(resultado.Como, Desfecho::Inteira);
    EXPECT_FALSE(std::filesystem::exists(m_Registro.Caminho() + "-wal"));
}

TEST_F(ServicosConferencia, RegistryOfVersion1Migrated_IsWholeButForWhatWasChangedBefore)
{
    const std::string caminho = m_Registro.Caminho() + ".versao1";
    QFile(QString::fromStdString(caminho)).open(QIODevice::WriteOnly);
    LinhasSql(caminho, Le("tests/services/dados/registro.versao1.sql"));
    const ResultadoDaConferencia antigo = Conferidor(caminho).Confere();
    EXPECT_EQ(antigo.Achados, Frases{});
    EXPECT_EQ(antigo.Como, Desfecho::Inteira);
    EXPECT_EQ(antigo.Frase,
              "Nada foi encontrado no arquivo, nas referências nem nos documentos. O registro é da versão "
              "1, cujo histórico não prova nada: abra-o com este programa, que o atualiza, e confira de "
              "novo.");
    // No head is of a file without an identity: it may have been put in the place of the one that it is of.
    const CabecaAssinada cabeca = ExportacaoDeCabeca::Le(m_Registro.Caminho(), DataDe(22, 11, 2026));
    const ResultadoDaConferencia desde = Conferidor(caminho).Confere({}, &cabeca);
    EXPECT_EQ(desde.Como, Desfecho::ComAchados);
    EXPECT_EQ(desde.Achados, (Frases{"A cabeça do histórico não é deste arquivo: ela é de um registro que tem "
                                     "identidade, e este não tem."}));
    LinhasSql(caminho, "UPDATE AFERICAO SET Numero = 'outro' WHERE NroIntAfericao = 1");
    const Instante agora(DataDe(22, 11, 2026, 9, 0, 0), -180);
    Servicos::Abre(caminho, [&] { return agora; });
    // streets to which the sensors refer and that are not there
    Banco banco(std::make_unique<DialetoSQLite>(), caminho, agora);
    banco.Escreve([&] {
        for (const std::string &codigo :
             LinhasSql(caminho, "SELECT DISTINCT CodLograd FROM SENSOR WHERE CodLograd <> 0 AND CodLograd NOT IN "
                                "(SELECT CodLograd FROM LOGRADOURO)")) {
            PoeLinha(banco, agora, "LOGRADOURO",
                     {{"CodLograd", qlonglong(std::stoll(codigo))},
                      {"CodMunic", 4314902},
                      {"Nome", "Rua A"},
                      {"Bairro", ""},
                      {"Cep", ""},
                      {"NomeBusca", "rua a"},
                      {"Ativo", 1},
                      {"Versao", 1}});
        }
    });
    EXPECT_EQ(Conferidor(caminho).Confere().Achados,
              (Frases{"A aferição outro (sensor 1 do equipamento DTC100) já era diferente do seu histórico quando o "
                      "registro veio para a versão 2; a última mudança registrada antes é por Ana Bittencourt em "
                      "22/11/2026 às 08:55:25."}));
}

TEST_F(ServicosConferencia, Command_AnswersWithACodeAndAReport)
{
    const Instante agora = DataDe(22, 11, 2026, 9, 5, 0);
    const auto inteira = ComandoDeConferencia::Confere(m_Registro.Caminho(), "", agora);
    EXPECT_EQ(inteira.Codigo, 0);
    EXPECT_EQ(inteira.Texto, "Conferência do registro de equipamentos\n\nArquivo: " + m_Registro.Caminho() +
                                 "\nQuando: 22/11/2026 às 09:05:00\nHistórico: " + m_Fim +
                                 " entradas, a última com a soma " +
                                 m_Registro.Sql("SELECT Elo FROM HISTORICO WHERE Nro = " + m_Fim) + "\n\n" + Inteiro() +
                                 SemCabeca + "\n");
    const std::string cabeca = m_Registro.Caminho() + ".cabeca";
    ExportacaoDeCabeca::Grava(ExportacaoDeCabeca::Le(m_Registro.Caminho(), agora), cabeca);
    EXPECT_EQ(ComandoDeConferencia::Confere(m_Registro.Caminho(), cabeca, agora).Codigo, 0);
    SemGuardas("UPDATE AFERICAO SET DataVencimento = 20271231 WHERE Numero = '123'");
    const auto achado = ComandoDeConferencia::Confere(m_Registro.Caminho(), cabeca, agora);
    EXPECT_EQ(achado.Codigo, 1);
    EXPECT_TRUE(achado.Texto.ends_with("\nA conferência do registro encontrou 1 problema.\n\nProblemas:\n1. A aferição "
                                       "123 (sensor 2 do equipamento R-001): data de vencimento era 31/12/2026 e é "
                                       "31/12/2027" +
                                       PorAna + "\n"))
        << achado.Texto;
    const auto semCabeca = ComandoDeConferencia::Confere(m_Registro.Caminho(), "/nao/ha", agora);
    EXPECT_EQ(semCabeca.Codigo, 2);
    EXPECT_TRUE(semCabeca.Texto.starts_with("A cabeça do histórico não pôde ser lida de /nao/ha (")) << semCabeca.Texto;
    EXPECT_EQ(ComandoDeConferencia::Confere("/nao/ha", "", agora).Codigo, 2);
}

// Where the rows of a file stand, byte by byte, read from its pages as the format lays them down.
class Celulas {
  public:
    explicit Celulas(const std::string &octetos) : m_Octetos(octetos), m_Pagina(Numero(16, 2)) {}

    // The bytes of the rows in a leaf of a table: sizes, keys and contents, those on further pages too.
    std::vector<std::size_t> DaFolha(std::size_t pagina) const
    {
        std::vector<std::size_t> lugares;
        const std::size_t inicio = (pagina - 1) * m_Pagina;
        const std::size_t cabecalho = inicio + (pagina == 1 ? 100 : 0);
        for (std::size_t n = 0; n < Numero(cabecalho + 3, 2); ++n) {
            std::size_t lugar = inicio + Numero(cabecalho + 8 + 2 * n, 2);
            const std::size_t tamanho = Varint(lugar, lugares);
            Varint(lugar, lugares);
            Conteudo(lugar, tamanho, lugares);
        }
        return lugares;
    }

  private:
    std::size_t Numero(std::size_t lugar, int quantos) const
    {
        std::size_t numero = 0;
        for (int n = 0; n < quantos; ++n) {
            numero = numero << 8 | static_cast<unsigned char>(m_Octetos.at(lugar + static_cast<std::size_t>(n)));
        }
        return numero;
    }
    std::size_t Varint(std::size_t &lugar, std::vector<std::size_t> &lugares) const
    {
        std::size_t valor = 0;
        for (;;) {
            const std::size_t octeto = Numero(lugar, 1);
            lugares.push_back(lugar++);
            valor = valor << 7 | (octeto & 0x7f);
            if (octeto < 0x80) {
                return valor;
            }
        }
    }
    void Conteudo(std::size_t lugar, std::size_t tamanho, std::vector<std::size_t> &lugares) const
    {
        std::size_t aqui = tamanho;
        if (tamanho > m_Pagina - 35) {
            const std::size_t menor = (m_Pagina - 12) * 32 / 255 - 23;
            const std::size_t resto = menor + (tamanho - menor) % (m_Pagina - 4);
            aqui = resto <= m_Pagina - 35 ? resto : menor;
        }
        for (std::size_t n = 0; n < aqui; ++n) {
            lugares.push_back(lugar + n);
        }
        std::size_t falta = tamanho - aqui;
        std::size_t seguinte = falta > 0 ? Numero(lugar + aqui, 4) : 0;
        while (falta > 0) {
            const std::size_t inicio = (seguinte - 1) * m_Pagina;
            const std::size_t nesta = std::min(falta, m_Pagina - 4);
            for (std::size_t n = 0; n < nesta; ++n) {
                lugares.push_back(inicio + 4 + n);
            }
            falta -= nesta;
            seguinte = Numero(inicio, 4);
        }
    }

    const std::string &m_Octetos;
    std::size_t m_Pagina;
};

// What found it, by how its sentence begins.
std::string QuemAchou(const ResultadoDaConferencia &resultado)
{
    static const std::vector<std::pair<std::string, std::string>> partes = {{"O banco de dados acusa", "integrity"},
                                                                            {"A corrente do histórico", "chain"},
                                                                            {"Falta", "chain"},
                                                                            {"A tabela", "reading"},
                                                                            {"A linha", "reading"},
                                                                            {"O arquivo está danificado", "reading"},
                                                                            {"Não foi possível", "reading"},
                                                                            {"não está gravado", "key's place"},
                                                                            {"está no histórico", "history"},
                                                                            {"está na tabela", "history"},
                                                                            {"a última mudança registrada", "history"},
                                                                            {"O registro diz", "versions"},
                                                                            {"ENTRADA_RECUSADA", "sum"},
                                                                            {"não tem mais o conteúdo", "document"},
                                                                            {"guarda", "schema"},
                                                                            {"índice", "schema"},
                                                                            {"não existe", "references"}};
    if (resultado.Como == Desfecho::NaoConferida) {
        return "not a registry";
    }
    for (const auto &[marca, parte] : partes) {
        if (resultado.Achados.front().find(marca) != std::string::npos) {
            return parte;
        }
    }
    return "value";
}

void PoeOcteto(const std::string &caminho, std::size_t lugar, char octeto)
{
    std::fstream arquivo(caminho, std::ios::in | std::ios::out | std::ios::binary);
    arquivo.seekp(static_cast<std::streamoff>(lugar));
    arquivo.put(octeto);
}

void PoeNumero(std::string &octetos, std::size_t lugar, std::size_t numero, int quantos)
{
    for (int n = quantos - 1; n >= 0; --n, numero >>= 8) {
        octetos[lugar + static_cast<std::size_t>(n)] = static_cast<char>(numero & 0xff);
    }
}

// A tree of ten levels of which each names the next one three hundred times: whoever goes through it never ends.
TEST_F(ServicosConferencia, PagesThatNameEachOther_AreReadNoMoreThanTheFileCanHold)
{
    constexpr std::size_t pagina = 4096;
    constexpr std::size_t ramos = 300;
    for (const char *tabela : {"LAYOUT", "HISTORICO", "HISTORICO_Entidade"}) {
        const RegistroPovoado outro;
        const std::size_t raiz =
            std::stoul(outro.Sql("SELECT rootpage FROM sqlite_master WHERE name = '" + std::string(tabela) + "'"));
        std::string octetos = Le(outro.Caminho());
        const std::string folha = octetos.substr((raiz - 1) * pagina, pagina);
        const bool indice = folha[0] == 0x0a || folha[0] == 0x02;
        const auto ramo = [&](std::size_t seguinte) {
            std::string nova(pagina, '\0');
            nova[0] = indice ? 0x02 : 0x05;
            PoeNumero(nova, 3, ramos, 2);
            PoeNumero(nova, 5, pagina - ramos * 8, 2);
            PoeNumero(nova, 8, seguinte, 4);
            for (std::size_t n = 0; n < ramos; ++n) {
                const std::size_t celula = pagina - (n + 1) * 8;
                PoeNumero(nova, 12 + 2 * n, celula, 2);
                PoeNumero(nova, celula, seguinte, 4);
                PoeNumero(nova, celula + 4, indice ? 0x03020000 : 0x01000000,
                          4); // a record of one absent value, or a key
            }
            return nova;
        };
        std::size_t seguinte = octetos.size() / pagina + 1;
        octetos.replace((raiz - 1) * pagina, pagina, ramo(seguinte));
        for (int nivel = 0; nivel < 10; ++nivel) {
            octetos += ramo(++seguinte);
        }
        octetos += folha;
        PoeNumero(octetos, 28, octetos.size() / pagina, 4);
        std::ofstream(outro.Caminho(), std::ios::binary | std::ios::trunc) << octetos;
        const Conferidor conferidor(outro.Caminho(), Conferidor::Lugar::Parado);
        EXPECT_EQ(conferidor.Confere().Como, Desfecho::ComAchados) << tabela;
        EXPECT_EQ(conferidor.ConfereRapido().Como, Desfecho::ComAchados) << tabela;
    }
}

// One bit in the rows of every table. VIRADAS: how many a table instead of 40; 0 for all there are.
TEST_F(ServicosConferencia, OneBitInAnyRow_IsFound)
{
    const char *pedidas = std::getenv("VIRADAS");
    const std::size_t porTabela = pedidas == nullptr ? 40 : std::stoul(pedidas);
    const std::string octetos = Le(m_Registro.Caminho());
    const Celulas celulas(octetos);
    std::map<std::string, std::vector<std::size_t>> lugares;
    for (const std::string &folha :
         LinhasSql(m_Registro.Caminho(), "SELECT name || '/' || pageno FROM dbstat WHERE pagetype = 'leaf' AND (name = "
                                         "'sqlite_schema' OR name IN (SELECT name FROM sqlite_master WHERE type = "
                                         "'table'))")) {
        const std::size_t barra = folha.find('/');
        std::vector<std::size_t> &daTabela = lugares[folha.substr(0, barra)];
        const auto desta = celulas.DaFolha(std::stoul(folha.substr(barra + 1)));
        daTabela.insert(daTabela.end(), desta.begin(), desta.end());
    }
    ASSERT_EQ(lugares.size(), Esquema::Tabelas().size() + 1);
    std::mt19937 sorteio(20261122);
    std::map<std::string, int> achadas;
    int viradas = 0;
    for (const auto &[tabela, daTabela] : lugares) {
        const std::size_t quantas = porTabela == 0 ? daTabela.size() * 8 : porTabela;
        for (std::size_t n = 0; n < quantas; ++n) {
            const std::size_t qual = porTabela == 0 ? n : sorteio() % (daTabela.size() * 8);
            const std::size_t lugar = daTabela[qual / 8];
            if (tabela == "ESQUEMA" && octetos[lugar] == 2 && qual % 8 == 1 && octetos[lugar + 1] == 0) {
                continue; // a row of a key alone says nothing else by its record: without one it is the same row
            }
            PoeOcteto(m_Registro.Caminho(), lugar, static_cast<char>(octetos[lugar] ^ (1 << qual % 8)));
            const auto resultado = Conferidor(m_Registro.Caminho(), Conferidor::Lugar::Parado).Confere();
            ++viradas;
            if (resultado.Como == Desfecho::Inteira) {
                ADD_FAILURE() << tabela << ", byte " << lugar << ", bit " << qual % 8;
            } else {
                ++achadas[QuemAchou(resultado)];
            }
            PoeOcteto(m_Registro.Caminho(), lugar, octetos[lugar]);
        }
    }
    std::cout << viradas << " bits:";
    for (const auto &[parte, quantas] : achadas) {
        std::cout << " " << parte << " " << quantas << ";";
    }
    std::cout << std::endl;
    EXPECT_GE(viradas, 500);
    EXPECT_EQ(Conferidor(m_Registro.Caminho(), Conferidor::Lugar::Parado).Confere().Como, Desfecho::Inteira);
}

} // namespace
