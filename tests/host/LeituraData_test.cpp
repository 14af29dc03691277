#include "host/LeituraData.h"

#include "host/Texto.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr int AnoComum = 2023;
constexpr int AnoBissexto = 2024;

TEST(LeituraData, WithoutYear_IsInTheGivenYearAndALeapDayDependsOnIt)
{
    EXPECT_EQ(LeData("12/05", 2023), DataDe(12, 5, 2023));
    EXPECT_EQ(LeData("12/05", 1999), DataDe(12, 5, 1999));
    EXPECT_EQ(LeData("12 maio", 2023), DataDe(12, 5, 2023));
    EXPECT_EQ(LeData("12/31", 2023), DataDe(31, 12, 2023));
    EXPECT_EQ(LeData("29/02", AnoBissexto), DataDe(29, 2, AnoBissexto));
    EXPECT_EQ(LeData("02/29", AnoBissexto), DataDe(29, 2, AnoBissexto));
    // In a common year the number that is no day is the year.
    EXPECT_EQ(LeData("29/02", AnoComum), DataDe(1, 2, 2029));
    EXPECT_EQ(LeData("02/29", AnoComum), DataDe(1, 2, 2029));
    EXPECT_EQ(LeData("29 fevereiro", AnoBissexto), DataDe(29, 2, AnoBissexto));
    EXPECT_EQ(LeData("29 fevereiro", AnoComum), DataDe(1, 2, 2029));
}

TEST(LeituraData, WithYear_TakesNothingFromTheGivenYear)
{
    for (const int ano : {AnoComum, AnoBissexto}) {
        EXPECT_EQ(LeData("12/05/2020", ano), DataDe(12, 5, 2020));
        EXPECT_EQ(LeData("29/02/2023", ano), std::nullopt);
        EXPECT_EQ(LeData("05/2020", ano), DataDe(1, 5, 2020));
        EXPECT_EQ(LeData("maio 2020", ano), DataDe(1, 5, 2020));
        EXPECT_EQ(LeData("10:20", ano), DataDe(30, 12, 1899, 10, 20, 0));
    }
}

TEST(LeituraData, YearsOfTwoDigits_AreFrom1930To2029)
{
    for (int ano = 0; ano <= 99; ++ano) {
        const std::string texto = "15/06/" + std::string(ano < 10 ? "0" : "") + std::to_string(ano);
        EXPECT_EQ(LeData(texto, AnoComum), DataDe(15, 6, ano <= 29 ? 2000 + ano : 1900 + ano)) << texto;
    }
}

TEST(LeituraData, DayMonthOrder_ComesBeforeMonthDay)
{
    for (int dia = 1; dia <= 31; ++dia) {
        for (int mes = 1; mes <= 31; ++mes) {
            const std::string texto = std::to_string(dia) + "/" + std::to_string(mes) + "/2024";
            std::optional<Data> esperado;
            const bool existe = mes <= 12 && (dia <= 29 || (dia == 30 && mes != 2) ||
                                              (dia == 31 && mes != 2 && mes != 4 && mes != 6 && mes != 9 && mes != 11));
            const bool trocada = !existe && dia <= 12 && mes > 12 &&
                                 (mes <= 29 || (mes == 30 && dia != 2) ||
                                  (mes == 31 && dia != 2 && dia != 4 && dia != 6 && dia != 9 && dia != 11));
            if (existe)
                esperado = DataDe(dia, mes, 2024);
            else if (trocada)
                esperado = DataDe(mes, dia, 2024);
            EXPECT_EQ(LeData(texto, AnoComum), esperado) << texto;
        }
    }
}

TEST(LeituraData, EveryMonth_IsReadByNameAndByThreeLettersInAnyCase)
{
    const std::vector<std::string> meses{"janeiro", "fevereiro", "março",    "abril",   "maio",     "junho",
                                         "julho",   "agosto",    "setembro", "outubro", "novembro", "dezembro"};
    for (std::size_t i = 0; i < meses.size(); ++i) {
        const Data esperado = DataDe(7, static_cast<int>(i) + 1, 2021);
        const std::string nome = meses[i];
        const std::string curto = Left(nome, 3);
        for (const std::string &mes : {nome, UCase(nome), curto, UCase(curto), curto + "."}) {
            EXPECT_EQ(LeData("7 " + mes + " 2021", AnoComum), esperado) << mes;
            EXPECT_EQ(LeData("7/" + mes + "/2021", AnoComum), esperado) << mes;
            EXPECT_EQ(LeData("07-" + mes + "-21", AnoComum), esperado) << mes;
        }
        EXPECT_EQ(LeData("7 " + nome + "x 2021", AnoComum), std::nullopt) << nome;
    }
}

TEST(LeituraData, EveryWeekday_IsReadByNameAndByThreeLettersAndSaysNothing)
{
    const std::vector<std::string> dias{"domingo",      "segunda-feira", "terça-feira", "quarta-feira",
                                        "quinta-feira", "sexta-feira",   "sábado"};
    for (std::size_t i = 0; i < dias.size(); ++i) {
        const int dia = static_cast<int>(i) + 2; // of May 2021, which began on a Saturday
        const std::string nome = dias[i];
        const std::string curto = Left(nome, 3);
        for (const std::string &texto : {nome, UCase(nome), curto, UCase(curto), curto + "."})
            EXPECT_EQ(LeData(texto + ", " + std::to_string(dia) + "/05/2021", AnoComum), DataDe(dia, 5, 2021)) << texto;
    }
}

TEST(LeituraData, HoursMinutesAndSeconds_EndBeforeTheNextUnitAndCountForward)
{
    EXPECT_EQ(LeData("23:59:59", AnoComum), DataDe(30, 12, 1899, 23, 59, 59));
    EXPECT_EQ(LeData("24:00", AnoComum), std::nullopt);
    EXPECT_EQ(LeData("12:60", AnoComum), std::nullopt);
    EXPECT_EQ(LeData("12:00:60", AnoComum), std::nullopt);
    EXPECT_EQ(LeData("12/05/2020 24:00", AnoComum), std::nullopt);
    EXPECT_EQ(LeData("12/05/2020 12:60", AnoComum), std::nullopt);
    EXPECT_EQ(LeData("29/12/1899 06:00", AnoComum), Data{-1.25});
    EXPECT_EQ(LeData("28/12/1899 18:00", AnoComum), Data{-2.75});
    EXPECT_EQ(LeData("30/12/1899 06:00", AnoComum), Data{0.25});
}

TEST(LeituraData, EmptyMaskMalformedOrEndlessText_IsNoDate)
{
    EXPECT_EQ(LeData("  /  /    ", AnoComum), std::nullopt);
    EXPECT_EQ(LeData("__/__/____", AnoComum), std::nullopt);
    EXPECT_EQ(LeData("12/05/____", AnoComum), std::nullopt);
    EXPECT_EQ(LeData("", AnoComum), std::nullopt);
    EXPECT_EQ(LeData("\xE7/05/2020", AnoComum), std::nullopt);
    EXPECT_EQ(LeData("12/05/2020\xC2", AnoComum), std::nullopt);
    EXPECT_EQ(LeData(std::string("12/05/2020\0", 11), AnoComum), std::nullopt);
    EXPECT_EQ(LeData(std::string(100000, '9'), AnoComum), std::nullopt);
    EXPECT_EQ(LeData(std::string(100000, ' '), AnoComum), std::nullopt);
    EXPECT_EQ(LeData(std::string(100000, '/'), AnoComum), std::nullopt);
    EXPECT_EQ(LeData("1/1/4294968320", AnoComum), std::nullopt); // 1024 in 32 bits
}

} // namespace
