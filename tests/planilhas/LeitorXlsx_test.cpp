#include "tests/planilhas/Arquivos.h"

#include "planilhas/FormatoNumerico.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace planilhas;

namespace {

using Lidas = std::vector<std::string>;

class LeitorXlsxTeste : public testing::Test {
  protected:
    Pasta m_Pasta;
};

// Formats 0 to 9: none, day, moment by its own number, own ones.
const std::string Estilos =
    "<numFmts><numFmt numFmtId=\"164\" formatCode=\"dd/mm/yyyy\"/><numFmt numFmtId=\"165\" formatCode=\"hh:mm\"/>"
    "<numFmt numFmtId=\"166\" formatCode=\"[h]:mm\"/><numFmt numFmtId=\"167\" formatCode=\"yyyy-mm-dd hh:mm:ss\"/>"
    "<numFmt numFmtId=\"168\" formatCode=\"0.00\\ &quot;dias&quot;\"/></numFmts>"
    "<cellStyleXfs><xf numFmtId=\"14\"/></cellStyleXfs>"
    "<cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"14\"/><xf numFmtId=\"22\"/><xf numFmtId=\"164\"/><xf "
    "numFmtId=\"165\"/>"
    "<xf numFmtId=\"166\"/><xf numFmtId=\"167\"/><xf numFmtId=\"168\"/></cellXfs>"
    "<dxfs><dxf><numFmt numFmtId=\"164\" formatCode=\"0\"/></dxf></dxfs>";

std::string Com(int estilo, const std::string &valor)
{
    return "<row><c s=\"" + std::to_string(estilo) + "\"><v>" + valor + "</v></c></row>";
}

} // namespace

TEST_F(LeitorXlsxTeste, Le_SharedRichAndInlineTexts_AreAllThere)
{
    const std::string textos =
        "<si><t>simples</t></si><si><r><rPr><b/></rPr><t>ri</t></r><r><t xml:space=\"preserve\">co </t></r>"
        "<rPh sb=\"0\" eb=\"1\"><t>pronúncia</t></rPh></si><si/><si><t>a_x000D_b_x005F_</t></si>";
    EXPECT_EQ(Linhas(m_Pasta.ComXlsx(
                  "<row r=\"1\"><c r=\"A1\" t=\"s\"><v>0</v></c><c r=\"B1\" t=\"s\"><v>1</v></c>"
                  "<c r=\"C1\" t=\"s\"><v>2</v></c><c r=\"D1\" t=\"s\"><v>3</v></c></row>"
                  "<row r=\"2\"><c r=\"A2\" t=\"inlineStr\"><is><t>em linha</t></is></c>"
                  "<c r=\"B2\" t=\"inlineStr\"><is><r><t>a</t></r><r><t> b</t></r><rPh><t>x</t></rPh></is></c>"
                  "<c r=\"C2\" t=\"str\"><v>resultado</v></c></row>",
                  "", textos)),
              (Lidas{"1|T:simples|T:rico ||T:a\rb_", "2|T:em linha|T:a b|T:resultado"}));
}

TEST_F(LeitorXlsxTeste, Le_MissingCellsAndRows_KeepTheirPlaces)
{
    EXPECT_EQ(Linhas(m_Pasta.ComXlsx(
                  "<row r=\"2\"><c r=\"B2\"><v>1</v></c><c r=\"AA2\"><v>2</v></c></row><row r=\"3\"/>"
                  "<row r=\"4\"><c r=\"A4\"/></row><row r=\"900000\"><c r=\"C900000\"><v>3</v></c></row>")),
              (Lidas{"2||N:1" + std::string(24, '|') + "|N:2", "900000|||N:3"}));
    EXPECT_EQ(Linhas(m_Pasta.ComXlsx(
                  "<row><c><v>1</v></c><c><v>2</v></c></row><row><c r=\"B5\"><v>3</v></c><c><v>4</v></c></row>")),
              (Lidas{"1|N:1|N:2", "5||N:3|N:4"}));
}

TEST_F(LeitorXlsxTeste, Le_CellsOutOfTheirOrder_AreRefused)
{
    EXPECT_EQ(Frase(m_Pasta.ComXlsx("<row r=\"2\"/><row r=\"2\"/>")),
              "O arquivo está danificado: depois da linha 2 há uma fora de ordem.");
    EXPECT_EQ(Frase(m_Pasta.ComXlsx("<row r=\"1048577\"/>")),
              "O arquivo está danificado: depois da linha 0 há uma fora de ordem.");
    EXPECT_EQ(Frase(m_Pasta.ComXlsx("<row r=\"x\"/>")),
              "O arquivo está danificado: depois da linha 0 há uma fora de ordem.");
    for (const char *lugar : {"A1", "B2", "XFE3", "AAAAA3", "3", "A", "A0", "a3", ""}) {
        EXPECT_EQ(Frase(m_Pasta.ComXlsx("<row r=\"3\"><c r=\"B3\"/><c r=\"" + std::string(lugar) + "\"/></row>")),
                  "O arquivo está danificado: na linha 3 há uma célula fora de lugar.")
            << lugar;
    }
    EXPECT_EQ(Frase(m_Pasta.ComXlsx("<c r=\"A1\"/>")), "O arquivo está danificado: há uma célula fora das linhas.");
}

TEST_F(LeitorXlsxTeste, Le_BooleansErrorsAndFormulas_AreToldAsSuch)
{
    EXPECT_EQ(
        Linhas(m_Pasta.ComXlsx(
            "<row><c t=\"b\"><v>1</v></c><c t=\"b\"><v>0</v></c><c t=\"e\"><v>#DIV/0!</v></c><c><f>A1+1</f><v>2</v></c>"
            "<c t=\"str\"><f t=\"shared\" si=\"0\"/><v>x</v></c><c><f>NOW()</f></c><c "
            "t=\"e\"><f>1/0</f><v>#DIV/0!</v></c>"
            "<c t=\"n\"><v>3</v></c><c t=\"d\"><v>2024-01-31</v></c></row>")),
        Lidas{"1|L:Verdadeiro|L:Falso|E:#DIV/0!|n:2|t:x|=:|e:#DIV/0!|N:3|D:31/01/2024"});
}

TEST_F(LeitorXlsxTeste, Le_NumbersByTheirFormat_AreDatesOrNumbers)
{
    EXPECT_EQ(Linhas(m_Pasta.ComXlsx(Com(0, "45000") + Com(1, "45000") + Com(2, "45000.5") + Com(3, "45000") +
                                         Com(4, "0.75") + Com(5, "1.5") + Com(6, "45000.999988425925") + Com(7, "3.5") +
                                         Com(3, "45000.25") + Com(2, "45000") + Com(4, "45000.75"),
                                     Estilos)),
              (Lidas{"1|N:45000", "2|D:15/03/2023", "3|M:15/03/2023 12:00", "4|D:15/03/2023", "5|H:18:00", "6|H:36:00",
                     "7|M:15/03/2023 23:59:59", "8|N:3.5", "9|M:15/03/2023 06:00", "10|M:15/03/2023 00:00",
                     "11|M:15/03/2023 18:00"}));
}

TEST_F(LeitorXlsxTeste, Le_DatesFrom1900_HaveItsDayThatNeverWas)
{
    EXPECT_EQ(
        Linhas(m_Pasta.ComXlsx(Com(3, "1") + Com(3, "59") + Com(3, "60") + Com(6, "60.5") + Com(3, "61") + Com(3, "0") +
                                   Com(3, "-1") + Com(3, "2958465") + Com(3, "2958466") + Com(6, "45000.9999999"),
                               Estilos)),
        (Lidas{"1|D:01/01/1900", "2|D:28/02/1900", "3|T:29/02/1900", "4|T:29/02/1900 12:00", "5|D:01/03/1900", "6|N:0",
               "7|N:-1", "8|D:31/12/9999", "9|N:2958466", "10|M:16/03/2023 00:00"}));
}

TEST_F(LeitorXlsxTeste, Le_DatesFrom1904_AreFourYearsLater)
{
    const std::string linhas = Com(3, "0") + Com(3, "60") + Com(3, "43538") + Com(4, "0.5") + Com(3, "2957004");
    const Lidas esperadas{"1|D:01/01/1904", "2|D:01/03/1904", "3|D:15/03/2023", "4|H:12:00", "5|N:2957004"};
    EXPECT_EQ(Linhas(m_Pasta.ComXlsx(linhas, Estilos, "", "<workbookPr date1904=\"1\"/>")), esperadas);
    EXPECT_EQ(Linhas(m_Pasta.ComXlsx(linhas, Estilos, "", "<workbookPr date1904=\"true\"/>")), esperadas);
    EXPECT_EQ(Linhas(m_Pasta.ComXlsx(Com(3, "43538"), Estilos, "", "<workbookPr date1904=\"0\"/>")),
              Lidas{"1|D:14/03/2019"});
}

TEST_F(LeitorXlsxTeste, Le_ADateThatIsAText_StaysAText)
{
    EXPECT_EQ(Linhas(m_Pasta.ComXlsx(
                  "<row><c t=\"inlineStr\" s=\"3\"><is><t>31/01/2024</t></is></c><c s=\"3\"><v>45322</v></c></row>",
                  Estilos)),
              Lidas{"1|T:31/01/2024|D:31/01/2024"});
}

TEST_F(LeitorXlsxTeste, Le_NumbersWithABinaryRest_AreAsPeopleWroteThem)
{
    EXPECT_EQ(Linhas(m_Pasta.ComXlsx(
                  "<row><c><v>5.2999999999999998</v></c><c><v>1.0000000000000001E-2</v></c><c><v> 60 </v></c></row>")),
              Lidas{"1|N:5.3|N:0.01|N:60"});
}

TEST_F(LeitorXlsxTeste, Le_LongNumbersThatNoBinaryNumberLeft_StayAsTheFileHasThem)
{
    EXPECT_EQ(Linhas(m_Pasta.ComXlsx("<row><c><v>9100000000000001</v></c><c><v>99999999999999999</v></c>"
                                     "<c><v>0.99999999999999999</v></c></row>")),
              Lidas{"1|N:9100000000000001|N:99999999999999999|N:0.99999999999999999"});
}

TEST_F(LeitorXlsxTeste, Le_NumbersShownWithZerosInFront_AreTheTextsThatAreSeen)
{
    const std::string estilos = "<numFmts><numFmt numFmtId=\"164\" formatCode=\"000000\"/>"
                                "<numFmt numFmtId=\"165\" formatCode=\"[$-416]00000\\-000\"/></numFmts>"
                                "<cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"164\"/><xf numFmtId=\"165\"/></cellXfs>";
    EXPECT_EQ(Linhas(m_Pasta.ComXlsx(Com(0, "123") + Com(1, "123") + Com(1, "1234567") + Com(2, "1310100") +
                                         Com(1, "-5") + Com(1, "1.5") + Com(1, "0"),
                                     estilos)),
              (Lidas{"1|N:123", "2|T:000123", "3|T:1234567", "4|T:01310-100", "5|N:-5", "6|N:1.5", "7|T:000000"}));
}

TEST_F(LeitorXlsxTeste, MascaraDoFormato_OnlyCodesOfZeros_HaveOne)
{
    EXPECT_EQ(MascaraDoFormato("000000"), "000000");
    EXPECT_EQ(MascaraDoFormato("000\\.000\\.000\\-00"), "000.000.000-00");
    EXPECT_EQ(MascaraDoFormato("00\" / \"00;@"), "00 / 00");
    EXPECT_EQ(MascaraDoFormato("[Red]00"), "00");
    for (const char *codigo : {"",       "0",         "General",     "0.00",        "#,##0",  "00.0", "00%",
                               "00E+00", "[<100]00",  "[$R$-416]00", "00\" dias\"", "0\"0",   "0\\",  "0[",
                               "\\000",  "000;-000;", "00/00",       "dd/mm/yyyy",  "[h]:mm", "[h]00"}) {
        EXPECT_EQ(MascaraDoFormato(codigo), "") << codigo;
    }
    EXPECT_EQ(MascaraDoFormato(std::string(65, '0')), "");
}

TEST_F(LeitorXlsxTeste, Le_ALongTextThatManyCellsName_IsCountedEachTime)
{
    const std::string textos = "<si><t>" + std::string(100000, 'x') + "</t></si>";
    std::string dez;
    for (int i = 0; i < 10; ++i) {
        dez += "<row><c t=\"s\"><v>0</v></c></row>";
    }
    OpcoesDeLeitura opcoes;
    opcoes.Limites.Textos = 1000000;
    EXPECT_EQ(Linhas(m_Pasta.ComXlsx(dez, "", textos), opcoes).size(), 10U);
    EXPECT_EQ(Frase(m_Pasta.ComXlsx(dez + "<row><c t=\"s\"><v>0</v></c></row>", "", textos), opcoes),
              "A tabela tem texto demais, contado tantas vezes quantas está nela.");
}

TEST_F(LeitorXlsxTeste, Folhas_TooManyOrWithALongName_AreRefused)
{
    const auto folhas = [](int quantas, const std::string &nome) {
        std::string tudo = "<sheets>";
        for (int i = 0; i < quantas; ++i) {
            tudo += "<sheet name=\"" + nome + "\" sheetId=\"1\" r:id=\"f1\"/>";
        }
        return tudo + "</sheets>";
    };
    // One more stands behind these.
    EXPECT_EQ(AbreLeitor(m_Pasta.ComXlsx("", "", "", folhas(999, "a")))->Folhas().size(), 1000U);
    EXPECT_EQ(Frase(m_Pasta.ComXlsx("", "", "", folhas(1000, "a"))),
              "O arquivo tem mais de 1.000 folhas, que é o máximo.");
    EXPECT_EQ(Frase(m_Pasta.ComXlsx("", "", "", folhas(1, std::string(1001, 'x')))),
              "O arquivo tem uma folha com um nome longo demais.");
}

TEST_F(LeitorXlsxTeste, Le_WhatNoCellMayHold_IsRefused)
{
    for (const char *celula : {"<c><v>abc</v></c>", "<c t=\"x\"><v>1</v></c>", "<c><v>1,5</v></c>"}) {
        EXPECT_EQ(Frase(m_Pasta.ComXlsx("<row>" + std::string(celula) + "</row>")),
                  "O arquivo está danificado: na linha 1 há uma célula que não se entende.");
    }
    for (const char *numero : {"1", "-1", "x", "99999999999999999999"}) {
        EXPECT_EQ(Frase(m_Pasta.ComXlsx("<row><c t=\"s\"><v>" + std::string(numero) + "</v></c></row>", "",
                                        "<si><t>a</t></si>")),
                  "O arquivo está danificado: uma célula aponta para um texto que não há.");
    }
    EXPECT_EQ(Frase(m_Pasta.ComXlsx("<row><c t=\"s\"><v>0</v></c></row>")),
              "O arquivo está danificado: faltam nele os textos das células.");
    EXPECT_EQ(Frase(m_Pasta.ComXlsx(Com(99, "1"), Estilos)),
              "O arquivo está danificado: na linha 1 há uma célula com um formato que não há.");
}

TEST_F(LeitorXlsxTeste, SentidoDoFormato_CodesAndNumbers_AreToldApart)
{
    for (const char *codigo : {"General", "0.00", "#,##0.00", "0.00E+00", "@", "\"dia\" 0", "[Red]0", "\\d0", "0_d",
                               "*y0", "[$R$-416] #,##0.00", "", "0;dd/mm", "0%"}) {
        EXPECT_EQ(SentidoDoFormato(codigo), SentidoDoNumero::Numero) << codigo;
    }
    for (const char *codigo :
         {"dd/mm/yyyy", "d/m/yy;@", "mmm-yy", "[$-416]d \"de\" mmmm \"de\" yyyy", "mmmm", "DD/MM/YYYY", "dddd"}) {
        EXPECT_EQ(SentidoDoFormato(codigo), SentidoDoNumero::Data) << codigo;
    }
    for (const char *codigo : {"hh:mm", "h:mm AM/PM", "mm:ss.0", "hh\\hmm"}) {
        EXPECT_EQ(SentidoDoFormato(codigo), SentidoDoNumero::Hora) << codigo;
    }
    for (const char *codigo : {"dd/mm/yyyy hh:mm", "yyyy\\-mm\\-dd\"T\"hh:mm:ss"}) {
        EXPECT_EQ(SentidoDoFormato(codigo), SentidoDoNumero::DataHora) << codigo;
    }
    for (const char *codigo : {"[h]:mm", "[HH]:mm:ss", "[mm]:ss", "[s]"}) {
        EXPECT_EQ(SentidoDoFormato(codigo), SentidoDoNumero::Duracao) << codigo;
    }
    EXPECT_EQ(SentidoDoFormato(14), SentidoDoNumero::Data);
    EXPECT_EQ(SentidoDoFormato(20), SentidoDoNumero::Hora);
    EXPECT_EQ(SentidoDoFormato(22), SentidoDoNumero::DataHora);
    EXPECT_EQ(SentidoDoFormato(46), SentidoDoNumero::Duracao);
    EXPECT_EQ(SentidoDoFormato(49), SentidoDoNumero::Numero);
}
