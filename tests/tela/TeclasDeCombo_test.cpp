#include "tela/TeclasDeCombo.h"

#include "tests/controls/Tela.h"

TEST(TeclasDeCombo, EhLetraDeCombo_OfWhatTypesSomething_IsTrue)
{
    for (const char *digitado : {"a", "Z", "1", " ", "-", "é", "𝄞", "~"}) {
        EXPECT_TRUE(EhLetraDeCombo(digitado)) << digitado;
    }
}

TEST(TeclasDeCombo, EhLetraDeCombo_OfOtherKeys_IsFalse)
{
    for (const char *digitado : {"", "\r", "\t", "\x1b", "\b", "\x7f"}) {
        EXPECT_FALSE(EhLetraDeCombo(digitado));
    }
}

TEST(TeclasDeCombo, ComboObedece_UnlessItIsLocked)
{
    Tela tela;
    const auto combo = tela.Poe<ztCombo>(Chamado<AjustesZtCombo>("cbo"));
    EXPECT_TRUE(ComboObedece(*combo, AtoNoCombo::Abre));
    EXPECT_TRUE(ComboObedece(*combo, AtoNoCombo::Anda));
    EXPECT_TRUE(ComboObedece(*combo, AtoNoCombo::Outro));
    combo->DefineComboSomenteLeitura(true);
    EXPECT_FALSE(ComboObedece(*combo, AtoNoCombo::Abre));
    EXPECT_FALSE(ComboObedece(*combo, AtoNoCombo::Anda));
    EXPECT_TRUE(ComboObedece(*combo, AtoNoCombo::Outro));
}
