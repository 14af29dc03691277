#include "controls/OrdemPortuguesa.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(OrdemPortuguesa, SemAcentoNemCaixa_OfPortugueseLetters_LeavesTheirBasesAndSignsAsTheyAre)
{
    EXPECT_EQ(SemAcentoNemCaixa("ÁÀÂÃÄ áàâãä"), "aaaaa aaaaa");
    EXPECT_EQ(SemAcentoNemCaixa("ÉÊ ÍÏ ÓÔÕÖ ÚÜ Ç Ñ"), "ee ii oooo uu c n");
    EXPECT_EQ(SemAcentoNemCaixa("São Leopoldo - 1ª Região nº 2"), "sao leopoldo - 1a regiao no 2");
    EXPECT_EQ(SemAcentoNemCaixa("ÆØÅÝÿð"), "aeoayyd");
    EXPECT_EQ(SemAcentoNemCaixa("÷×€ß"), "÷×€ß");
    EXPECT_EQ(SemAcentoNemCaixa("\xC3"), "\xC3");
    EXPECT_EQ(SemAcentoNemCaixa("a\xE3\xC2"), "a\xE3\xC2");
    EXPECT_EQ(SemAcentoNemCaixa("\xC3\xC3"), "\xC3\xC3");
    EXPECT_EQ(SemAcentoNemCaixa(""), "");
}

TEST(OrdemPortuguesa, ChaveOrdem_PutsAccentsBetweenTheirNeighboursAndMindsNoCase)
{
    const std::vector<std::string> emOrdem = {"",      " a", "1",  "á z", "abacate", "agua", "Água",
                                              "Aguas", "b",  "Ca", "cá",  "Cã b",    "caa",  "z"};
    for (std::size_t i = 1; i < emOrdem.size(); ++i) {
        EXPECT_LT(ChaveOrdem(emOrdem[i - 1]), ChaveOrdem(emOrdem[i])) << emOrdem[i];
    }
    EXPECT_EQ(ChaveOrdem("ÁGUA"), ChaveOrdem("água"));
    EXPECT_LT(ChaveOrdem("AGUA"), ChaveOrdem("água"));
}

} // namespace
