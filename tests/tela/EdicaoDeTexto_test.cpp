#include "tela/EdicaoDeTexto.h"

#include "host/Texto.h"

#include <gtest/gtest.h>

#include <ostream>

void PrintTo(const EdicaoDeTexto &edicao, std::ostream *saida)
{
    *saida << "at " << edicao.Posicao << " out " << edicao.Retirados << " in \"" << edicao.Inserido << '"';
}

namespace {

TEST(EdicaoDeTexto, AchaEdicao_OfAKey_IsWhereItWasTyped)
{
    EXPECT_EQ(AchaEdicao("", "a", 1), (EdicaoDeTexto{0, 0, "a"}));
    EXPECT_EQ(AchaEdicao("ac", "abc", 2), (EdicaoDeTexto{1, 0, "b"}));
    EXPECT_EQ(AchaEdicao("ab", "abc", 3), (EdicaoDeTexto{2, 0, "c"}));
}

TEST(EdicaoDeTexto, AchaEdicao_AmongEqualLetters_IsWhereTheCursorSays)
{
    EXPECT_EQ(AchaEdicao("aaa", "aaaa", 1), (EdicaoDeTexto{0, 0, "a"}));
    EXPECT_EQ(AchaEdicao("aaa", "aaaa", 2), (EdicaoDeTexto{1, 0, "a"}));
    EXPECT_EQ(AchaEdicao("aaa", "aaaa", 4), (EdicaoDeTexto{3, 0, "a"}));
    EXPECT_EQ(AchaEdicao("aaa", "aa", 0), (EdicaoDeTexto{0, 1, ""}));
    EXPECT_EQ(AchaEdicao("aaa", "aa", 2), (EdicaoDeTexto{2, 1, ""}));
    EXPECT_EQ(AchaEdicao("11:22", "1:22", 0), (EdicaoDeTexto{0, 1, ""}));
    EXPECT_EQ(AchaEdicao("11:22", "1:22", 1), (EdicaoDeTexto{1, 1, ""}));
}

TEST(EdicaoDeTexto, AchaEdicao_OfASelectionReplaced_TakesOutAndPutsIn)
{
    EXPECT_EQ(AchaEdicao("abcd", "axyzd", 4), (EdicaoDeTexto{1, 2, "xyz"}));
    EXPECT_EQ(AchaEdicao("abcd", "xd", 1), (EdicaoDeTexto{0, 3, "x"}));
    EXPECT_EQ(AchaEdicao("abcd", "z", 1), (EdicaoDeTexto{0, 4, "z"}));
    EXPECT_EQ(AchaEdicao("abcd", "", 0), (EdicaoDeTexto{0, 4, ""}));
}

TEST(EdicaoDeTexto, AchaEdicao_OfNothing_IsNothing)
{
    EXPECT_EQ(AchaEdicao("", "", 0), (EdicaoDeTexto{0, 0, ""}));
    EXPECT_EQ(AchaEdicao("abc", "abc", 3), (EdicaoDeTexto{3, 0, ""}));
}

TEST(EdicaoDeTexto, AchaEdicao_WithTheCursorElsewhere_IsFoundByTheTextsAlone)
{
    EXPECT_EQ(AchaEdicao("abc", "abxc", 0), (EdicaoDeTexto{2, 0, "x"}));
    EXPECT_EQ(AchaEdicao("abc", "c", 0), (EdicaoDeTexto{0, 2, ""}));
    EXPECT_EQ(AchaEdicao("abc", "xyz", 99), (EdicaoDeTexto{0, 3, "xyz"}));
}

TEST(EdicaoDeTexto, AchaEdicao_CountsCharactersNotBytes)
{
    EXPECT_EQ(AchaEdicao("ação", "açãéo", 4), (EdicaoDeTexto{3, 0, "é"}));
    EXPECT_EQ(AchaEdicao("𝄞ã𝄞", "𝄞𝄞", 1), (EdicaoDeTexto{1, 1, ""}));
    // Two letters whose first or last bytes are the same are two letters.
    EXPECT_EQ(AchaEdicao("é", "ê", 1), (EdicaoDeTexto{0, 1, "ê"}));
    EXPECT_EQ(AchaEdicao("é", "ũ", 1), (EdicaoDeTexto{0, 1, "ũ"}));
}

// Every edit of a short text, done and told from its outcome, makes the same text again.
TEST(EdicaoDeTexto, AchaEdicao_OfEveryEditOfAShortText_MakesTheNewText)
{
    const std::string antes = "aabéa";
    for (std::size_t posicao = 0; posicao <= 5; ++posicao) {
        for (std::size_t retirados = 0; posicao + retirados <= 5; ++retirados) {
            for (const std::string inserido : {"", "a", "é", "aa", "aab", "xéa"}) {
                const std::string depois = Left(antes, posicao) + inserido + Mid(antes, posicao + retirados + 1);
                for (std::size_t cursor = 0; cursor <= Len(depois); ++cursor) {
                    const EdicaoDeTexto edicao = AchaEdicao(antes, depois, cursor);
                    EXPECT_EQ(Left(antes, edicao.Posicao) + edicao.Inserido +
                                  Mid(antes, edicao.Posicao + edicao.Retirados + 1),
                              depois);
                    if (cursor == posicao + Len(inserido)) {
                        EXPECT_EQ(edicao.Posicao + Len(edicao.Inserido), cursor) << depois;
                    }
                }
            }
        }
    }
}

} // namespace
