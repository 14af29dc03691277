#include "tela/TeclasDeCombo.h"

#include <gtest/gtest.h>

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
