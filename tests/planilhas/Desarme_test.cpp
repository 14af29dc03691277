#include "planilhas/Desarme.h"

#include <gtest/gtest.h>

#include <string>

using planilhas::Desarma;
using planilhas::Rearma;

TEST(DesarmeTeste, Desarma_WhatASpreadsheetTakesForAFormula_HasAnApostropheBefore)
{
    EXPECT_EQ(Desarma("=1+1"), "'=1+1");
    EXPECT_EQ(Desarma("+55"), "'+55");
    EXPECT_EQ(Desarma("-5"), "'-5");
    EXPECT_EQ(Desarma("@a"), "'@a");
    EXPECT_EQ(Desarma("\tx"), "'\tx");
    EXPECT_EQ(Desarma("\rx"), "'\rx");
    EXPECT_EQ(Desarma("\nx"), "'\nx");
    EXPECT_EQ(Desarma("'=x"), "''=x");
}

TEST(DesarmeTeste, Desarma_OtherTexts_StayAsTheyAre)
{
    for (const char *texto : {"", "'", "''", "'a", "a=1", " =1", "5-3"}) {
        EXPECT_EQ(Desarma(texto), texto);
        EXPECT_EQ(Rearma(texto), texto);
    }
}

TEST(DesarmeTeste, Rearma_AnyShortText_IsWhatDesarmaWasGiven)
{
    const std::string letras = "'=+-@\t\r\na";
    for (std::size_t n = 0; n < letras.size() * letras.size() * letras.size() * letras.size(); ++n) {
        std::string texto;
        for (std::size_t resto = n; resto > 0; resto /= letras.size()) {
            texto += letras[resto % letras.size()];
        }
        EXPECT_EQ(Rearma(Desarma(texto)), texto);
    }
}
