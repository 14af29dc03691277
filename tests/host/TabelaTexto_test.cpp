#include "host/TabelaTexto.h"

#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

namespace {

TEST(TabelaTexto, AdicionaLinha_OfANewTable_AppendsEmptyCells)
{
    TabelaTexto tabela(3);
    EXPECT_EQ(tabela.Colunas(), 3);
    EXPECT_EQ(tabela.Linhas(), 0);
    EXPECT_EQ(tabela.AdicionaLinha(), 1);
    EXPECT_EQ(tabela.AdicionaLinha(), 2);
    EXPECT_EQ(tabela.Linhas(), 2);
    EXPECT_EQ(tabela.Celula(3, 2), "");
}

TEST(TabelaTexto, Celula_OfAWrittenCell_IsByColumnAndThenRow)
{
    TabelaTexto tabela(2);
    tabela.AdicionaLinha();
    tabela.AdicionaLinha();
    tabela.Celula(2, 1) = "b1";
    tabela.Celula(1, 2) = "a2";
    const TabelaTexto &leitura = tabela;
    EXPECT_EQ(leitura.Celula(2, 1), "b1");
    EXPECT_EQ(leitura.Celula(1, 2), "a2");
    EXPECT_EQ(leitura.Celula(1, 1), "");
}

TEST(TabelaTexto, Celula_OutsideTheTable_IsFault9)
{
    TabelaTexto tabela(2);
    tabela.AdicionaLinha();
    const TabelaTexto &leitura = tabela;
    EXPECT_EQ(FalhaLancada([&] { tabela.Celula(0, 1); }).Numero, 9);
    EXPECT_EQ(FalhaLancada([&] { tabela.Celula(3, 1); }).Numero, 9);
    EXPECT_EQ(FalhaLancada([&] { leitura.Celula(1, 0); }).Numero, 9);
    EXPECT_EQ(FalhaLancada([&] { leitura.Celula(1, 2); }).Numero, 9);
}

} // namespace
