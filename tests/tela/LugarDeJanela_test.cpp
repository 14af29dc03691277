#include "tela/LugarDeJanela.h"

#include <gtest/gtest.h>

namespace {

constexpr Retangulo Tela{0, 0, 1024, 768};
constexpr Retangulo Outra{-1280, -200, 1280, 1024}; // to the left of it, and higher

TEST(LugarDeJanela, Texto_OfAPlace_TellsItAgain)
{
    const LugarDeJanela lugar{{-1200, -20, 800, 600}, true};
    EXPECT_EQ(TextoDoLugar(lugar), "-1200 -20 800 600 1");
    EXPECT_EQ(LugarDoTexto(TextoDoLugar(lugar)), lugar);
    const LugarDeJanela normal{{0, 0, 1, 1}, false};
    EXPECT_EQ(LugarDoTexto(TextoDoLugar(normal)), normal);
}

TEST(LugarDeJanela, Texto_ThatTellsNoPlace_IsNone)
{
    for (const char *texto : {"",
                              " ",
                              "1",
                              "1 2 3 4",
                              "1 2 3 4 5",
                              "1 2 3 4 -1",
                              "1 2 3 4 0 ",
                              "1 2 3 4 0 0",
                              "1  2 3 4 0",
                              "a b c d e",
                              "nan nan nan nan 0",
                              "1 2 0 4 0",
                              "1 2 3 0 0",
                              "1 2 -3 4 0",
                              "1,2,3,4,0",
                              "1.5 2 3 4 0",
                              "1e3 2 3 4 0",
                              "99999999999999999999 0 800 600 0",
                              "2147483647 0 800 600 0",
                              "0 -2147483648 800 600 0",
                              "0 0 100001 600 0",
                              "0 0 800 600 01x",
                              "\n0 0 800 600 0"}) {
        EXPECT_FALSE(LugarDoTexto(texto)) << texto;
    }
}

TEST(Dentro, WhatFits_StaysWhereItIs)
{
    EXPECT_EQ(Dentro({10, 20, 800, 600}, Tela), (Retangulo{10, 20, 800, 600}));
    EXPECT_EQ(Dentro(Tela, Tela), Tela);
}

TEST(Dentro, WhatIsOutside_ComesIn)
{
    EXPECT_EQ(Dentro({-50, -1, 800, 600}, Tela), (Retangulo{0, 0, 800, 600}));
    EXPECT_EQ(Dentro({900, 700, 800, 600}, Tela), (Retangulo{224, 168, 800, 600}));
    EXPECT_EQ(Dentro({5000, 5000, 10, 10}, Outra), (Retangulo{-10, 814, 10, 10}));
}

TEST(Dentro, WhatIsLarger_IsTheWholeArea)
{
    EXPECT_EQ(Dentro({-50, 100, 2000, 600}, Tela), (Retangulo{0, 100, 1024, 600}));
    EXPECT_EQ(Dentro({100000, 100000, 100000, 100000}, Outra), Outra);
}

TEST(Centrado, InFrontOfAWindow_IsInItsMiddleAndNeverOutside)
{
    EXPECT_EQ(Centrado({400, 300}, {100, 100, 600, 500}, Tela), (Retangulo{200, 200, 400, 300}));
    EXPECT_EQ(Centrado({400, 300}, {-300, 700, 600, 500}, Tela), (Retangulo{0, 468, 400, 300}));
    EXPECT_EQ(Centrado({4000, 300}, {100, 100, 600, 500}, Tela), (Retangulo{0, 200, 1024, 300}));
}

TEST(TelaDoLugar, IsThatOfTheMiddle)
{
    EXPECT_EQ(TelaDoLugar({-100, 0, 800, 600}, {Outra, Tela}), Tela);
    EXPECT_EQ(TelaDoLugar({-700, 0, 800, 600}, {Outra, Tela}), Outra);
    EXPECT_EQ(TelaDoLugar({1000, 0, 800, 600}, {Outra, Tela}), std::nullopt);
    EXPECT_EQ(TelaDoLugar({0, 0, 800, 600}, {}), std::nullopt);
}

TEST(LugarDaPrincipal, Remembered_OnAScreenThatIsThere_IsUsed)
{
    const LugarDeJanela lembrado{{-1300, -300, 800, 600}, false};
    EXPECT_EQ(LugarDaPrincipal(lembrado, {1280, 820}, Tela, {Tela, Outra}), (Retangulo{-1280, -200, 800, 600}));
}

TEST(LugarDaPrincipal, Remembered_OnAScreenThatIsNot_IsNot)
{
    const LugarDeJanela lembrado{{-1300, -300, 800, 600}, false};
    EXPECT_EQ(LugarDaPrincipal(lembrado, {900, 700}, Tela, {Tela}), (Retangulo{62, 34, 900, 700}));
    EXPECT_EQ(LugarDaPrincipal(std::nullopt, {1280, 820}, Tela, {Tela}), Tela);
}

TEST(LugarDaFrente, Remembered_IsTheSizeAlone)
{
    const LugarDeJanela lembrado{{5000, 5000, 500, 400}, false};
    EXPECT_EQ(LugarDaFrente(lembrado, {300, 200}, {100, 100, 600, 500}, Tela), (Retangulo{150, 150, 500, 400}));
    EXPECT_EQ(LugarDaFrente(std::nullopt, {300, 200}, {100, 100, 600, 500}, Tela), (Retangulo{250, 250, 300, 200}));
}

} // namespace
