#include "planilhas/Celula.h"

#include "host/Falha.h"

#include <gtest/gtest.h>

#include <limits>

using namespace planilhas;

TEST(CelulaTeste, NumeroDecimal_NumbersAsFilesHaveThem_ArePlainAndExact)
{
    EXPECT_EQ(NumeroDecimal("5"), "5");
    EXPECT_EQ(NumeroDecimal("-5.30"), "-5.30");
    EXPECT_EQ(NumeroDecimal("+007"), "7");
    EXPECT_EQ(NumeroDecimal(".5"), "0.5");
    EXPECT_EQ(NumeroDecimal("5."), "5");
    EXPECT_EQ(NumeroDecimal("-0.00"), "0.00");
    EXPECT_EQ(NumeroDecimal("1E3"), "1000");
    EXPECT_EQ(NumeroDecimal("1.25e+1"), "12.5");
    EXPECT_EQ(NumeroDecimal("1.5E-3"), "0.0015");
    EXPECT_EQ(NumeroDecimal("12345678901234567890.123456789"), "12345678901234567890.123456789");
}

TEST(CelulaTeste, NumeroDecimal_WhatIsNoNumber_IsNothing)
{
    for (const char *texto :
         {"", "-", ".", "e5", "1e", "1e+-5", "1e999", "1e-401", "1,5", " 1", "1 ", "0x10", "inf", "nan", "--1"}) {
        EXPECT_FALSE(NumeroDecimal(texto)) << texto;
    }
}

TEST(CelulaTeste, SemSobraBinaria_OnlyWhatABinaryNumberLeftOver_Goes)
{
    EXPECT_EQ(SemSobraBinaria("5.2999999999999998"), "5.3");
    EXPECT_EQ(SemSobraBinaria("0.10000000000000001"), "0.1");
    EXPECT_EQ(SemSobraBinaria("0.30000000000000004"), "0.30000000000000004"); // no shorter one tells it
    EXPECT_EQ(SemSobraBinaria("-0.10000000000000001"), "-0.1");
    EXPECT_EQ(SemSobraBinaria("0.010000000000000001"), "0.01"); // rounded upwards, as some programs do
    EXPECT_EQ(SemSobraBinaria("5.30"), "5.30");
    EXPECT_EQ(SemSobraBinaria("12345678901234567890"), "12345678901234567890");
    EXPECT_EQ(SemSobraBinaria("1.2345678901234567890123"), "1.2345678901234567890123");
}

TEST(CelulaTeste, SemSobraBinaria_DigitsOfNoBinaryNumberAndWholeNumbers_Stay)
{
    for (const char *numero : {"9100000000000001", "99999999999999999", "0.99999999999999999", "-0.99999999999999999",
                               "36028797018963968", "36028797018963968.0", "9007199254740993", "1234567890123456.1"}) {
        EXPECT_EQ(SemSobraBinaria(numero), numero);
    }
}

TEST(CelulaTeste, CelulaDeNumero_FromADouble_HasTheFewestDigits)
{
    EXPECT_EQ(CelulaDeNumero(0.1).Texto, "0.1");
    EXPECT_EQ(CelulaDeNumero(-1e21).Texto, "-1000000000000000000000");
    EXPECT_EQ(CelulaDeNumero(60.0).Texto, "60");
    EXPECT_THROW(CelulaDeNumero(std::numeric_limits<double>::infinity()), Falha);
    EXPECT_THROW(CelulaDeNumero(std::numeric_limits<double>::quiet_NaN()), Falha);
}

TEST(CelulaTeste, CelulaDeData_ADayThatDoesNotExist_IsAFault)
{
    EXPECT_THROW(CelulaDeData(29, 2, 2023), Falha);
    EXPECT_THROW(CelulaDeDataHora({1, 1, 2024, 24, 0, 0}), Falha);
    EXPECT_THROW(CelulaDeHora(1, 60, 0), Falha);
    EXPECT_EQ(CelulaDeData(29, 2, 2024).Momento.Dia, 29);
}

TEST(CelulaTeste, TextoDaCelula_EachType_IsWrittenAsInBrazil)
{
    EXPECT_EQ(TextoDaCelula({}), "");
    EXPECT_EQ(TextoDaCelula(CelulaDeTexto("á")), "á");
    EXPECT_EQ(TextoDaCelula(CelulaDeTexto("")), "");
    EXPECT_EQ(CelulaDeTexto(""), Celula());
    EXPECT_EQ(TextoDaCelula(CelulaDeNumero("-1234.50")), "-1234,50");
    EXPECT_EQ(TextoDaCelula(CelulaDeNumero("1.5"), '.'), "1.5");
    EXPECT_EQ(TextoDaCelula(CelulaDeData(1, 2, 2024)), "01/02/2024");
    EXPECT_EQ(TextoDaCelula(CelulaDeData(1, 2, 987)), "01/02/0987");
    EXPECT_EQ(TextoDaCelula(CelulaDeDataHora({1, 2, 2024, 9, 5, 0})), "01/02/2024 09:05");
    EXPECT_EQ(TextoDaCelula(CelulaDeDataHora({1, 2, 2024, 9, 5, 7})), "01/02/2024 09:05:07");
    EXPECT_EQ(TextoDaCelula(CelulaDeHora(100, 5, 0)), "100:05");
    EXPECT_EQ(TextoDaCelula(CelulaLogica(true)), "Verdadeiro");
    EXPECT_EQ(TextoDaCelula(CelulaLogica(false)), "Falso");
    EXPECT_EQ(TextoDaCelula(CelulaDeErro("#N/A")), "#N/A");
}
