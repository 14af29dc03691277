#include "host/Texto.h"

#include "tests/support/FalhaLancada.h"

#include <string>
#include <utility>
#include <vector>

namespace {

using Textos = std::vector<std::string>;

TEST(Texto, Len_OfAccentedText_CountsLettersAndEachMalformedByteAsOne)
{
    EXPECT_EQ(Len(""), 0U);
    EXPECT_EQ(Len("Aferição"), 8U);
    EXPECT_EQ(Len("€𝄞"), 2U);
    EXPECT_EQ(Len("\xE1\xBA\xBD"), 1U);       // the first byte is odd
    EXPECT_EQ(Len("\xF1\x80\x80\x80"), 1U);   // the same
    EXPECT_EQ(Len("\xC2\x80"), 1U);           // smallest of two bytes
    EXPECT_EQ(Len("\xE0\xA0\x80"), 1U);       // of three
    EXPECT_EQ(Len("\xF0\x90\x80\x80"), 1U);   // of four
    EXPECT_EQ(Len("\xEE\x80\x80"), 1U);       // follows the surrogates
    EXPECT_EQ(Len("\xE7\xE3o"), 3U);          // Latin-1 bytes
    EXPECT_EQ(Len("\x80\xBF"), 2U);           // continuations without a start
    EXPECT_EQ(Len("\xE2\x82"), 2U);           // cut short
    EXPECT_EQ(Len("\xC0\xAF"), 2U);           // overlong
    EXPECT_EQ(Len("\xED\xA0\x80"), 3U);       // surrogate
    EXPECT_EQ(Len("\xF4\x90\x80\x80"), 4U);   // beyond the last code point
    EXPECT_EQ(Len("\xFF\xFE"), 2U);           // never in UTF-8
    EXPECT_EQ(Len(std::string(3, '\0')), 3U); // a zero is a character
    EXPECT_EQ(Len("\xC3\xA7\xC3"), 2U);       // good, then cut short
}

TEST(Texto, LeftAndRight_OfAccentedText_CutBetweenLetters)
{
    EXPECT_EQ(Left("Aferição", 6), "Aferiç");
    EXPECT_EQ(Left("Aferição", 0), "");
    EXPECT_EQ(Left("Aferição", 8), "Aferição");
    EXPECT_EQ(Left("Aferição", 900), "Aferição");
    EXPECT_EQ(Left("\xE7\xE3o", 1), "\xE7");
    EXPECT_EQ(Right("Aferição", 3), "ção");
    EXPECT_EQ(Right("Aferição", 0), "");
    EXPECT_EQ(Right("Aferição", 8), "Aferição");
    EXPECT_EQ(Right("Aferição", 900), "Aferição");
    EXPECT_EQ(Right("o\xE7\xE3", 1), "\xE3");
}

TEST(Texto, Mid_OfAccentedText_CountsFromOne)
{
    EXPECT_EQ(Mid("Município", 1, 4), "Muni");
    EXPECT_EQ(Mid("Município", 6, 2), "íp");
    EXPECT_EQ(Mid("Município", 6), "ípio");
    EXPECT_EQ(Mid("Município", 9, 5), "o");
    EXPECT_EQ(Mid("Município", 10, 5), "");
    EXPECT_EQ(Mid("Município", 900, 5), "");
    EXPECT_EQ(Mid("Município", 3, 0), "");
    EXPECT_EQ(Mid("", 1, 5), "");
    EXPECT_TRUE(Lanca(5, "ZTAVOREQUIP", [] { Mid("abc", 0, 1); }));
}

TEST(Texto, Trim_OfTextWithBlanks_TakesOnlyBlanksAtBothEnds)
{
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim(""), "");
    EXPECT_EQ(Trim("\t a\r\n"), "\t a\r\n");
    EXPECT_EQ(Trim("\u00A0a\u00A0"), "\u00A0a\u00A0"); // hard blanks stay
}

TEST(Texto, UCase_OfLetters_RaisesAllOfThemAndLCaseLowersThem)
{
    const std::vector<std::pair<std::string, std::string>> pares = {
        {"aferição não vê à última lingüiça ñ õ", "AFERIÇÃO NÃO VÊ À ÚLTIMA LINGÜIÇA Ñ Õ"},
        {"áé 123 @[`{", "ÁÉ 123 @[`{"},
        {"āąćďēğĩĳķĺłńŋœřšťűŷźżž", "ĀĄĆĎĒĞĨĲĶĹŁŃŊŒŘŠŤŰŶŹŻŽ"},
        {"ÿ", "Ÿ"}};
    for (const auto &[minusculo, maiusculo] : pares) {
        EXPECT_EQ(UCase(minusculo), maiusculo);
        EXPECT_EQ(LCase(maiusculo), minusculo);
        EXPECT_EQ(UCase(maiusculo), maiusculo);
        EXPECT_EQ(LCase(minusculo), minusculo);
    }
}

TEST(Texto, UCase_OfSignsMalformedBytesAndLettersWithoutPartner_LeavesThem)
{
    EXPECT_EQ(UCase("÷×ßµªº°"), "÷×ßµªº°");
    EXPECT_EQ(LCase("÷×ßµªº°"), "÷×ßµªº°");
    EXPECT_EQ(UCase("ıĸŉſ"), "ıĸŉſ");
    EXPECT_EQ(LCase("İĸŉſ"), "İĸŉſ");
    EXPECT_EQ(UCase("αж"), "αж");
    EXPECT_EQ(UCase("a\xE7\xE3o\xC3"), "A\xE7\xE3O\xC3");
    EXPECT_EQ(LCase("A\xC7\xC3O\xE2\x82"), "a\xC7\xC3o\xE2\x82");
}

TEST(Texto, LCase_OfEveryLetterRaised_ComesBack)
{
    for (int codigo = 0x80; codigo <= 0x17F; ++codigo) {
        const std::string letra{static_cast<char>(0xC0 | (codigo >> 6)), static_cast<char>(0x80 | (codigo & 0x3F))};
        EXPECT_TRUE(LCase(UCase(letra)) == letra || UCase(LCase(letra)) == letra) << std::hex << codigo;
        EXPECT_EQ(UCase(UCase(letra)), UCase(letra)) << std::hex << codigo;
        EXPECT_EQ(LCase(UCase(letra)), LCase(letra)) << std::hex << codigo;
    }
}

TEST(Texto, ChaveAndIgualSemCaixa_OfTextsThatDifferInCase_AreTheSame)
{
    EXPECT_EQ(ChaveSemCaixa("AFERIÇÃO"), ChaveSemCaixa("aferição"));
    EXPECT_EQ(ChaveSemCaixa("S1"), ChaveSemCaixa("s1"));
    EXPECT_NE(ChaveSemCaixa("aferição"), ChaveSemCaixa("afericao"));
    EXPECT_NE(ChaveSemCaixa("S1"), ChaveSemCaixa("S1 "));
    EXPECT_TRUE(IgualSemCaixa("Município", "MUNICÍPIO"));
    EXPECT_TRUE(IgualSemCaixa("", ""));
    EXPECT_FALSE(IgualSemCaixa("Município", "Municipio"));
    EXPECT_FALSE(IgualSemCaixa("Município", "Município "));
    EXPECT_FALSE(IgualSemCaixa("a", ""));
}

TEST(Texto, Substitui_OfSeveralOccurrences_ReplacesAllFromTheLeft)
{
    EXPECT_EQ(Substitui("ABC-1-2", "-", ""), "ABC12");
    EXPECT_EQ(Substitui("aaa", "aa", "b"), "ba");
    EXPECT_EQ(Substitui("a", "a", "aa"), "aa"); // what was put in is not searched again
    EXPECT_EQ(Substitui("maçã", "ç", "ss"), "massã");
    EXPECT_EQ(Substitui("Abc", "a", "x"), "Abc");
    EXPECT_EQ(Substitui("abc", "", "x"), "abc");
    EXPECT_EQ(Substitui("", "a", "x"), "");
    EXPECT_EQ(Substitui("a'b", "'", "''"), "a''b");
}

TEST(Texto, Divide_OfText_GivesEveryPieceEmptyOnesToo)
{
    EXPECT_EQ(Divide("123/05", "/"), (Textos{"123", "05"}));
    EXPECT_EQ(Divide("123", "/"), (Textos{"123"}));
    EXPECT_EQ(Divide("/", "/"), (Textos{"", ""}));
    EXPECT_EQ(Divide("a||b|", "|"), (Textos{"a", "", "b", ""}));
    EXPECT_EQ(Divide("a\r\nb", "\r\n"), (Textos{"a", "b"}));
    EXPECT_EQ(Divide("çaç", "a"), (Textos{"ç", "ç"}));
    EXPECT_EQ(Divide("a", "|||"), (Textos{"a"})); // shorter than the separator
    EXPECT_EQ(Divide("", "/"), Textos{});         // no piece
    EXPECT_EQ(Divide("", ""), Textos{});
    EXPECT_EQ(Divide("a/b", ""), (Textos{"a/b"})); // the whole text
}

} // namespace
