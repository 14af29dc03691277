#include "shell/Generico.h"

#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"

namespace {

class GenericoTeste : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
        host->MDB->TabelaDe("Municipio").Linhas.clear();
        host->MDB->PoeMunicipio(8801, "PORTO ALEGRE", "RS", 4314902);
        host->MDB->PoeMunicipio(8105, "FLORIANOPOLIS", "SC", 4205407);
    }
};

TEST_F(GenericoTeste, gFunBuscaDescrMunic_KnownCode_GivesTheNameAndClosesTheCursor)
{
    EXPECT_EQ(gFunBuscaDescrMunic(8801), "PORTO ALEGRE");
    EXPECT_TRUE(
        RegistroIgual(host->RegistroDe({"MDB", "Cursor"}),
                      {"MDB.OpenRecordset(\"SELECT * FROM Municipio WHERE COD_MUNIC = 8801\", 4, ausente, ausente)*",
                       "Cursor.Close()"}));
}

TEST_F(GenericoTeste, gFunBuscaDescrMunic_OtherState_IsFoundToo)
{
    EXPECT_EQ(gFunBuscaDescrMunic(8105), "FLORIANOPOLIS");
}

TEST_F(GenericoTeste, gFunBuscaDescrMunic_Zero_IsEmptyWithoutTouchingTheDatabase)
{
    EXPECT_EQ(gFunBuscaDescrMunic(0), "");
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(GenericoTeste, gFunBuscaDescrMunic_CodeWithoutRow_IsEmptyAndClosesTheCursor)
{
    EXPECT_EQ(gFunBuscaDescrMunic(1), "");
    EXPECT_EQ(gFunBuscaDescrMunic(-8801), "");
    EXPECT_EQ(host->Conta("Cursor.Close()"), 2);
}

TEST_F(GenericoTeste, gFunBuscaDescrMunic_Fails_GoesOnWithItsTail)
{
    for (const char *passo : {"TrataBD.AbreZTBanco", "MDB.OpenRecordset", "Cursor.Close"}) {
        SCOPED_TRACE(passo);
        host->FalhaEm(passo, 1, 3075, "Falha do banco");
        EXPECT_TRUE(Lanca(3075, std::string(passo) + " < Generico.gFunBuscaDescrMunic", "Falha do banco",
                          [] { gFunBuscaDescrMunic(8801); }));
    }
}

TEST_F(GenericoTeste, gFunBuscaDescrMunic_NameThatIsNull_RaisesNinetyFour)
{
    auto &tabela = host->MDB->TabelaDe("Municipio");
    for (Valor &celula : tabela.Linhas[0]) {
        if (celula == Valor("PORTO ALEGRE")) {
            celula = Valor::Nulo();
        }
    }
    EXPECT_TRUE(Lanca(94, "ZTAVOREQUIP < Generico.gFunBuscaDescrMunic", [] { gFunBuscaDescrMunic(8801); }));
}

} // namespace
