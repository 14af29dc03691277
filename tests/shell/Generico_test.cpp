#include "shell/Generico.h"

#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"

#include <algorithm>

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

TEST_F(GenericoTeste, gFunBuscaDescrMunic_CodeWithoutRow_IsEmptyAndClosesTheCursor)
{
    EXPECT_EQ(gFunBuscaDescrMunic(1), "");
    EXPECT_EQ(gFunBuscaDescrMunic(-8801), "");
    EXPECT_EQ(host->Conta("Cursor.Close()"), 2);
}

TEST_F(GenericoTeste, gFunBuscaDescrMunic_Fails_GoesOnWithItsTail)
{
    const std::string cauda = " < Generico.gFunBuscaDescrMunic";
    FalhaEmCada({"TrataBD.AbreZTBanco", "MDB.OpenRecordset", "Cursor.Close"}, cauda, [] { gFunBuscaDescrMunic(8801); });
    auto &celulas = host->MDB->TabelaDe("Municipio").Linhas[0];
    std::replace(celulas.begin(), celulas.end(), Valor("PORTO ALEGRE"), Valor(Valor::Nulo()));
    EXPECT_TRUE(Lanca(94, "ZTAVOREQUIP" + cauda, [] { gFunBuscaDescrMunic(8801); }));
}

} // namespace
