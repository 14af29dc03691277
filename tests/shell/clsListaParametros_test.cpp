#include "shell/clsListaParametros.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

Falha FalhaDe(const std::function<void()> &comando)
{
    try {
        comando();
    } catch (const Falha &falha) {
        return falha;
    }
    ADD_FAILURE() << "nothing was raised";
    return Falha(0, "", "");
}

// The collection's own fault, to which the list adds nothing.
void ConfereFalha(const std::function<void()> &comando, std::int32_t numero)
{
    const Falha falha = FalhaDe(comando);
    EXPECT_EQ(falha.Numero, numero);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP");
}

Ref<clsListaParametros> ListaDeTres()
{
    auto lista = Novo<clsListaParametros>();
    lista->Add("Codigo", "R-1");
    lista->Add("Tipo", "R");
    lista->Add("Ativo", "1");
    return lista;
}

TEST(clsParametro, Fresh_NameAndValueAreEmpty)
{
    clsParametro parametro;
    EXPECT_EQ(parametro.Nome, "");
    EXPECT_EQ(parametro.Valor, "");
    EXPECT_EQ(parametro.NomeTipo(), "clsParametro");
}

TEST(clsListaParametros, Count_OfFreshList_IsZero)
{
    EXPECT_EQ(Novo<clsListaParametros>()->Count(), 0);
    EXPECT_EQ(Novo<clsListaParametros>()->NomeTipo(), "clsListaParametros");
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

TEST(clsListaParametros, Item_OfMissingName_RaisesFive)
{
    auto lista = ListaDeTres();
    ConfereFalha([&] { lista->Item("Modelo"); }, 5);
    ConfereFalha([&] { lista->Item(""); }, 5);
    ConfereFalha([&] { lista->Item("1"); }, 5); // a text is a name, never a position
}

TEST(clsListaParametros, Item_OutsideThePositions_RaisesNine)
{
    auto lista = ListaDeTres();
    ConfereFalha([&] { lista->Item(0); }, 9);
    ConfereFalha([&] { lista->Item(4); }, 9);
    ConfereFalha([&] { lista->Item(-1); }, 9);
    ConfereFalha([] { Novo<clsListaParametros>()->Item(1); }, 9);
}

TEST(clsListaParametros, Add_NameThatIsThere_RaisesAndTheFirstValueStays)
{
    auto lista = ListaDeTres();
    ConfereFalha([&] { lista->Add("Tipo", "M"); }, 457);
    EXPECT_EQ(lista->Count(), 3);
    EXPECT_EQ(lista->Item("Tipo")->Valor, "R");
}

TEST(clsListaParametros, Add_NameThatDiffersInCase_CollidesAllTheSame)
{
    auto lista = Novo<clsListaParametros>();
    lista->Add("X", "1");
    ConfereFalha([&] { lista->Add("x", "2"); }, 457);
    EXPECT_EQ(lista->Count(), 1);
    EXPECT_EQ(lista->Item("x")->Nome, "X");
    EXPECT_EQ(lista->Item("x")->Valor, "1");
}

TEST(clsListaParametros, Existe_ComparesTheNameExactly)
{
    auto lista = Novo<clsListaParametros>();
    lista->Add("x", "1");
    EXPECT_TRUE(lista->Existe("x"));
    EXPECT_FALSE(lista->Existe("X"));
    EXPECT_FALSE(lista->Existe(""));
    EXPECT_FALSE(lista->Existe("xx"));
}

TEST(clsListaParametros, Existe_LastOfSeveral_IsFound)
{
    EXPECT_TRUE(ListaDeTres()->Existe("Ativo"));
    EXPECT_FALSE(Novo<clsListaParametros>()->Existe("Ativo"));
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

TEST(clsListaParametros, Clear_EmptyList_HasNoEffect)
{
    auto lista = Novo<clsListaParametros>();
    EXPECT_NO_THROW(lista->Clear());
    EXPECT_EQ(lista->Count(), 0);
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
