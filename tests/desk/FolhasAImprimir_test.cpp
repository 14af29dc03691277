#include "desk/host/FolhasAImprimir.h"

#include <gtest/gtest.h>

using namespace mesa;

namespace {

using Folhas = std::vector<int>;

bool DoisOuTres(int pagina)
{
    return pagina == 1 || pagina == 2;
}

TEST(FolhasAImprimir, All_AreInOrder)
{
    EXPECT_EQ(FolhasAImprimir({.Paginas = 3}), Folhas({0, 1, 2}));
    EXPECT_EQ(FolhasAImprimir({.Paginas = 0}), Folhas());
}

TEST(FolhasAImprimir, Chosen_AreThoseAlone)
{
    EXPECT_EQ(FolhasAImprimir({.Paginas = 5, .Escolhe = DoisOuTres}), Folhas({1, 2}));
    EXPECT_EQ(FolhasAImprimir({.Paginas = 1, .Escolhe = DoisOuTres}), Folhas());
}

TEST(FolhasAImprimir, Copies_AreCollatedOrNot)
{
    EXPECT_EQ(FolhasAImprimir({.Paginas = 5, .Escolhe = DoisOuTres, .Copias = 2}), Folhas({1, 2, 1, 2}));
    EXPECT_EQ(FolhasAImprimir({.Paginas = 5, .Escolhe = DoisOuTres, .Copias = 2, .Agrupa = false}),
              Folhas({1, 1, 2, 2}));
    EXPECT_EQ(FolhasAImprimir({.Paginas = 1, .Copias = 0}), Folhas({0}));
}

TEST(FolhasAImprimir, Reverse_BeginsWithTheLast)
{
    EXPECT_EQ(FolhasAImprimir({.Paginas = 3, .DeTrasParaFrente = true}), Folhas({2, 1, 0}));
    EXPECT_EQ(FolhasAImprimir({.Paginas = 5, .Escolhe = DoisOuTres, .Copias = 2, .DeTrasParaFrente = true}),
              Folhas({2, 1, 2, 1}));
}

} // namespace
