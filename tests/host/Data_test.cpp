#include "host/Data.h"

#include "host/Falha.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

// Number of the fault that the statement raises, 0 for none.
int NumeroDe(const std::function<void()> &comando)
{
    try {
        comando();
    } catch (const Falha &falha) {
        EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP");
        return falha.Numero;
    }
    return 0;
}

TEST(Data, Comparison_OfDates_IsByValueAndEmptyAtDayZero)
{
    EXPECT_TRUE(Data{}.Vazia());
    EXPECT_TRUE(Data{-0.0}.Vazia());
    EXPECT_FALSE(Data{0.5}.Vazia());
    EXPECT_FALSE(Data{45000}.Vazia());
    EXPECT_TRUE(Data{45000} == Data{45000});
    EXPECT_TRUE(Data{45000} != Data{45000.5});
    EXPECT_TRUE(Data{45000} < Data{45000.5});
    EXPECT_TRUE(Data{45000} <= Data{45000});
    EXPECT_TRUE(Data{} < DataDe(1, 1, 2023));
}

TEST(Data, DataDe_OfKnownDays_GivesThePlatformsCountAndAddsTheFraction)
{
    EXPECT_EQ(DataDe(30, 12, 1899).Valor, 0);
    EXPECT_EQ(DataDe(31, 12, 1899).Valor, 1);
    EXPECT_EQ(DataDe(29, 12, 1899).Valor, -1);
    EXPECT_EQ(DataDe(1, 1, 1900).Valor, 2);
    EXPECT_EQ(DataDe(1, 3, 1900).Valor, 61); // 1900 had no 29/02
    EXPECT_EQ(DataDe(1, 1, 1970).Valor, 25569);
    EXPECT_EQ(DataDe(29, 2, 2000).Valor, 36585);
    EXPECT_EQ(DataDe(15, 3, 2023).Valor, 45000);
    EXPECT_EQ(DataDe(1, 1, 100).Valor, -657434);
    EXPECT_EQ(DataDe(31, 12, 9999).Valor, 2958465);
    EXPECT_EQ(DataDe(15, 3, 2023, 12, 0, 0).Valor, 45000.5);
    EXPECT_EQ(DataDe(30, 12, 1899, 6, 0, 0).Valor, 0.25);
    EXPECT_EQ(DataDe(29, 12, 1899, 6, 0, 0).Valor, -1.25);
    EXPECT_EQ(DataDe(15, 3, 2023, 0, 0, 0).Valor, 45000);
}

TEST(Data, DataDe_OfImpossibleDayOrTime_IsFault5)
{
    EXPECT_EQ(NumeroDe([] { DataDe(31, 4, 2023); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(29, 2, 2023); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(29, 2, 1900); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(0, 1, 2023); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(32, 1, 2023); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(257, 1, 2023); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(-1, 1, 2023); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(1, 0, 2023); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(1, 13, 2023); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(1, 257, 2023); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(1, 1, 99); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(1, 1, 10000); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(1, 1, -100000); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(29, 2, 2024); }), 0);
    EXPECT_EQ(NumeroDe([] { DataDe(1, 1, 2023, 24, 0, 0); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(1, 1, 2023, 2147483647, 0, 0); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(1, 1, 2023, -1, 0, 0); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(1, 1, 2023, 0, 60, 0); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(1, 1, 2023, 0, -1, 0); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(1, 1, 2023, 0, 0, 60); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(1, 1, 2023, 0, 0, -1); }), 5);
    EXPECT_EQ(NumeroDe([] { DataDe(1, 1, 2023, 23, 59, 59); }), 0);
}

TEST(Data, Partes_OfMoments_GivesTheCalendarToTheNearestSecondAndOutsideItIsFault6)
{
    EXPECT_EQ(Data{}.Partes(), (PartesData{30, 12, 1899, 0, 0, 0}));
    EXPECT_EQ(Data{45000.5}.Partes(), (PartesData{15, 3, 2023, 12, 0, 0}));
    EXPECT_EQ(Data{-1.25}.Partes(), (PartesData{29, 12, 1899, 6, 0, 0}));
    EXPECT_EQ(Data{-0.25}.Partes(), (PartesData{30, 12, 1899, 6, 0, 0}));
    EXPECT_EQ(Data{-657434}.Partes(), (PartesData{1, 1, 100, 0, 0, 0}));
    EXPECT_EQ(Data{-657434.5}.Partes(), (PartesData{1, 1, 100, 12, 0, 0}));
    EXPECT_EQ((Data{2958465.0 + 86399.0 / 86400.0}.Partes()), (PartesData{31, 12, 9999, 23, 59, 59}));
    EXPECT_EQ((Data{45000 + 10.4 / 86400}.Partes()), (PartesData{15, 3, 2023, 0, 0, 10}));
    EXPECT_EQ((Data{45000 + 10.6 / 86400}.Partes()), (PartesData{15, 3, 2023, 0, 0, 11}));
    EXPECT_EQ((Data{45000 + 86399.6 / 86400}.Partes()), (PartesData{16, 3, 2023, 0, 0, 0}));
    EXPECT_EQ((Data{-1 - 86399.6 / 86400}.Partes()), (PartesData{30, 12, 1899, 0, 0, 0}));
    EXPECT_EQ(NumeroDe([] { Data{2958466}.Partes(); }), 6);
    EXPECT_EQ(NumeroDe([] { Data{2958465 + 86399.9 / 86400}.Partes(); }), 6);
    EXPECT_EQ(NumeroDe([] { Data{-657435}.Partes(); }), 6);
    EXPECT_EQ(NumeroDe([] { Data{1e300}.Partes(); }), 6);
}

TEST(Data, Partes_OfEverySecondOfADay_ComesBack)
{
    for (const Data dia : {DataDe(15, 3, 2023), DataDe(29, 12, 1899), DataDe(31, 12, 9999), DataDe(1, 1, 100)}) {
        const PartesData d = dia.Partes();
        for (int s = 0; s < 86400; ++s) {
            const PartesData esperado{d.Dia, d.Mes, d.Ano, s / 3600, s / 60 % 60, s % 60};
            const Data momento = DataDe(d.Dia, d.Mes, d.Ano, esperado.Hora, esperado.Minuto, esperado.Segundo);
            ASSERT_EQ(momento.Partes(), esperado) << momento.Valor;
        }
    }
}

TEST(Data, Partes_OfEveryDayOfTheCalendar_ComesBackAndFollows)
{
    PartesData ontem = DataDe(1, 1, 100).Partes();
    for (int n = -657433; n <= 2958465; ++n) {
        const PartesData hoje = Data{static_cast<double>(n)}.Partes();
        ASSERT_EQ(DataDe(hoje.Dia, hoje.Mes, hoje.Ano).Valor, n);
        const bool mesmoMes = hoje.Dia == ontem.Dia + 1 && hoje.Mes == ontem.Mes && hoje.Ano == ontem.Ano;
        const bool mesSeguinte = hoje.Dia == 1 && hoje.Mes == ontem.Mes + 1 && hoje.Ano == ontem.Ano;
        const bool anoSeguinte = hoje.Dia == 1 && hoje.Mes == 1 && ontem.Mes == 12 && hoje.Ano == ontem.Ano + 1;
        ASSERT_TRUE(mesmoMes || mesSeguinte || anoSeguinte) << n;
        ontem = hoje;
    }
}

TEST(Data, MaisDias_OfMoment_KeepsTheTimeOfDayAndOutsideTheCalendarIsFault5)
{
    EXPECT_EQ(Data{45000}.MaisDias(-1).Valor, 44999);
    EXPECT_EQ(Data{45000.5}.MaisDias(30).Valor, 45030.5);
    EXPECT_EQ(Data{45000}.MaisDias(0).Valor, 45000);
    EXPECT_EQ(DataDe(1, 3, 2024).MaisDias(-1), DataDe(29, 2, 2024));
    EXPECT_EQ(DataDe(1, 3, 2023).MaisDias(-1), DataDe(28, 2, 2023));
    EXPECT_EQ(Data{-1.25}.MaisDias(1).Valor, 0.25);
    EXPECT_EQ(Data{-1.25}.MaisDias(2).Valor, 1.25);
    EXPECT_EQ(Data{0.25}.MaisDias(-1).Valor, -1.25);
    EXPECT_EQ(Data{-3.25}.MaisDias(1).Valor, -2.25);
    EXPECT_EQ(NumeroDe([] { Data{2958465}.MaisDias(1); }), 5);
    EXPECT_EQ(NumeroDe([] { Data{-657434}.MaisDias(-1); }), 5);
    EXPECT_EQ(NumeroDe([] { Data{2958464}.MaisDias(1); }), 0);
    EXPECT_EQ(NumeroDe([] { Data{}.MaisDias(2147483647); }), 5);
}

} // namespace
