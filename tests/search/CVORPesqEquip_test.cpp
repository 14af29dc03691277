#include "search/CVORPesqEquip.h"

#include "tests/support/FalhaLancada.h"

#include <functional>
#include <string>
#include <utility>

namespace {

TEST(CVORPesqEquipTeste, EachMethod_WithAndWithoutOptionalArguments_RefusesAndLeavesEveryArgumentAlone)
{
    CVORPesqEquip pesquisa;
    std::int32_t nro = 12;
    std::string codigo = "R-1";
    std::string modelo = "RF-2000";
    std::int16_t veloc = 60;
    std::string inmetro = "123";
    std::string marca = "ABC";
    Data data = DataDe(1, 2, 2020);
    const std::pair<std::string, std::function<void()>> chamadas[] = {
        {"CarregaPesqEquip", [&] { pesquisa.CarregaPesqEquip(nro, codigo, modelo); }},
        {"CarregaPesqEquip2", [&] { pesquisa.CarregaPesqEquip2(nro, codigo, modelo); }},
        {"CarregaPesqEquip2", [&] { pesquisa.CarregaPesqEquip2(nro, codigo, modelo, &veloc); }},
        {"CarregaPesqEquip2", [&] { pesquisa.CarregaPesqEquip2(nro, codigo, modelo, &veloc, "R"); }},
        {"CarregaPesqEquip3", [&] { pesquisa.CarregaPesqEquip3(nro, codigo, modelo); }},
        {"CarregaPesqEquip3", [&] { pesquisa.CarregaPesqEquip3(nro, codigo, modelo, &veloc, "R", true); }},
        {"BuscaEquipto", [&] { pesquisa.BuscaEquipto(nro, codigo, modelo); }},
        {"BuscaEquipto", [&] { pesquisa.BuscaEquipto(nro, codigo, modelo, &veloc, "R", false); }},
        {"ConsultaAfericaoVigente",
         [&] { pesquisa.ConsultaAfericaoVigente(12, inmetro, marca, data, DataDe(3, 4, 2020)); }},
    };
    for (const auto &[metodo, chama] : chamadas) {
        EXPECT_TRUE(Lanca(-1, "ZTAVOREQUIP.CVORPesqEquip", "AVISO: Método " + metodo + " depreciado", chama));
    }
    EXPECT_EQ(nro, 12);
    EXPECT_EQ(codigo + "|" + modelo + "|" + inmetro + "|" + marca, "R-1|RF-2000|123|ABC");
    EXPECT_EQ(veloc, 60);
    EXPECT_EQ(data, DataDe(1, 2, 2020));
}

TEST(CVORPesqEquipTeste, NomeTipo_IsTheClassThatOtherModulesKnow)
{
    EXPECT_EQ(CVORPesqEquip().NomeTipo(), "CVORPesqEquip");
}

} // namespace
