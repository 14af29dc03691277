#include "shell/clsListaParametros.h"

#include "tests/support/FalhaLancada.h"

namespace {

// The collection's own fault, to which the list adds nothing.
template <class Comando> void ConfereFalha(Comando &&comando, std::int32_t numero)
{
    EXPECT_TRUE(Lanca(numero, "ZTAVOREQUIP", comando));
}

Ref<clsListaParametros> ListaDeTres()
{
    auto lista = Novo<clsListaParametros>();
    lista->Add("Codigo", "R-1");
    lista->Add("Tipo", "R");
    lista->Add("Ativo", "1");
    return lista;
}

TEST(clsListaParametros, Fresh_ListAndParameter_AreEmpty)
{
    clsParametro parametro;
    EXPECT_EQ(parametro.Nome, "");
    EXPECT_EQ(parametro.Valor, "");
    EXPECT_EQ(parametro.NomeTipo(), "clsParametro");
    const auto lista = Novo<clsListaParametros>();
    EXPECT_NO_THROW(lista->Clear());
    EXPECT_EQ(lista->Count(), 0);
    EXPECT_EQ(lista->NomeTipo(), "clsListaParametros");
    EXPECT_FALSE(lista->Existe("Ativo"));
}

TEST(clsListaParametros, Add_NewName_AnswersTheParameterAndKeepsTheOrder)
{
    auto lista = Novo<clsListaParametros>();
    Ref<clsParametro> primeiro = lista->Add("Tipo", "R");
    lista->Add("Ativo", "");

    EXPECT_EQ(primeiro->Nome, "Tipo");
    EXPECT_EQ(primeiro->Valor, "R");
    EXPECT_EQ(lista->Count(), 2);
    EXPECT_TRUE(lista->Item(1) == primeiro);
    EXPECT_EQ(lista->Item(2)->Nome, "Ativo");
    EXPECT_EQ(lista->Item(2)->Valor, "");
}

TEST(clsListaParametros, Item_ByName_IgnoresCase)
{
    auto lista = ListaDeTres();
    EXPECT_EQ(lista->Item("Codigo")->Valor, "R-1");
    EXPECT_EQ(lista->Item("CODIGO")->Valor, "R-1");
    EXPECT_EQ(lista->Item("ativo")->Valor, "1");
}

TEST(clsListaParametros, Item_OfMissingNameOrPosition_RaisesFiveOrNine)
{
    auto lista = ListaDeTres();
    for (const char *nome : {"Modelo", "", "1"}) { // a text is a name, never a position
        ConfereFalha([&] { lista->Item(nome); }, 5);
    }
    for (std::int32_t posicao : {0, 4, -1}) {
        ConfereFalha([&] { lista->Item(posicao); }, 9);
    }
    ConfereFalha([] { Novo<clsListaParametros>()->Item(1); }, 9);
}

TEST(clsListaParametros, Add_NameThatIsThereInAnyCase_RaisesAndTheFirstValueStays)
{
    auto lista = ListaDeTres();
    for (const char *nome : {"Tipo", "tipo"}) {
        ConfereFalha([&] { lista->Add(nome, "M"); }, 457);
        EXPECT_EQ(lista->Count(), 3);
        EXPECT_EQ(lista->Item(nome)->Nome, "Tipo");
        EXPECT_EQ(lista->Item(nome)->Valor, "R");
    }
}

TEST(clsListaParametros, Existe_ComparesTheNameExactly)
{
    const auto lista = ListaDeTres();
    EXPECT_TRUE(lista->Existe("Codigo"));
    EXPECT_TRUE(lista->Existe("Ativo"));
    for (const char *outro : {"ATIVO", "", "Ativos"}) {
        EXPECT_FALSE(lista->Existe(outro)) << outro;
    }
}

TEST(clsListaParametros, Remove_ByPositionAndByName_TakesThatOne)
{
    auto lista = ListaDeTres();
    lista->Remove(1);
    EXPECT_EQ(lista->Count(), 2);
    EXPECT_EQ(lista->Item(1)->Nome, "Tipo");
    lista->Remove("ATIVO");
    EXPECT_EQ(lista->Count(), 1);
    EXPECT_FALSE(lista->Existe("Ativo"));
    lista->Add("Codigo", "R-2");
    EXPECT_EQ(lista->Item(2)->Valor, "R-2");
}

TEST(clsListaParametros, Remove_WhatIsNotThere_RaisesAndRemovesNothing)
{
    auto lista = ListaDeTres();
    ConfereFalha([&] { lista->Remove("Modelo"); }, 5);
    ConfereFalha([&] { lista->Remove(0); }, 9);
    ConfereFalha([&] { lista->Remove(4); }, 9);
    EXPECT_EQ(lista->Count(), 3);
}

TEST(clsListaParametros, Clear_ListWithParameters_LeavesNoneAndTheNamesAreFree)
{
    auto lista = ListaDeTres();
    lista->Clear();
    EXPECT_EQ(lista->Count(), 0);
    EXPECT_FALSE(lista->Existe("Tipo"));
    lista->Add("Tipo", "M");
    EXPECT_EQ(lista->Item(1)->Valor, "M");
}

TEST(clsListaParametros, Release_ParameterHeldElsewhere_Stays)
{
    auto lista = ListaDeTres();
    Ref<clsParametro> tipo = lista->Item("Tipo");
    RefFraca<clsParametro> codigo = lista->Item("Codigo");
    lista = nullptr;
    EXPECT_TRUE(codigo.Nada());
    EXPECT_EQ(tipo->Valor, "R");
}

} // namespace
