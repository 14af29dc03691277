#include "sensors/clsListaAfericoes.h"

#include "tests/sensors/RegistrosCompletos.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

Ref<clsListaAfericoes> Lista(const Textos &numeros = {"um", "dois", "tres"})
{
    auto lista = Novo<clsListaAfericoes>();
    for (const std::string &numero : numeros) {
        Acrescenta(lista, numero);
    }
    return lista;
}

std::string Linha(int numeroChave, const std::string &numero)
{
    return "A" + std::to_string(numeroChave) + CamposDe(numero);
}

TEST(clsListaAfericoes, Item_ByKeyAfterRemovals_EveryKeyIsThatOfItsCalibrationAndNoOtherIsFound)
{
    auto lista = Novo<clsListaAfericoes>();
    EXPECT_EQ(lista->NomeTipo(), "clsListaAfericoes");
    for (int numero = 1; numero <= 60; ++numero) {
        Acrescenta(lista, std::to_string(numero));
    }
    const auto retirada = [](int numero) { return numero < 4 || (numero > 20 && numero < 33) || numero % 7 == 0; };
    for (int numero = 1; numero <= 60; ++numero) {
        if (retirada(numero)) {
            lista->Remove("A" + std::to_string(numero));
        }
    }
    for (int numero = -1; numero <= 62; ++numero) {
        const std::string chave = "A" + std::to_string(numero);
        if (numero > 60 || retirada(numero)) {
            EXPECT_EQ(FalhaLancada([&] { lista->Item(chave); }).Numero, 5) << chave;
        } else {
            EXPECT_EQ(lista->Item(chave)->Numero, std::to_string(numero));
        }
    }
}

TEST(clsListaAfericoes, Item_ByWhatIsNearlyAKey_RaisesFault5)
{
    auto lista = Lista();
    for (const char *chave : {"A", "1", "A1 ", "A+1", "A-1", "A1x", "AA1", "B1", "A65537", "A99999999999"}) {
        EXPECT_EQ(FalhaLancada([&] { lista->Item(chave); }).Numero, 5) << chave;
        EXPECT_EQ(FalhaLancada([&] { lista->Remove(chave); }).Numero, 5) << chave;
    }
    EXPECT_EQ(FalhaLancada([] { Novo<clsListaAfericoes>()->Item("A1"); }).Numero, 5);
    EXPECT_EQ(lista->Count(), 3);
}

TEST(clsListaAfericoes, Add_TextThatFindsNoMemory_AddsNothing)
{
    const std::string longo(100, 'x');
    ComCadaRecusa(
        " < clsListaAfericoes.Add", [] { return Lista(); },
        [&](const auto &lista) { lista->Add(longo, longo, Data{}, Data{}, 0); },
        [](const auto &lista, bool recusou) { EXPECT_EQ(lista->Count(), recusou ? 3 : 4); });
}

TEST(clsListaAfericoes, AddAllED_Several_AddsEachInOrder)
{
    auto lista = Lista();
    Colecao<Ref<AfericaoED>> afericoes;
    afericoes.Add(Novo<AfericaoED>());
    afericoes.Add(AfericaoCompletaED());
    lista->AddAllED(afericoes);
    EXPECT_EQ(Retratos(*lista),
              (Textos{Linha(1, "um"), Linha(2, "dois"), Linha(3, "tres"), "A4{0, , , 00:00:00, 00:00:00, 0, 0, }",
                      "A5" + CamposDaAfericao + " inativo"}));
}

TEST(clsListaAfericoes, AddAllED_OneIsNothingOrTheListHasEnded_RaisesTheFaultOfThatOne)
{
    auto lista = Lista();
    Colecao<Ref<AfericaoED>> afericoes;
    afericoes.Add(AfericaoCompletaED());
    afericoes.Add(nullptr);
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < clsListaAfericoes.AddAfericaoED", [&] { lista->AddAllED(afericoes); }));
    EXPECT_EQ(lista->Count(), 4);
    lista->Finaliza();
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < clsListaAfericoes.Add < clsListaAfericoes.AddAfericaoED",
                      [&] { lista->AddAllED(afericoes); }));
}

TEST(clsListaAfericoes, AddAll_AppendsInOrderWithFlagsInactiveIncluded)
{
    auto fonte = Lista();
    fonte->Remove("A1");
    Acrescenta(fonte, "quatro")->Alterado = true;
    fonte->Item("A2")->Ativo = false;
    auto lista = Lista({"zero"});

    lista->AddAll(fonte);
    lista->AddAll(Novo<clsListaAfericoes>());

    EXPECT_EQ(Retratos(*lista), (Textos{Linha(1, "zero"), Linha(2, "dois") + " inativo", Linha(3, "tres"),
                                        Linha(4, "quatro") + " alterado"}));
    EXPECT_EQ(Retratos(*fonte),
              (Textos{Linha(2, "dois") + " inativo", Linha(3, "tres"), Linha(4, "quatro") + " alterado"}));
    EXPECT_FALSE(lista->Item(2) == fonte->Item(1));
}

TEST(clsListaAfericoes, AddAll_OntoItself_DoublesItAndEnds)
{
    auto lista = Lista();
    lista->AddAll(lista);
    EXPECT_EQ(Retratos(*lista), (Textos{Linha(1, "um"), Linha(2, "dois"), Linha(3, "tres"), Linha(4, "um"),
                                        Linha(5, "dois"), Linha(6, "tres")}));
}

TEST(clsListaAfericoes, AddAll_ThatCannotBe_RaisesWithThePath)
{
    auto lista = Lista();
    auto encerrada = Lista();
    encerrada->Finaliza();
    for (const Ref<clsListaAfericoes> &fonte : {Ref<clsListaAfericoes>(), encerrada}) {
        EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < clsListaAfericoes.AddAll", [&] { lista->AddAll(fonte); }));
    }
    EXPECT_EQ(lista->Count(), 3);
    const std::string noAdd =
        "ZTAVOREQUIP < clsListaAfericoes.Add < clsListaAfericoes.AddAfericao < clsListaAfericoes.AddAll";
    EXPECT_TRUE(Lanca(91, noAdd, [&] { encerrada->AddAll(lista); }));
    while (lista->Count() < 32767) {
        Acrescenta(lista, "");
    }
    EXPECT_TRUE(Lanca(6, noAdd, [&] { lista->AddAll(Lista()); }));
    EXPECT_EQ(lista->Count(), 32767);
}

TEST(clsListaAfericoes, ClearAndFinaliza_HeldCalibration_StaysUsableWithItsSensor)
{
    for (const bool limpa : {true, false}) {
        auto sensor = Novo<clsSensor>();
        auto lista = sensor->ListaAfericoes();
        auto guardada = Acrescenta(lista, "um");
        RefFraca<clsAfericao> outra = Acrescenta(lista, "dois");
        limpa ? lista->Clear() : lista->Finaliza();
        EXPECT_TRUE(guardada->Sensor() == sensor);
        EXPECT_EQ(Retrato(*guardada), Linha(1, "um"));
        EXPECT_TRUE(outra.Nada());
    }
}

TEST(clsListaAfericoes, AddAll_MemoryRefusedAnywhere_LeavesAWholeListAndNoLeak)
{
    ComCadaRecusa(
        " < clsListaAfericoes.AddAll",
        [] {
            auto fonte = Lista();
            fonte->AddAfericaoED(AfericaoCompletaED());
            for (int vez = 1; vez <= 100; ++vez) { // their copies do not fit where the others have left room
                Acrescenta(fonte, "outra");
            }
            auto sensor = Novo<clsSensor>();
            sensor->ListaAfericoes(); // which creates it
            return std::pair(sensor, fonte);
        },
        [](const auto &par) { par.first->ListaAfericoes()->AddAll(par.second); },
        [](const auto &par, bool recusou) {
            auto lista = par.first->ListaAfericoes();
            EXPECT_EQ(lista->Count() == 104, !recusou);
            for (std::int32_t posicao = 1; posicao <= lista->Count(); ++posicao) {
                auto afericao = lista->Item(posicao);
                EXPECT_TRUE(lista->Item(afericao->Chave()) == afericao);
                EXPECT_TRUE(afericao->Sensor() == par.first);
            }
            lista->Clear();
            lista->AddAll(par.second);
            EXPECT_EQ(lista->Count(), 104);
            EXPECT_EQ(lista->Item(4)->Numero, "12345678");
        });
}

TEST(clsListaAfericoes, Primeira_SeveralFulfilTheCondition_FirstInTheOrderOfTheListInactiveOnesIncluded)
{
    auto lista = Lista();
    lista->Item(2)->Ativo = false;
    int perguntas = 0;
    const auto achada = lista->Primeira([&](const clsAfericao &afericao) {
        ++perguntas;
        return afericao.Numero != "um";
    });
    EXPECT_EQ(achada, lista->Item(2));
    EXPECT_EQ(perguntas, 2); // nobody asks the third
}

TEST(clsListaAfericoes, Primeira_NoneFulfilsTheConditionOrTheListHasEnded_NothingOrFault91)
{
    auto lista = Lista();
    EXPECT_TRUE(lista->Primeira([](const clsAfericao &) { return false; }).Nada());
    lista->Clear();
    const auto qualquer = [](const clsAfericao &) { return true; };
    EXPECT_TRUE(lista->Primeira(qualquer).Nada());
    lista->Finaliza();
    EXPECT_EQ(FalhaLancada([&] { lista->Primeira(qualquer); }).Numero, 91);
}

} // namespace
