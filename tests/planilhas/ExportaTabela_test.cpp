#include "planilhas/ExportaTabela.h"

#include "tests/planilhas/Arquivos.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace planilhas;

namespace {

using Lidas = std::vector<std::string>;
using Textos = std::vector<std::vector<std::string>>;

class ExportaTabelaTeste : public testing::Test {
  protected:
    // The rows behind the header of what was exported.
    Lidas Exporta(const Textos &linhas, const std::string &arquivo = "lista.xlsx")
    {
        EXPECT_TRUE(ExportaTabela("Lista", {"A", "B"}, linhas).Grava(m_Pasta / arquivo, [](double) { return true; }));
        Lidas lidas = Linhas(m_Pasta / arquivo);
        EXPECT_EQ(lidas.at(0), "1|T:A|T:B");
        lidas.erase(lidas.begin());
        return lidas;
    }

    Pasta m_Pasta;
};

} // namespace

TEST_F(ExportaTabelaTeste, Grava_ColumnsOfOneKind_HaveItsType)
{
    EXPECT_EQ(Exporta({{"31/01/2024", "31/01/2024 10:30"}, {"", "01/02/2024 00:00"}, {"01/02/1999", ""}}),
              (Lidas{"2|D:31/01/2024|M:31/01/2024 10:30", "3||M:01/02/2024 00:00", "4|D:01/02/1999"}));
    EXPECT_EQ(Exporta({{"08:00", "60"}, {"23:59:59", "-1,5"}, {"00:00", "0"}}),
              (Lidas{"2|H:08:00|N:60", "3|H:23:59:59|N:-1.5", "4|H:00:00|N:0"}));
}

TEST_F(ExportaTabelaTeste, Grava_OneTextAmongThem_MakesTheColumnTexts)
{
    EXPECT_EQ(Exporta({{"7", "31/01/2024"}, {"007", "30/02/2024"}}),
              (Lidas{"2|T:7|T:31/01/2024", "3|T:007|T:30/02/2024"}));
    for (const char *texto : {"1.234", "1E5", "+1", "1234567890123456", "1,", " 1", "1/2/2024", "31/01/24", "24:00:00 ",
                              "8:00", "x", "31/01/2024 1:00", "=1+1", "-"}) {
        EXPECT_EQ(Exporta({{texto, ""}}), Lidas{"2|T:" + std::string(texto)}) << texto;
    }
}

TEST_F(ExportaTabelaTeste, Grava_EachEnding_IsItsFormat)
{
    EXPECT_EQ(Exporta({{"1,5", "=x"}}, "lista.ods"), Lidas{"2|N:1.5|T:=x"});
    EXPECT_EQ(Reconhece(m_Pasta / "lista.ods").Formato, Formato::Ods);
    EXPECT_EQ(Exporta({{"1,5", "=x"}}, "lista.XLSX"), Lidas{"2|N:1.5|T:=x"});
    EXPECT_EQ(Reconhece(m_Pasta / "lista.XLSX").Formato, Formato::Xlsx);
    EXPECT_EQ(Exporta({{"1,5", "=x"}}, "lista.csv"), Lidas{"2|T:1,5|T:=x"});
    EXPECT_EQ(OctetosDe(m_Pasta / "lista.csv"), "\xEF\xBB\xBF"
                                                "A;B\r\n1,5;'=x\r\n");
    const Falha falha =
        FalhaDe([&] { ExportaTabela("a", {}, Textos{}).Grava(m_Pasta / "lista.pdf", [](double) { return true; }); });
    EXPECT_EQ(falha.Descricao, "O fim do nome do arquivo diz em que formato ele é gravado: .xlsx, .ods ou .csv.");
}

TEST_F(ExportaTabelaTeste, Grava_TypedCells_AreWrittenAsTheyAre)
{
    EXPECT_TRUE(ExportaTabela("a", {"A"}, std::vector<Linha>{{CelulaLogica(true), CelulaDeTexto("5")}})
                    .Grava(m_Pasta / "a.ods", [](double) { return true; }));
    EXPECT_EQ(Linhas(m_Pasta / "a.ods"), (Lidas{"1|T:A", "2|L:Verdadeiro|T:5"}));
}

TEST_F(ExportaTabelaTeste, Grava_AnyName_BecomesASheets)
{
    const auto folha = [&](const std::string &nome) {
        ExportaTabela(nome, {"A"}, Textos{}).Grava(m_Pasta / "a.xlsx", [](double) { return true; });
        return AbreLeitor(m_Pasta / "a.xlsx")->Folhas().at(0);
    };
    EXPECT_EQ(folha("Aferições"), "Aferições");
    EXPECT_EQ(folha("'a/b:c'"), "a b c");
    EXPECT_EQ(folha("[]"), "Tabela");
    EXPECT_EQ(folha("Sensores e aferições do equipamento A1"), "Sensores e aferições do equipam");
}

TEST_F(ExportaTabelaTeste, Grava_GivenUp_LeavesWhatWasThere)
{
    m_Pasta.Com("lista.ods", "antes");
    std::vector<double> partes;
    const Textos linhas(1000, {"a", "b"});
    EXPECT_FALSE(ExportaTabela("a", {"A", "B"}, linhas).Grava(m_Pasta / "lista.ods", [&](double parte) {
        partes.push_back(parte);
        return partes.size() < 3;
    }));
    EXPECT_EQ(partes, (std::vector<double>{0, 0.5, 1}));
    EXPECT_EQ(OctetosDe(m_Pasta / "lista.ods"), "antes");
    EXPECT_EQ(m_Pasta.Nomes(), Lidas{"lista.ods"});
}
