#include "host/Valor.h"

#include "host/EquiptoED.h"
#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

TEST(Valor, Default_IsEmptyAndConvertsToTheDefaults)
{
    const Valor vazio;
    EXPECT_TRUE(vazio.EhVazio());
    EXPECT_FALSE(vazio.EhNulo());
    EXPECT_FALSE(vazio.EhObjeto());
    EXPECT_EQ(vazio.CStr(), "");
    EXPECT_FALSE(vazio.CBool());
    EXPECT_EQ(vazio.CInt(), 0);
    EXPECT_EQ(vazio.CLng(), 0);
    EXPECT_EQ(vazio.CDbl(), 0);
    EXPECT_TRUE(vazio.CDate().Vazia());
    EXPECT_EQ(vazio.Texto(), "");
}

TEST(Valor, Null_IsFault94InEveryConversionAndJoinsAsNothing)
{
    const Valor nulo{Valor::Nulo{}};
    EXPECT_TRUE(nulo.EhNulo());
    EXPECT_FALSE(nulo.EhVazio());
    EXPECT_EQ(FalhaLancada([&] { nulo.CStr(); }).Numero, 94);
    EXPECT_EQ(FalhaLancada([&] { nulo.CBool(); }).Numero, 94);
    EXPECT_EQ(FalhaLancada([&] { nulo.CInt(); }).Numero, 94);
    EXPECT_EQ(FalhaLancada([&] { nulo.CLng(); }).Numero, 94);
    EXPECT_EQ(FalhaLancada([&] { nulo.CDbl(); }).Numero, 94);
    EXPECT_EQ(FalhaLancada([&] { nulo.CDate(); }).Numero, 94);
    EXPECT_EQ(nulo.Texto(), "");
}

TEST(Valor, Conversions_OfWhatItHolds_AreThePlatforms)
{
    EXPECT_EQ(Valor("42").CLng(), 42);
    EXPECT_EQ(Valor(std::int32_t{42}).CStr(), "42");
    EXPECT_EQ(Valor(1.5).CStr(), "1,5");
    EXPECT_EQ(Valor(2.5).CLng(), 2);
    EXPECT_EQ(Valor(true).CInt(), -1);
    EXPECT_EQ(Valor(true).CStr(), "Verdadeiro");
    EXPECT_TRUE(Valor(std::int16_t{-1}).CBool());
    EXPECT_EQ(Valor(DataDe(20, 11, 2026)).CStr(), "20/11/2026");
    EXPECT_EQ(Valor("20/11/2026").CDate(), DataDe(20, 11, 2026));
    EXPECT_EQ(Valor(Data{45000}).CDbl(), 45000);
    EXPECT_EQ(Valor(Data{45000}).CLng(), 45000);
    EXPECT_TRUE(Valor(Data{45000}).CBool());
    EXPECT_EQ(Valor("texto").CStr(), "texto");
}

TEST(Valor, Conversions_OfWhatDoesNotFit_RaiseTheFaultsOfTheConversion)
{
    EXPECT_EQ(FalhaLancada([] { Valor("texto").CLng(); }).Numero, 13);
    EXPECT_EQ(FalhaLancada([] { Valor("").CDate(); }).Numero, 13);
    EXPECT_EQ(FalhaLancada([] { Valor(std::int32_t{40000}).CInt(); }).Numero, 6);
    EXPECT_EQ(FalhaLancada([] { Valor(3e9).CLng(); }).Numero, 6);
}

TEST(Valor, Object_OfAValue_ConvertsToNothingElse)
{
    Ref<EquiptoED> equipto = Novo<EquiptoED>();
    const Valor valor(equipto);
    EXPECT_TRUE(valor.EhObjeto());
    EXPECT_TRUE(valor.ComoObjeto() == equipto);
    EXPECT_TRUE(valor.Como<EquiptoED>() == equipto);
    EXPECT_EQ(FalhaLancada([&] { valor.Como<SensorED>(); }).Numero, 13);
    EXPECT_EQ(FalhaLancada([&] { valor.CStr(); }).Numero, 438);
    EXPECT_EQ(FalhaLancada([&] { valor.CLng(); }).Numero, 438);
    EXPECT_EQ(FalhaLancada([&] { valor.Texto(); }).Numero, 438);
}

TEST(Valor, Nothing_AsAValue_IsAnObjectAndAPlainValueIsFault424)
{
    const Valor valor{Ref<EquiptoED>()};
    EXPECT_TRUE(valor.EhObjeto());
    EXPECT_FALSE(valor.EhVazio());
    EXPECT_TRUE(valor.ComoObjeto().Nada());
    EXPECT_TRUE(valor.Como<SensorED>().Nada());
    EXPECT_EQ(FalhaLancada([] { Valor("x").ComoObjeto(); }).Numero, 424);
    EXPECT_EQ(FalhaLancada([] { Valor().ComoObjeto(); }).Numero, 424);
    EXPECT_EQ(FalhaLancada([] { Valor(Valor::Nulo{}).Como<EquiptoED>(); }).Numero, 424);
}

TEST(Valor, PorReferencia_OfAVariable_ReadsAndReplacesWhatIsInIt)
{
    auto primeiro = Novo<EquiptoED>();
    auto segundo = Novo<SensorED>();
    Ref<Objeto> variavel = primeiro;
    const Valor valor = Valor::PorReferencia(variavel);
    const Valor copia = valor;
    EXPECT_TRUE(valor.EhObjeto());
    EXPECT_TRUE(valor.ComoObjeto() == primeiro);
    copia.Substitui(segundo);
    EXPECT_TRUE(variavel == segundo);
    EXPECT_TRUE(valor.Como<SensorED>() == segundo);
    valor.Substitui(nullptr);
    EXPECT_TRUE(variavel.Nada());
    EXPECT_EQ(FalhaLancada([] { Valor(Novo<EquiptoED>()).Substitui(nullptr); }).Numero, 424);
}

TEST(Valor, Comparison_OfValues_MindsTheirTypeAndWhatTheyStandFor)
{
    EXPECT_TRUE(Valor("1") == Valor("1"));
    EXPECT_FALSE(Valor("1") == Valor(std::int32_t{1}));
    EXPECT_TRUE(Valor() == Valor());
    EXPECT_FALSE(Valor() == Valor(Valor::Nulo{}));
    EXPECT_TRUE(Valor(Valor::Nulo{}) == Valor(Valor::Nulo{}));
    Ref<Objeto> variavel;
    Ref<Objeto> outra;
    EXPECT_TRUE(Valor::PorReferencia(variavel) == Valor::PorReferencia(variavel));
    EXPECT_FALSE(Valor::PorReferencia(variavel) == Valor::PorReferencia(outra));
}

} // namespace
