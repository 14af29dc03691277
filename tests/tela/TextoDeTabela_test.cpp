#include "tela/TextoDeTabela.h"

#include <gtest/gtest.h>

namespace {

TEST(TextoDeTabelaTest, TextoTabulado_QuotesCellsThatWouldBeReadAsSeveral)
{
    EXPECT_EQ(TextoTabulado({{"Código", "Nome"}, {{"001", "a\tb"}, {"", "linha 1\r\nlinha 2"}, {"diz \"sim\"", "'"}}}),
              "Código\tNome\r\n001\t\"a\tb\"\r\n\t\"linha 1\r\nlinha 2\"\r\n\"diz \"\"sim\"\"\"\t'\r\n");
    EXPECT_EQ(TextoTabulado({{"Só"}, {}}), "Só\r\n");
}

TEST(TextoDeTabelaTest, TabelaEmHtml_HasEveryCellAsAText)
{
    const std::string html = TabelaEmHtml({{"A & B"}, {{"001"}, {"<b>=1+1</b>"}, {"x\r\ny"}}});
    EXPECT_EQ(html, "<meta charset=\"utf-8\"><table border=\"1\">\n<tr><th>A &amp; B</th></tr>\n"
                    "<tr><td style=\"mso-number-format:'\\@'\">001</td></tr>\n"
                    "<tr><td style=\"mso-number-format:'\\@'\">&lt;b&gt;=1+1&lt;/b&gt;</td></tr>\n"
                    "<tr><td style=\"mso-number-format:'\\@'\">x<br>y</td></tr>\n</table>\n");
}

} // namespace
