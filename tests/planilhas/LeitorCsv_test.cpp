#include "planilhas/LeitorCsv.h"

#include "tests/planilhas/Arquivos.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace planilhas;

namespace {

using Lidas = std::vector<std::string>;

class LeitorCsvTeste : public testing::Test {
  protected:
    Lidas Le(const std::string &octetos, const OpcoesDeLeitura &opcoes = {})
    {
        return Linhas(m_Pasta.Com("tabela.csv", octetos), opcoes);
    }
    std::string Recusa(const std::string &octetos, const OpcoesDeLeitura &opcoes = {})
    {
        return Frase(m_Pasta.Com("tabela.csv", octetos), opcoes);
    }
    Reconhecimento De(const std::string &octetos) { return Reconhece(m_Pasta.Com("tabela.csv", octetos)); }

    Pasta m_Pasta;
};

OpcoesDeLeitura Em(Codificacao codificacao)
{
    OpcoesDeLeitura opcoes;
    opcoes.Codificacao = codificacao;
    return opcoes;
}

// Each character of the text, which is ASCII or Latin-1, in two bytes.
std::string Utf16(const std::string &latin1, bool altoPrimeiro)
{
    std::string octetos = altoPrimeiro ? "\xFE\xFF" : "\xFF\xFE";
    for (const char letra : latin1) {
        octetos += altoPrimeiro ? std::string{'\0', letra} : std::string{letra, '\0'};
    }
    return octetos;
}

} // namespace

TEST_F(LeitorCsvTeste, Le_RowsOfAnyLineEnd_AreTheSame)
{
    const Lidas esperadas{"1|T:a|T:b", "2|T:c||T:d"};
    EXPECT_EQ(Le("a;b\r\nc;;d\r\n"), esperadas);
    EXPECT_EQ(Le("a;b\nc;;d"), esperadas);
    EXPECT_EQ(Le("a;b\rc;;d\r"), esperadas);
}

TEST_F(LeitorCsvTeste, Le_QuotedCells_HaveSeparatorsQuotesAndLineEnds)
{
    EXPECT_EQ(Le("\"a;b\";\"diz \"\"sim\"\"\"\r\n\"1\r\n2\n3\";x\r\n"),
              (Lidas{"1|T:a;b|T:diz \"sim\"", "2|T:1\r\n2\n3|T:x"}));
    EXPECT_EQ(Le("5\" de lado;b\n"), Lidas{"1|T:5\" de lado|T:b"});
    EXPECT_EQ(Le("\"\";b\n"), Lidas{"1||T:b"});
}

TEST_F(LeitorCsvTeste, Le_BrokenQuotes_AreRefusedWithTheRow)
{
    EXPECT_EQ(Recusa("a;b\n\"c;d\ne;f\n"), "A linha 2 do arquivo abre aspas que não são fechadas.");
    EXPECT_EQ(Recusa("a;b\nc;d\n\"e\"f;g\n"), "A linha 3 do arquivo tem texto depois das aspas que fecham uma célula.");
}

TEST_F(LeitorCsvTeste, Le_RowsWithoutAnything_CountAndAreLeftOut)
{
    EXPECT_EQ(Le("\n;;\na;b\n\n\"\"\nc\n"), (Lidas{"3|T:a|T:b", "6|T:c"}));
}

TEST_F(LeitorCsvTeste, Le_AnApostropheBeforeAFormula_IsTakenOff)
{
    EXPECT_EQ(Le("'=1;''-x\n'a;'\n=1;-5\n"), (Lidas{"1|T:=1|T:'-x", "2|T:'a|T:'", "3|T:=1|T:-5"}));
}

TEST_F(LeitorCsvTeste, Le_EachEncodingWithItsMark_IsTheSameText)
{
    const Lidas esperadas{"1|T:código|T:nº", "2|T:não|T:ção"};
    EXPECT_EQ(Le("código;nº\nnão;ção\n"), esperadas);
    EXPECT_EQ(Le("\xEF\xBB\xBF"
                 "código;nº\nnão;ção\n"),
              esperadas);
    const std::string latin1 = "c\xF3"
                               "digo;n\xBA\nn\xE3o;\xE7\xE3o\n";
    EXPECT_EQ(Le(Utf16(latin1, false)), esperadas);
    EXPECT_EQ(Le(Utf16(latin1, true)), esperadas);
    EXPECT_EQ(Le(latin1, Em(Codificacao::Windows1252)), esperadas);
    EXPECT_EQ(Le("\x80 \x93x\x94\n", Em(Codificacao::Windows1252)), Lidas{"1|T:€ “x”"});
    EXPECT_EQ(Le("\xFE\xFF\xD8\x3D\xDE\x97", {}), Lidas{"1|T:\xF0\x9F\x9A\x97"});
}

TEST_F(LeitorCsvTeste, Reconhece_WhatIsNotUtf8_IsInDoubtAndNeverGuessed)
{
    const std::string latin1 = "c\xF3"
                               "digo;nome\n";
    EXPECT_EQ(De(latin1).Codificacao, std::nullopt);
    EXPECT_EQ(De(latin1).Separador, std::nullopt);
    EXPECT_EQ(Recusa(latin1), "O arquivo não está em UTF-8, e não diz em que codificação está: escolha-a.");
    EXPECT_EQ(De("código;nome\n").Codificacao, Codificacao::Utf8);
    EXPECT_EQ(De(Utf16("a;b", true)).Codificacao, Codificacao::Utf16BE);
    EXPECT_EQ(De(Utf16("a;b", false)).Codificacao, Codificacao::Utf16LE);
}

TEST_F(LeitorCsvTeste, Le_WhatIsNotOfTheSaidEncoding_IsRefusedWithTheLine)
{
    EXPECT_EQ(Recusa("a\nb\n\xE7\n", Em(Codificacao::Utf8)),
              "O arquivo não está em UTF-8: na linha 3 há octetos que não são texto nessa codificação.");
    EXPECT_EQ(Recusa("a\n\x81\n", Em(Codificacao::Windows1252)),
              "O arquivo não está em Windows-1252: na linha 2 há octetos que não são texto nessa codificação.");
    const std::string emUtf16 =
        "O arquivo não está em UTF-16: na linha 1 há octetos que não são texto nessa codificação.";
    EXPECT_EQ(Recusa(std::string("\xFF\xFE"
                                 "a\0b",
                                 5)),
              emUtf16); // half a character
    EXPECT_EQ(Recusa(std::string("\xFF\xFE\x3D\xD8"
                                 "a\0",
                                 6)),
              emUtf16);                                             // a high half alone
    EXPECT_EQ(Recusa(std::string("\xFF\xFE\x3D\xD8", 4)), emUtf16); // at the end
    EXPECT_EQ(Recusa(std::string("\xFF\xFE\x97\xDE"
                                 "a\0",
                                 6)),
              emUtf16); // a low half alone
}

TEST_F(LeitorCsvTeste, Le_AMarkOfAnotherEncodingThanTheSaidOne_IsRefused)
{
    const std::string comMarca = "\xEF\xBB\xBF"
                                 "a;b\n";
    OpcoesDeLeitura opcoes = Em(Codificacao::Windows1252);
    opcoes.Separador = ';';
    EXPECT_EQ(Recusa(comMarca, opcoes), "O arquivo não está em Windows-1252: começa com a marca de UTF-8.");
    EXPECT_EQ(Recusa(Utf16("a;b\n", false), opcoes),
              "O arquivo não está em Windows-1252: começa com a marca de UTF-16LE.");
    EXPECT_EQ(Recusa(Utf16("a;b\n", true), Em(Codificacao::Utf16LE)),
              "O arquivo não está em UTF-16LE: começa com a marca de UTF-16BE.");
    EXPECT_EQ(Recusa(Utf16("a;b\n", true), Em(Codificacao::Utf8)),
              "O arquivo não está em UTF-8: começa com a marca de UTF-16BE.");
    EXPECT_THROW(Reconhece(m_Pasta.Com("tabela.csv", comMarca), opcoes), CodificacaoErrada);
    EXPECT_EQ(Le(comMarca, Em(Codificacao::Utf8)), Lidas{"1|T:a|T:b"});
    EXPECT_EQ(Le(Utf16("a;b\n", true), Em(Codificacao::Utf16BE)), Lidas{"1|T:a|T:b"});
}

TEST_F(LeitorCsvTeste, Le_MalformedUtf8_IsInDoubt)
{
    for (const char *octetos : {"\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xED\xA0\x80", "\xF0\x80\x80\x80",
                                "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\x80", "\xC3", "\xE2\x82", "\xC3(", "\xFE"}) {
        EXPECT_EQ(De(std::string("a;b\n") + octetos).Codificacao, std::nullopt);
    }
    for (const char *octetos :
         {"\xC2\x80", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_EQ(De(std::string("a;b\n") + octetos).Codificacao, Codificacao::Utf8);
    }
}

// The pieces in which a file is read end inside a character for some of these.
TEST_F(LeitorCsvTeste, Le_LongTextsInEachEncoding_AreWholeAcrossThePieces)
{
    for (std::size_t antes = 0; antes < 5; ++antes) {
        std::string texto(antes, 'a');
        std::string utf16 = "\xFF\xFE";
        for (std::size_t i = 0; i < antes; ++i) {
            utf16 += std::string("a\0", 2);
        }
        for (int i = 0; i < 25000; ++i) {
            texto += "\xF0\x9F\x9A\x97";
            utf16 += "\x3D\xD8\x97\xDE";
        }
        EXPECT_EQ(Le(texto), Lidas{"1|T:" + texto});
        EXPECT_EQ(Le(utf16), Lidas{"1|T:" + texto});
    }
}

TEST_F(LeitorCsvTeste, Le_NullCharacters_AreNoText)
{
    const std::string frase =
        "O arquivo não é um texto: tem caracteres nulos. Se for um texto em UTF-16, salve-o como \"CSV UTF-8\".";
    EXPECT_EQ(Recusa(std::string("a;b\n\0", 5)), frase);
    EXPECT_EQ(Recusa(Utf16("a;b\n", false).substr(2)), frase);
}

TEST_F(LeitorCsvTeste, SeparadorDoTexto_WhatTheRowsHaveInCommon_IsTheSeparator)
{
    EXPECT_EQ(SeparadorDoTexto("a;b;c\n1,5;2,5;3,5\n", true), ';');
    EXPECT_EQ(SeparadorDoTexto("a,b,c\n1;2,\"x;y\",3\n", true), ',');
    EXPECT_EQ(SeparadorDoTexto("a\tb\n1,2,3\tc;d\n", true), '\t');
    EXPECT_EQ(SeparadorDoTexto("a;b\n\"x,y\n,,\";c\n", true), ';');
    EXPECT_EQ(SeparadorDoTexto("nome\nJoão\n", true), ';');
    EXPECT_EQ(SeparadorDoTexto("a;b\n1;2\nc;d;e,f", false), ';');  // the last row is not whole
    EXPECT_EQ(SeparadorDoTexto("a;b;c\n1;2\n3,4;5\n", true), ';'); // not every row has as many
}

TEST_F(LeitorCsvTeste, SeparadorDoTexto_WhereTwoFitAsWell_IsInDoubt)
{
    EXPECT_EQ(SeparadorDoTexto("a;b,c\n1;2,3\n", true), std::nullopt);
    EXPECT_EQ(Recusa("a;b,c\n1;2,3\n"), "Não se vê o que separa as células do arquivo: escolha o separador.");
    OpcoesDeLeitura opcoes;
    opcoes.Separador = ',';
    EXPECT_EQ(Le("a;b,c\n1;2,3\n", opcoes), (Lidas{"1|T:a;b|T:c", "2|T:1;2|T:3"}));
}

TEST_F(LeitorCsvTeste, Le_BeyondTheLimits_IsRefused)
{
    OpcoesDeLeitura opcoes;
    opcoes.Limites.Colunas = 2;
    EXPECT_EQ(Le("a;b;\n", opcoes), Lidas{"1|T:a|T:b"}); // an empty one is none
    EXPECT_EQ(Recusa("a;b\na;b;c\n", opcoes), "A linha 2 tem mais de 2 colunas, que é o máximo.");
    opcoes.Limites.Linhas = 2;
    EXPECT_EQ(Le("a\n\n\nb\n", opcoes).size(), 2U);
    EXPECT_EQ(Recusa("a\nb\nc\n", opcoes), "A tabela tem mais de 2 linhas, que é o máximo.");
    opcoes.Limites.Textos = 4;
    EXPECT_EQ(Le("ab\ncd\n", opcoes).size(), 2U);
    EXPECT_EQ(Recusa("ab\ncde\n", opcoes), "A tabela tem texto demais, contado tantas vezes quantas está nela.");
    opcoes.Limites.Celulas = 1;
    EXPECT_EQ(Recusa("a;b\n", opcoes), "A tabela tem mais de 1 células, que é o máximo.");
    opcoes.Limites.Octetos = 10;
    EXPECT_EQ(Recusa("01234567890\n", opcoes), "O arquivo é grande demais para ser lido como tabela.");
    EXPECT_EQ(Recusa("\"" + std::string(200000, 'x')), "A linha 1 do arquivo tem uma célula longa demais.");
    EXPECT_EQ(Recusa(std::string(10000, ';') + "x"), "A linha 1 tem mais de 1000 colunas, que é o máximo.");
}
