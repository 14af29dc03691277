#include "host/Ref.h"

#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

namespace {

class Base : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "Base"; }
    Ref<Base> EstaMesma() { return Eu(*this); }
    int Valor = 1;
};

class Derivada : public Base {
  public:
    std::string_view NomeTipo() const override { return "Derivada"; }
};

class Outra : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "Outra"; }
};

TEST(Ref, Use_OfNothing_IsFault91)
{
    Ref<Base> nada;
    EXPECT_TRUE(nada.Nada());
    EXPECT_FALSE(nada);
    EXPECT_TRUE(nada == nullptr);
    EXPECT_EQ(nada.Ponteiro(), nullptr);
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP", [&] { nada->Valor = 2; }));
    EXPECT_EQ(FalhaLancada([&] { (*nada).Valor = 2; }).Numero, 91);
}

TEST(Ref, Copy_OfAReference_SharesTheObjectUntilTheLastGoes)
{
    Ref<Base> primeira = Novo<Base>();
    RefFraca<Base> vigia = primeira;
    Ref<Base> segunda = primeira;
    segunda->Valor = 5;
    EXPECT_EQ(primeira->Valor, 5);
    primeira = nullptr;
    EXPECT_FALSE(vigia.Nada());
    segunda = nullptr;
    EXPECT_TRUE(vigia.Nada());
}

TEST(Ref, Comparison_OfReferences_IsByTheObject)
{
    auto um = Novo<Base>();
    auto outro = Novo<Base>();
    Ref<Objeto> mesmo = um;
    EXPECT_TRUE(um == mesmo);
    EXPECT_FALSE(um == outro);
    EXPECT_TRUE(Ref<Base>() == Ref<Objeto>());
    EXPECT_FALSE(um == Ref<Base>());
}

TEST(Ref, ComoTipo_OfAnObject_ConvertsOrIsFault13)
{
    Ref<Objeto> objeto = Novo<Derivada>();
    EXPECT_EQ(ComoTipo<Base>(objeto)->NomeTipo(), "Derivada");
    EXPECT_TRUE(ComoTipo<Derivada>(objeto) == objeto);
    EXPECT_EQ(FalhaLancada([&] { ComoTipo<Outra>(objeto); }).Numero, 13);
    EXPECT_TRUE(ComoTipo<Outra>(Ref<Objeto>()).Nada());
}

TEST(Ref, Eu_OfAHeldObject_IsAReferenceToItAndOtherwiseNothing)
{
    auto objeto = Novo<Derivada>();
    EXPECT_TRUE(objeto->EstaMesma() == objeto);
    Derivada solto;
    EXPECT_TRUE(solto.EstaMesma().Nada());
}

TEST(RefFraca, Alvo_OfALivingObject_IsItAndNothingAfterwards)
{
    auto dono = Novo<Derivada>();
    RefFraca<Base> fraca = dono;
    EXPECT_TRUE(fraca.Alvo() == dono);
    EXPECT_EQ(fraca->Valor, 1);
    dono = nullptr;
    EXPECT_TRUE(fraca.Nada());
    EXPECT_TRUE(fraca.Alvo().Nada());
    EXPECT_EQ(FalhaLancada([&] { fraca->Valor = 2; }).Numero, 91);
    EXPECT_EQ(FalhaLancada([] { RefFraca<Base>()->Valor = 2; }).Numero, 91);
}

TEST(RefFraca, Use_WhileTheOwnerLetsGo_KeepsTheObjectForTheExpression)
{
    class Suicida : public Objeto {
      public:
        std::string_view NomeTipo() const override { return "Suicida"; }
        int Solta(Ref<Suicida> &dono)
        {
            dono = nullptr;
            return m_Valor;
        }

      private:
        int m_Valor = 7;
    };
    auto dono = Novo<Suicida>();
    RefFraca<Suicida> fraca = dono;
    EXPECT_EQ(fraca->Solta(dono), 7);
    EXPECT_TRUE(fraca.Nada());
}

} // namespace
