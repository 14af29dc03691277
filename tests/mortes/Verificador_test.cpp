#include "tests/mortes/Cenario.h"
#include "tests/mortes/Verificador.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace mortes;

namespace {

// A registry in which a few have saved, and copies of it with something planted past everything that guards it.
class Verificador : public testing::Test {
  protected:
    static void SetUpTestSuite()
    {
        s_Cenario = std::make_unique<Cenario>(Cenario::Como{.Clientes = 3, .ComReserva = false, .Duravel = false});
        s_Cenario->Comeca();
        s_Cenario->EsperaDeCada(7);
        s_Cenario->Para();
        for (std::size_t qual = 0; qual < 2; ++qual) {
            s_Cenario->Servidor(qual).Mata();
        }
    }
    static void TearDownTestSuite() { s_Cenario.reset(); }

    static Achados Com(const std::string &plantado)
    {
        motor::Linhas(s_Cenario->Primario().Texto("postgres"), "DROP DATABASE IF EXISTS plantado");
        motor::Linhas(s_Cenario->Primario().Texto("postgres"),
                      "CREATE DATABASE plantado TEMPLATE " + std::string(Cenario::Banco));
        Direta direta(Cenario::Direto(s_Cenario->Primario(), "plantado"));
        direta.Pergunta("DO $$ DECLARE t regclass; BEGIN FOR t IN SELECT oid FROM pg_class WHERE relkind = 'r' AND "
                        "relnamespace = 'public'::regnamespace LOOP EXECUTE format('ALTER TABLE %s DISABLE TRIGGER "
                        "ALL', t); END LOOP; END $$");
        if (!plantado.empty()) {
            direta.Pergunta(plantado);
        }
        return Verifica(direta, s_Cenario->Diarios());
    }

    static std::unique_ptr<Cenario> s_Cenario;
};

std::unique_ptr<Cenario> Verificador::s_Cenario;

// The second equipment of a client that does not give up, which was included and changed.
const std::string Segundo = "(SELECT NroIntEquip FROM EQUIPAMENTO WHERE Codigo = 'M00100002')";
const std::string SeuDocumento =
    "(SELECT MIN(a.NroIntImgCertif) FROM AFERICAO a JOIN SENSOR s ON s.NroIntSensor = a.NroIntSensor WHERE "
    "s.NroIntEquip = " +
    Segundo + ")";
const std::string SeusSensores = "(SELECT NroIntSensor FROM SENSOR WHERE NroIntEquip = " + Segundo + ")";

TEST_F(Verificador, NothingPlanted_FindsNothing)
{
    const Achados achados = Com("");
    EXPECT_TRUE(achados.Nenhum()) << achados.Texto();
}

TEST_F(Verificador, EquipmentTakenAway_IsLost)
{
    const Achados achados = Com("DELETE FROM EQUIPAMENTO WHERE NroIntEquip = " + Segundo);
    EXPECT_EQ(achados.Perdidas.size(), 2U) << achados.Texto(); // as it was included, and as it was changed
}

TEST_F(Verificador, DocumentTakenAway_IsLost)
{
    const Achados achados = Com("DELETE FROM DOCUMENTO WHERE NroDocumento = " + SeuDocumento);
    EXPECT_EQ(achados.Perdidas.size(), 1U) << achados.Texto();
}

TEST_F(Verificador, ChangeTakenBack_IsLost)
{
    // Everything as it was before, the end of the history and the number of the operation too.
    const Achados achados =
        Com("DELETE FROM AFERICAO WHERE Numero = 'c00100002'; UPDATE EQUIPAMENTO SET Versao = 1, Descricao = 'novo "
            "00100002' WHERE NroIntEquip = " +
            Segundo + "; DELETE FROM HISTORICO WHERE Versao = 2 AND Raiz = 'EQUIPAMENTO' AND NroRaiz = " + Segundo);
    EXPECT_EQ(achados.Perdidas.size(), 1U) << achados.Texto();
    EXPECT_TRUE(achados.Metades.empty()) << achados.Texto();
    EXPECT_FALSE(achados.Outros.empty()); // what came after does not follow any more
}

TEST_F(Verificador, DocumentTwice_IsDouble)
{
    const Achados achados = Com(
        "INSERT INTO DOCUMENTO (NroDocumento, ClienteInc, Tamanho, Sha256, Quando, Fuso, Operador, Conteudo) SELECT "
        "900000, ClienteInc, Tamanho, Sha256, Quando, Fuso, Operador, Conteudo FROM DOCUMENTO WHERE NroDocumento "
        "= " +
        SeuDocumento);
    EXPECT_EQ(achados.Duplas.size(), 1U) << achados.Texto();
}

TEST_F(Verificador, EquipmentTwice_IsDouble)
{
    const Achados achados = Com("UPDATE EQUIPAMENTO SET Codigo = 'M00100001' WHERE NroIntEquip = " + Segundo);
    EXPECT_EQ(achados.Duplas.size(), 1U) << achados.Texto();
}

TEST_F(Verificador, ChangeTwice_IsDouble)
{
    const Achados achados = Com("UPDATE EQUIPAMENTO SET Versao = 3 WHERE NroIntEquip = " + Segundo);
    EXPECT_EQ(achados.Duplas.size(), 1U) << achados.Texto();
}

TEST_F(Verificador, OneRowMissing_IsHalf)
{
    for (const char *plantado :
         {"DELETE FROM AFERICAO WHERE Numero = 'b00100002'", "DELETE FROM AFERICAO WHERE Numero = 'c00100002'",
          "UPDATE AFERICAO SET Ativo = 2 WHERE Numero = 'a00100002'",
          "UPDATE AFERICAO SET NroIntImgCertif = 900000 WHERE Numero = 'a00100002'",
          "UPDATE EQUIPAMENTO SET Descricao = 'novo 00100002' WHERE Codigo = 'M00100002'",
          "UPDATE EQUIPAMENTO SET Versao = 1 WHERE Codigo = 'M00100002'"}) {
        EXPECT_EQ(Com(plantado).Metades.size(), 1U) << plantado;
    }
    EXPECT_EQ(Com("DELETE FROM SENSOR WHERE NroSensor = 2 AND NroIntEquip = " + Segundo).Metades.size(), 1U);
    EXPECT_EQ(Com("UPDATE DOCUMENTO SET Conteudo = substr(Conteudo, 1, 100), Tamanho = 100 WHERE NroDocumento = " +
                  SeuDocumento)
                  .Metades.size(),
              1U);
    EXPECT_EQ(Com("DELETE FROM HISTORICO WHERE Raiz = 'DOCUMENTO' AND NroRaiz = " + SeuDocumento).Metades.size(), 1U);
}

TEST_F(Verificador, HistoryNotAsItWasWritten_IsFound)
{
    for (const char *plantado :
         {"UPDATE HISTORICO SET Motivo = '' WHERE Nro = 40",
          "UPDATE HISTORICO SET Quando = 20200101000000 WHERE Nro = 40", "DELETE FROM HISTORICO WHERE Nro = 1",
          "UPDATE HISTORICO SET Nro = 900000 WHERE Nro = 40"}) {
        EXPECT_FALSE(Com(plantado).Outros.empty()) << plantado;
    }
}

TEST_F(Verificador, WhatNobodyAskedFor_IsFound)
{
    for (const char *plantado :
         {"UPDATE EQUIPAMENTO SET Codigo = 'M99900001' WHERE Codigo = 'M00100002'",
          "INSERT INTO OPERACAO SELECT 900000, 'x' || substr(Numero, 2), Operador, Soma, Quando, Fuso, Resposta, "
          "Elo FROM OPERACAO LIMIT 1",
          "DELETE FROM OPERACAO WHERE NroOperacao = (SELECT MIN(NroOperacao) FROM OPERACAO)"}) {
        EXPECT_FALSE(Com(plantado).Outros.empty()) << plantado;
    }
}

} // namespace
