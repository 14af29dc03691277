#include "search/CVORPesqEquip.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

struct CVORPesqEquipTeste : testing::Test {
    CVORPesqEquip Pesquisa;
    std::int32_t lNroEquip = 12;
    std::string sCodEquip = "R-1";
    std::string sModelo = "RF-2000";
    std::int16_t iVelPerm = 60;
    std::string sNroInmetro = "123";
    std::string sMarcaInmetro = "ABC";
    Data dDtInmetro = DataDe(1, 2, 2020);

    // The method refuses by its name and leaves every argument alone.
    void ConfereRecusa(const std::string &metodo, const std::function<void()> &chamada)
    {
        try {
            chamada();
            ADD_FAILURE() << metodo << " raised nothing";
        } catch (const Falha &falha) {
            EXPECT_EQ(falha.Numero, -1);
            EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP.CVORPesqEquip");
            EXPECT_EQ(falha.Descricao, "AVISO: Método " + metodo + " depreciado");
        }
        EXPECT_EQ(lNroEquip, 12);
        EXPECT_EQ(sCodEquip, "R-1");
        EXPECT_EQ(sModelo, "RF-2000");
        EXPECT_EQ(iVelPerm, 60);
        EXPECT_EQ(sNroInmetro, "123");
        EXPECT_EQ(sMarcaInmetro, "ABC");
        EXPECT_EQ(dDtInmetro, DataDe(1, 2, 2020));
    }
};

TEST_F(CVORPesqEquipTeste, CarregaPesqEquip_Called_Refuses)
{
    ConfereRecusa("CarregaPesqEquip", [&] { Pesquisa.CarregaPesqEquip(lNroEquip, sCodEquip, sModelo); });
}

TEST_F(CVORPesqEquipTeste, CarregaPesqEquip2_WithAndWithoutOptionalArguments_Refuses)
{
    ConfereRecusa("CarregaPesqEquip2", [&] { Pesquisa.CarregaPesqEquip2(lNroEquip, sCodEquip, sModelo); });
    ConfereRecusa("CarregaPesqEquip2", [&] { Pesquisa.CarregaPesqEquip2(lNroEquip, sCodEquip, sModelo, &iVelPerm); });
    ConfereRecusa("CarregaPesqEquip2",
                  [&] { Pesquisa.CarregaPesqEquip2(lNroEquip, sCodEquip, sModelo, &iVelPerm, "R"); });
}

TEST_F(CVORPesqEquipTeste, CarregaPesqEquip3_WithAndWithoutOptionalArguments_Refuses)
{
    ConfereRecusa("CarregaPesqEquip3", [&] { Pesquisa.CarregaPesqEquip3(lNroEquip, sCodEquip, sModelo); });
    ConfereRecusa("CarregaPesqEquip3",
                  [&] { Pesquisa.CarregaPesqEquip3(lNroEquip, sCodEquip, sModelo, &iVelPerm, "R", true); });
}

TEST_F(CVORPesqEquipTeste, BuscaEquipto_WithAndWithoutOptionalArguments_Refuses)
{
    ConfereRecusa("BuscaEquipto", [&] { Pesquisa.BuscaEquipto(lNroEquip, sCodEquip, sModelo); });
    ConfereRecusa("BuscaEquipto", [&] { Pesquisa.BuscaEquipto(lNroEquip, sCodEquip, sModelo, &iVelPerm, "R", false); });
}

TEST_F(CVORPesqEquipTeste, ConsultaAfericaoVigente_Called_Refuses)
{
    ConfereRecusa("ConsultaAfericaoVigente", [&] {
        Pesquisa.ConsultaAfericaoVigente(12, sNroInmetro, sMarcaInmetro, dDtInmetro, DataDe(3, 4, 2020));
    });
}

TEST_F(CVORPesqEquipTeste, NomeTipo_IsTheClassThatOtherModulesKnow)
{
    EXPECT_EQ(Pesquisa.NomeTipo(), "CVORPesqEquip");
}

} // namespace
