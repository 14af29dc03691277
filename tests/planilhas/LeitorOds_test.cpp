#include "tests/planilhas/Arquivos.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using planilhas::AbreLeitor;
using planilhas::OpcoesDeLeitura;

namespace {

using Lidas = std::vector<std::string>;

class LeitorOdsTeste : public testing::Test {
  protected:
    std::filesystem::path Com(const std::string &linhas)
    {
        return m_Pasta.ComOds("<table:table table:name=\"Dados\"><table:table-column/>" + linhas + "</table:table>");
    }

    Pasta m_Pasta;
};

std::string Linha(const std::string &celulas, const std::string &vezes = "1")
{
    return "<table:table-row table:number-rows-repeated=\"" + vezes + "\">" + celulas + "</table:table-row>";
}

std::string Celula(const std::string &atributos, const std::string &conteudo = "")
{
    return "<table:table-cell " + atributos + ">" + conteudo + "</table:table-cell>";
}

std::string Texto(const std::string &conteudo, const std::string &vezes = "1")
{
    return Celula("office:value-type=\"string\" table:number-columns-repeated=\"" + vezes + "\"", conteudo);
}

} // namespace

TEST_F(LeitorOdsTeste, Le_EveryType_IsAsTheFileTellsIt)
{
    EXPECT_EQ(
        Linhas(Com(
            Linha(Celula("office:value-type=\"float\" office:value=\"5.30\"", "<text:p>5,3</text:p>") +
                  Celula("office:value-type=\"percentage\" office:value=\"0.5\"") +
                  Celula("office:value-type=\"currency\" office:value=\"1E2\"") +
                  Celula("office:value-type=\"date\" office:date-value=\"2024-01-31\"", "<text:p>31/01/24</text:p>") +
                  Celula("office:value-type=\"date\" office:date-value=\"2024-01-31T10:30:00\"") +
                  Celula("office:value-type=\"date\" office:date-value=\"2024-12-31T23:59:59.600\"") +
                  Celula("office:value-type=\"date\" office:date-value=\"2023-02-29\"") +
                  Celula("office:value-type=\"time\" office:time-value=\"PT100H05M07S\"") +
                  Celula("office:value-type=\"time\" office:time-value=\"-PT1H\"") +
                  Celula("office:value-type=\"boolean\" office:boolean-value=\"true\"") +
                  Celula("office:value-type=\"string\" office:string-value=\"do atributo\"", "<text:p>outro</text:p>") +
                  Celula("office:value-type=\"string\" calcext:value-type=\"error\"", "<text:p>#N/D</text:p>") +
                  Celula("table:formula=\"of:=1+1\" office:value-type=\"float\" office:value=\"2\"") +
                  Celula("table:formula=\"of:=A1\"")))),
        Lidas{
            "1|N:5.30|N:0.5|N:100|D:31/01/2024|M:31/01/2024 10:30|M:01/01/2025 00:00|T:2023-02-29|H:100:05:07|T:-PT1H|"
            "L:Verdadeiro|T:do atributo|E:#N/D|n:2|=:"});
}

TEST_F(LeitorOdsTeste, Le_Paragraphs_AreTheTextAsItIsShown)
{
    EXPECT_EQ(
        Linhas(Com(Linha(
            Texto("<text:p>a</text:p><text:p>b</text:p>") +
            Texto("<text:p>a<text:s text:c=\"3\"/>b<text:tab/>c<text:line-break/>d</text:p>") +
            Texto("<text:p>\n  a \n b  </text:p>") +
            Texto("<text:p>a <text:span>b</text:span><text:a> c</text:a></text:p>") +
            Texto("<office:annotation><text:p>nota</text:p></office:annotation><text:p>a</text:p>") +
            Texto("<text:p>a<office:annotation><text:p>nota</text:p></office:annotation>b</text:p>") +
            Texto(
                "<text:p>a</text:p><draw:frame><draw:text-box><text:p>desenho</text:p></draw:text-box></draw:frame>") +
            Texto("<text:p><text:ruby><text:ruby-base>a</text:ruby-base><text:ruby-text>x</text:ruby-text></"
                  "text:ruby></text:p>") +
            Texto("<text:p/>") + Texto("<text:p>a <text:s/></text:p>")))),
        Lidas{"1|T:a\nb|T:a   b\tc\nd|T:a b|T:a b c|T:a|T:ab|T:a|T:a||T:a  "});
}

TEST_F(LeitorOdsTeste, Le_RepeatedCellsAndRows_AreThereAsOften)
{
    EXPECT_EQ(Linhas(Com(Linha(Texto("<text:p>a</text:p>", "2") +
                               "<table:covered-table-cell table:number-columns-repeated=\"2\"/>" +
                               Texto("<text:p>b</text:p>")) +
                         Linha("<table:table-cell/>", "3") + Linha(Texto("<text:p>c</text:p>"), "2") +
                         "<table:table-row-group><table:table-header-rows>" + Linha(Texto("<text:p>d</text:p>")) +
                         "</table:table-header-rows></table:table-row-group>" +
                         Linha("<table:table-cell table:number-columns-repeated=\"16384\"/>", "1048000"))),
              (Lidas{"1|T:a|T:a|||T:b", "5|T:c", "6|T:c", "7|T:d"}));
}

TEST_F(LeitorOdsTeste, Le_AbsurdRepetitions_AreRefusedOrCostNothing)
{
    EXPECT_EQ(Linhas(Com(Linha("<table:table-cell table:number-columns-repeated=\"4294967295\"/>", "4294967295"))),
              Lidas{});
    EXPECT_EQ(Frase(Com(Linha(Texto("<text:p>a</text:p>", "4294967295")))),
              "A linha 1 tem mais de 1000 colunas, que é o máximo.");
    EXPECT_EQ(Frase(Com(Linha("<table:table-cell table:number-columns-repeated=\"4294967295\"/>" +
                              Texto("<text:p>a</text:p>")))),
              "A linha 1 tem mais de 1000 colunas, que é o máximo.");
    EXPECT_EQ(Frase(Com(Linha(Texto("<text:p>a</text:p>"), "4294967295"))),
              "A tabela tem mais de 1048576 linhas, que é o máximo.");
    EXPECT_EQ(Frase(Com(Linha("<table:table-cell/>", "1048576") + Linha(Texto("<text:p>a</text:p>")))),
              "A tabela tem mais de 1048576 linhas, que é o máximo.");
    EXPECT_EQ(Frase(Com(Linha(Texto("<text:p>" + std::string(100000, 'x') + "</text:p>", "1000")))),
              "A linha 1 tem texto demais.");
    OpcoesDeLeitura opcoes;
    opcoes.Limites.Linhas = 10;
    EXPECT_EQ(Frase(Com(Linha(Texto("<text:p>a</text:p>"), "11")), opcoes),
              "A tabela tem mais de 10 linhas, que é o máximo.");
    EXPECT_EQ(Frase(Com(Linha(Texto("<text:p><text:s text:c=\"4000000000\"/></text:p>")))),
              "O arquivo tem uma célula longa demais.");
}

TEST_F(LeitorOdsTeste, Le_LongTextsRepeatedManyTimes_AreRefusedBeforeTheyAreGiven)
{
    const std::string longo = "<text:p><text:s text:c=\"131072\"/></text:p>";
    const auto leitor = AbreLeitor(Com(Linha(Texto(longo, "100"), "900000")));
    planilhas::LinhaLida linha;
    EXPECT_EQ(FalhaDe([&] { leitor->Le(linha); }).Descricao,
              "A tabela tem texto demais, contado tantas vezes quantas está nela.");
    OpcoesDeLeitura opcoes;
    opcoes.Limites.Textos = 1310720;
    EXPECT_EQ(Linhas(Com(Linha(Texto(longo, "5"), "2")), opcoes).size(), 2U);
    EXPECT_EQ(Frase(Com(Linha(Texto(longo, "5"), "2") + Linha(Texto("<text:p>a</text:p>"))), opcoes),
              "A tabela tem texto demais, contado tantas vezes quantas está nela.");
}

TEST_F(LeitorOdsTeste, Folhas_TooManyOrWithALongName_AreRefusedEachTime)
{
    const auto folha = [](const std::string &nome) { return "<table:table table:name=\"" + nome + "\"/>"; };
    std::string mil;
    for (int i = 0; i < 1000; ++i) {
        mil += folha(std::to_string(i));
    }
    EXPECT_EQ(AbreLeitor(m_Pasta.ComOds(mil))->Folhas().size(), 1000U);
    const auto demais = AbreLeitor(m_Pasta.ComOds(mil + folha("a")));
    for (int vez = 0; vez < 2; ++vez) {
        EXPECT_EQ(FalhaDe([&] { demais->Folhas(); }).Descricao, "O arquivo tem mais de 1.000 folhas, que é o máximo.");
    }
    const auto longa = AbreLeitor(m_Pasta.ComOds(folha(std::string(1001, 'x'))));
    EXPECT_EQ(FalhaDe([&] { longa->Folhas(); }).Descricao, "O arquivo tem uma folha com um nome longo demais.");
}

TEST_F(LeitorOdsTeste, Folhas_OnlyTheFilesOwnSheets_AreNamed)
{
    const auto leitor = AbreLeitor(m_Pasta.ComOds(
        "<table:table table:name=\"'file:///x.ods'#$A\">" + Linha(Texto("<text:p>alheia</text:p>")) +
        "</table:table><table:table table:name=\"A\">" +
        Linha(Celula("office:value-type=\"string\"", "<table:table table:name=\"dentro\"/><text:p>a</text:p>")) +
        "</table:table><table:dde-links><table:dde-link><table:table "
        "table:name=\"dde\"/></table:dde-link></table:dde-links>"
        "<table:table table:name=\"B\">" +
        Linha(Texto("<text:p>b</text:p>")) + "</table:table>"));
    EXPECT_EQ(leitor->Folhas(), (Lidas{"A", "B"}));
    EXPECT_EQ(Linhas(*leitor), Lidas{"1|T:a"});
    leitor->Escolhe(1);
    EXPECT_EQ(Linhas(*leitor), Lidas{"1|T:b"});
}

TEST_F(LeitorOdsTeste, Le_WhatNoCellMayHold_IsRefused)
{
    EXPECT_EQ(Frase(Com(Linha(Celula("office:value-type=\"float\" office:value=\"1,5\"")))),
              "O arquivo está danificado: na linha 1 há um número que não se entende.");
    EXPECT_EQ(Frase(m_Pasta.ComOds("")), "A planilha não tem nenhuma folha.");
}
