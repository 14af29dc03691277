#include "tela/ColunasArrumadas.h"

#include <gtest/gtest.h>

namespace {

using Numeros = std::vector<std::int32_t>;

class ColunasArrumadasTest : public testing::Test {
  protected:
    ColunasArrumadasTest() { colunas.Define({{"A", 1}, {"B", 2}, {"C", 4}}); }

    Numeros Todas() const
    {
        Numeros numeros;
        for (const ColunasArrumadas::Coluna &coluna : colunas.Colunas()) {
            numeros.push_back(coluna.Numero);
        }
        return numeros;
    }

    ColunasArrumadas colunas;
};

TEST_F(ColunasArrumadasTest, Fresh_IsAsTheTableHasThemAndNothingToRemember)
{
    EXPECT_EQ(colunas.Vistas(), (Numeros{1, 2, 4}));
    EXPECT_EQ(colunas.Texto(), "");
}

TEST_F(ColunasArrumadasTest, Mostra_AllButTheLast_CanBeHidden)
{
    EXPECT_TRUE(colunas.Mostra(1, false));
    EXPECT_TRUE(colunas.Mostra(4, false));
    EXPECT_FALSE(colunas.Mostra(2, false));
    EXPECT_EQ(colunas.Vistas(), Numeros{2});
    EXPECT_TRUE(colunas.Mostra(1, false)) << "it is already";
    EXPECT_FALSE(colunas.Mostra(3, true)) << "of which nobody is told";
    EXPECT_TRUE(colunas.Mostra(4, true));
    EXPECT_EQ(colunas.Vistas(), (Numeros{2, 4}));
}

TEST_F(ColunasArrumadasTest, Move_BringsAColumnToItsPlaceAndNowhereElse)
{
    EXPECT_TRUE(colunas.Move(4, 0));
    EXPECT_EQ(Todas(), (Numeros{4, 1, 2}));
    EXPECT_TRUE(colunas.Move(4, 2));
    EXPECT_EQ(Todas(), (Numeros{1, 2, 4}));
    EXPECT_FALSE(colunas.Move(4, 3));
    EXPECT_FALSE(colunas.Move(9, 0));
    EXPECT_EQ(colunas.Texto(), "");
}

TEST_F(ColunasArrumadasTest, Texto_ReadAgain_IsTheSameArrangement)
{
    colunas.Move(4, 0);
    colunas.Alarga(2, 3000);
    colunas.Mostra(1, false);
    EXPECT_EQ(colunas.Texto(), "C\t0\nA\t0\t-\nB\t3000");
    ColunasArrumadas outras;
    outras.Define({{"A", 1}, {"B", 2}, {"C", 4}});
    outras.Le(colunas.Texto());
    EXPECT_EQ(outras.Texto(), colunas.Texto());
    EXPECT_EQ(outras.Vistas(), (Numeros{4, 2}));
    outras.Volta();
    EXPECT_EQ(outras.Vistas(), (Numeros{1, 2, 4}));
}

TEST_F(ColunasArrumadasTest, Le_OfALaterTable_KeepsWhatIsStillThereAndPutsNewOnesBehindTheirNeighbours)
{
    colunas.Move(4, 0); // C, A, B
    colunas.Alarga(2, 900);
    ColunasArrumadas outras;
    outras.Define({{"X", 1}, {"B", 2}, {"N", 3}, {"C", 4}, {"M", 5}});
    outras.Le(colunas.Texto());
    EXPECT_EQ(outras.Vistas(), (Numeros{1, 4, 5, 2, 3}));
    EXPECT_EQ(outras.Colunas()[3].Largura, 900);
}

TEST_F(ColunasArrumadasTest, Le_OfNonsense_IsAsTheTableHasThem)
{
    for (const char *texto : {"\t\n\t\n", "X\t1\nY\t2\t-", "A\nA\nA", "A\tx\nB\t-5\nC\t99999999999", "A\t100001",
                              "A\t0\t-\nB\t0\t-\nC\t0\t-", "\xff\xfe\n\n\nA\t\t\t\t", "0"}) {
        colunas.Volta();
        colunas.Le(texto);
        EXPECT_EQ(colunas.Vistas(), (Numeros{1, 2, 4})) << texto;
        EXPECT_EQ(colunas.Texto(), "") << texto;
    }
    ColunasArrumadas nenhuma;
    nenhuma.Le("A\t10");
    EXPECT_TRUE(nenhuma.Colunas().empty());
}

TEST_F(ColunasArrumadasTest, Define_WithOtherColumns_KeepsWhatThePersonHasMade)
{
    colunas.Mostra(1, false);
    colunas.Alarga(4, 500);
    colunas.Define({{"A", 1}, {"B", 2}, {"D", 3}, {"C", 5}});
    EXPECT_EQ(colunas.Vistas(), (Numeros{2, 3, 5}));
    EXPECT_EQ(colunas.Colunas()[3].Largura, 500);
    EXPECT_FALSE(colunas.Alarga(5, -1));
    EXPECT_FALSE(colunas.Alarga(9, 100));
}

} // namespace
