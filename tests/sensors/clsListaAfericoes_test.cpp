#include "sensors/clsListaAfericoes.h"

#include "sensors/clsSensor.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/MemoriaEscassa.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

Ref<clsAfericao> Acrescenta(const Ref<clsListaAfericoes> &lista, const std::string &numero)
{
    return lista->Add(numero, "M" + numero, DataDe(1, 1, 2025), DataDe(31, 12, 2025), 10);
}

Ref<clsListaAfericoes> ListaDeTres()
{
    auto lista = Novo<clsListaAfericoes>();
    Acrescenta(lista, "um");
    Acrescenta(lista, "dois");
    Acrescenta(lista, "tres");
    return lista;
}

std::vector<std::string> Chaves(const clsListaAfericoes &lista)
{
    std::vector<std::string> chaves;
    for (std::int32_t posicao = 1; posicao <= lista.Count(); ++posicao) {
        chaves.push_back(lista.Item(posicao)->Chave());
    }
    return chaves;
}

std::vector<std::string> Numeros(const clsListaAfericoes &lista)
{
    std::vector<std::string> numeros;
    for (std::int32_t posicao = 1; posicao <= lista.Count(); ++posicao) {
        numeros.push_back(lista.Item(posicao)->Numero);
    }
    return numeros;
}

using Textos = std::vector<std::string>;

Ref<AfericaoED> RegistroCompleto()
{
    auto ED = Novo<AfericaoED>();
    ED->NroIntAfericao = 77;
    ED->Numero = "12345678";
    ED->Marca = "00012345678901";
    ED->DataVerificacao = DataDe(1, 3, 2025);
    ED->DataVencimento = DataDe(28, 2, 2026);
    ED->Ativo = 2;
    ED->NroIntImgCertif = 555;
    ED->TipoAfer = 2;
    ED->PortDimel = "123/15";
    return ED;
}

TEST(clsListaAfericoes, New_IsEmpty)
{
    auto lista = Novo<clsListaAfericoes>();
    EXPECT_EQ(lista->NomeTipo(), "clsListaAfericoes");
    EXPECT_EQ(lista->Count(), 0);
}

TEST(clsListaAfericoes, Add_SetsItsFiveValuesSensorAndKeyAndNothingElse)
{
    auto sensor = Novo<clsSensor>();
    auto lista = sensor->ListaAfericoes();
    auto afericao = lista->Add("12345678", "00012345678901", DataDe(1, 3, 2025), DataDe(28, 2, 2026), 555);
    EXPECT_TRUE(afericao->Sensor() == sensor);
    EXPECT_EQ(afericao->Chave(), "A1");
    EXPECT_EQ(afericao->Numero, "12345678");
    EXPECT_EQ(afericao->Marca, "00012345678901");
    EXPECT_EQ(afericao->DataVerificacao, DataDe(1, 3, 2025));
    EXPECT_EQ(afericao->DataVencimento, DataDe(28, 2, 2026));
    EXPECT_EQ(afericao->NroIntImgCertif, 555);
    EXPECT_FALSE(afericao->Alterado);
    EXPECT_EQ(afericao->NroIntAfericao, 0);
    EXPECT_TRUE(afericao->Ativo);
    EXPECT_EQ(afericao->TipoAfer, 0);
    EXPECT_EQ(afericao->PortDimel, "");
    EXPECT_TRUE(lista->Item(1) == afericao);
    EXPECT_FALSE(sensor->Alterado);
}

TEST(clsListaAfericoes, Add_Several_KeepsTheOrderAndCountsTheKeysUp)
{
    auto lista = ListaDeTres();
    for (int vez = 4; vez <= 12; ++vez) {
        Acrescenta(lista, std::to_string(vez));
    }
    EXPECT_EQ(Chaves(*lista), (Textos{"A1", "A2", "A3", "A4", "A5", "A6", "A7", "A8", "A9", "A10", "A11", "A12"}));
    EXPECT_EQ(Numeros(*lista), (Textos{"um", "dois", "tres", "4", "5", "6", "7", "8", "9", "10", "11", "12"}));
}

TEST(clsListaAfericoes, Add_AfterRemovalFromTheMiddle_KeyIsNotReused)
{
    auto lista = ListaDeTres();
    lista->Remove("A2");
    EXPECT_EQ(Acrescenta(lista, "quatro")->Chave(), "A4");
    EXPECT_EQ(Chaves(*lista), (Textos{"A1", "A3", "A4"}));
    EXPECT_EQ(Numeros(*lista), (Textos{"um", "tres", "quatro"}));
}

TEST(clsListaAfericoes, Add_AfterRemovalOfTheLast_KeyIsNotReused)
{
    auto lista = ListaDeTres();
    lista->Remove(3);
    EXPECT_EQ(Acrescenta(lista, "quatro")->Chave(), "A4");
}

TEST(clsListaAfericoes, Add_AfterClear_RestartsAtA1)
{
    auto lista = ListaDeTres();
    lista->Clear();
    EXPECT_EQ(Acrescenta(lista, "quatro")->Chave(), "A1");
    EXPECT_EQ(lista->Count(), 1);
}

TEST(clsListaAfericoes, Add_Beyond32767_OverflowsAndAddsNothing)
{
    auto lista = Novo<clsListaAfericoes>();
    for (int vez = 1; vez <= 32767; ++vez) {
        Acrescenta(lista, "");
    }
    EXPECT_EQ(lista->Item(32767)->Chave(), "A32767");
    lista->Remove("A1");
    for (int vez = 1; vez <= 2; ++vez) {
        const Falha falha = FalhaLancada([&] { Acrescenta(lista, "a mais"); });
        EXPECT_EQ(falha.Numero, 6);
        EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaAfericoes.Add");
    }
    EXPECT_EQ(lista->Count(), 32766);

    auto fonte = ListaDeTres();
    const Falha falha = FalhaLancada([&] { lista->AddAll(fonte); });
    EXPECT_EQ(falha.Numero, 6);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaAfericoes.Add < clsListaAfericoes.AddAfericao"
                           " < clsListaAfericoes.AddAll");
    EXPECT_EQ(lista->Count(), 32766);

    lista->Clear();
    EXPECT_EQ(Acrescenta(lista, "")->Chave(), "A1");
}

TEST(clsListaAfericoes, Item_KeyInAnotherCase_FindsIt)
{
    auto lista = ListaDeTres();
    EXPECT_TRUE(lista->Item("a2") == lista->Item(2));
}

TEST(clsListaAfericoes, Item_PositionOutOfRange_RaisesFault9)
{
    auto lista = ListaDeTres();
    for (std::int32_t posicao : {0, -1, 4}) {
        const Falha falha = FalhaLancada([&] { lista->Item(posicao); });
        EXPECT_EQ(falha.Numero, 9);
        EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaAfericoes.Item (Property Get)");
    }
}

TEST(clsListaAfericoes, Item_UnknownOrStaleKey_RaisesFault5)
{
    auto lista = ListaDeTres();
    lista->Remove("A2");
    for (const char *chave : {"A2", "A4", "A02", " A1", "S1", ""}) {
        const Falha falha = FalhaLancada([&] { lista->Item(chave); });
        EXPECT_EQ(falha.Numero, 5) << chave;
        EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaAfericoes.Item (Property Get)");
    }
}

TEST(clsListaAfericoes, Item_ByKeyAfterRemovals_EveryKeyIsThatOfItsCalibrationAndNoOtherIsFound)
{
    auto lista = Novo<clsListaAfericoes>();
    for (int numero = 1; numero <= 60; ++numero) {
        Acrescenta(lista, std::to_string(numero));
    }
    for (int numero = 1; numero <= 60; ++numero) {
        if (numero < 4 || (numero > 20 && numero < 33) || numero % 7 == 0) {
            lista->Remove("A" + std::to_string(numero));
        }
    }
    for (int numero = -1; numero <= 62; ++numero) {
        const std::string chave = "A" + std::to_string(numero);
        if (numero < 4 || numero > 60 || (numero > 20 && numero < 33) || numero % 7 == 0) {
            EXPECT_EQ(FalhaLancada([&] { lista->Item(chave); }).Numero, 5) << chave;
        } else {
            EXPECT_EQ(lista->Item(chave)->Numero, std::to_string(numero));
        }
    }
}

TEST(clsListaAfericoes, Item_ByWhatIsNearlyAKey_RaisesFault5)
{
    auto lista = ListaDeTres();
    for (const char *chave : {"A", "1", "A1 ", "A+1", "A-1", "A1x", "AA1", "B1", "A65537", "A99999999999"}) {
        EXPECT_EQ(FalhaLancada([&] { lista->Item(chave); }).Numero, 5) << chave;
        EXPECT_EQ(FalhaLancada([&] { lista->Remove(chave); }).Numero, 5) << chave;
    }
    EXPECT_EQ(FalhaLancada([] { Novo<clsListaAfericoes>()->Item("A1"); }).Numero, 5);
    EXPECT_EQ(lista->Count(), 3);
}

TEST(clsListaAfericoes, Add_TextThatFindsNoMemory_AddsNothing)
{
    auto lista = ListaDeTres();
    const std::string longo(100, 'x');
    bool recusou = true;
    for (std::int64_t n = 1; recusou; ++n) {
        ASSERT_LT(n, 100);
        const std::int32_t antes = lista->Count();
        MemoriaEscassa escassa(n);
        try {
            lista->Add(longo, longo, Data{}, Data{}, 0);
        } catch (const Falha &falha) {
            EXPECT_EQ(falha.Numero, 7);
            EXPECT_TRUE(falha.Fonte.ends_with(" < clsListaAfericoes.Add")) << falha.Fonte;
        }
        recusou = escassa.Recusou();
        EXPECT_EQ(lista->Count(), recusou ? antes : antes + 1);
    }
}

TEST(clsListaAfericoes, AddAllED_AddsEachInOrder)
{
    auto lista = ListaDeTres();
    Colecao<Ref<AfericaoED>> afericoes;
    afericoes.Add(Novo<AfericaoED>());
    afericoes.Add(RegistroCompleto());
    lista->AddAllED(afericoes);
    EXPECT_EQ(Numeros(*lista), (Textos{"um", "dois", "tres", "", "12345678"}));
    EXPECT_EQ(Chaves(*lista), (Textos{"A1", "A2", "A3", "A4", "A5"}));
    EXPECT_FALSE(lista->Item(5)->Ativo);
}

TEST(clsListaAfericoes, AddAllED_OneIsNothingOrTheListHasEnded_RaisesTheFaultOfThatOne)
{
    auto lista = ListaDeTres();
    Colecao<Ref<AfericaoED>> afericoes;
    afericoes.Add(RegistroCompleto());
    afericoes.Add(nullptr);
    const Falha nada = FalhaLancada([&] { lista->AddAllED(afericoes); });
    EXPECT_EQ(nada.Numero, 91);
    EXPECT_EQ(nada.Fonte, "ZTAVOREQUIP < clsListaAfericoes.AddAfericaoED");
    EXPECT_EQ(lista->Count(), 4);
    lista->Finaliza();
    const Falha encerrada = FalhaLancada([&] { lista->AddAllED(afericoes); });
    EXPECT_EQ(encerrada.Numero, 91);
    EXPECT_EQ(encerrada.Fonte, "ZTAVOREQUIP < clsListaAfericoes.Add < clsListaAfericoes.AddAfericaoED");
}

TEST(clsListaAfericoes, Item_Inactive_IsFoundAndCounted)
{
    auto lista = ListaDeTres();
    lista->Item(2)->Ativo = false;
    EXPECT_EQ(lista->Count(), 3);
    EXPECT_FALSE(lista->Item("A2")->Ativo);
}

TEST(clsListaAfericoes, AddAfericaoED_CopiesEveryMember)
{
    auto lista = ListaDeTres();
    auto afericao = lista->AddAfericaoED(RegistroCompleto());
    EXPECT_EQ(afericao->Chave(), "A4");
    EXPECT_TRUE(lista->Item(4) == afericao);
    EXPECT_EQ(afericao->NroIntAfericao, 77);
    EXPECT_EQ(afericao->Numero, "12345678");
    EXPECT_EQ(afericao->Marca, "00012345678901");
    EXPECT_EQ(afericao->DataVerificacao, DataDe(1, 3, 2025));
    EXPECT_EQ(afericao->DataVencimento, DataDe(28, 2, 2026));
    EXPECT_FALSE(afericao->Ativo);
    EXPECT_EQ(afericao->NroIntImgCertif, 555);
    EXPECT_EQ(afericao->TipoAfer, 2);
    EXPECT_EQ(afericao->PortDimel, "123/15");
    EXPECT_FALSE(afericao->Alterado);
}

TEST(clsListaAfericoes, AddAfericaoED_AnyActiveByteButTwo_GivesAnActiveOne)
{
    auto lista = Novo<clsListaAfericoes>();
    EXPECT_TRUE(lista->AddAfericaoED(Novo<AfericaoED>())->Ativo);
    for (std::uint8_t octeto : {std::uint8_t{0}, std::uint8_t{1}, std::uint8_t{3}, std::uint8_t{255}}) {
        auto ED = RegistroCompleto();
        ED->Ativo = octeto;
        EXPECT_TRUE(lista->AddAfericaoED(ED)->Ativo) << int{octeto};
    }
}

TEST(clsListaAfericoes, AddAfericaoED_Nothing_RaisesFault91AndAddsNothing)
{
    auto lista = Novo<clsListaAfericoes>();
    const Falha falha = FalhaLancada([&] { lista->AddAfericaoED(nullptr); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaAfericoes.AddAfericaoED");
    EXPECT_EQ(lista->Count(), 0);
    EXPECT_EQ(Acrescenta(lista, "")->Chave(), "A1");
}

TEST(clsListaAfericoes, AddAfericao_CopiesValuesAndFlagsUnderANewKey)
{
    auto sensor = Novo<clsSensor>();
    auto outro = Novo<clsSensor>();
    auto origem = outro->ListaAfericoes()->AddAfericaoED(RegistroCompleto());
    origem->Alterado = true;
    auto lista = sensor->ListaAfericoes();
    Acrescenta(lista, "um");

    auto copia = lista->AddAfericao(origem);

    EXPECT_FALSE(copia == origem);
    EXPECT_EQ(copia->Chave(), "A2");
    EXPECT_TRUE(copia->Sensor() == sensor);
    EXPECT_EQ(copia->NroIntAfericao, 77);
    EXPECT_EQ(copia->Numero, "12345678");
    EXPECT_EQ(copia->Marca, "00012345678901");
    EXPECT_EQ(copia->DataVerificacao, DataDe(1, 3, 2025));
    EXPECT_EQ(copia->DataVencimento, DataDe(28, 2, 2026));
    EXPECT_FALSE(copia->Ativo);
    EXPECT_EQ(copia->NroIntImgCertif, 555);
    EXPECT_EQ(copia->TipoAfer, 2);
    EXPECT_EQ(copia->PortDimel, "123/15");
    EXPECT_TRUE(copia->Alterado);

    EXPECT_EQ(origem->Chave(), "A1");
    EXPECT_TRUE(origem->Sensor() == outro);
    EXPECT_EQ(outro->ListaAfericoes()->Count(), 1);
    EXPECT_EQ(lista->Count(), 2);
}

TEST(clsListaAfericoes, AddAfericao_Unaltered_CopyReadsUnaltered)
{
    auto origem = Novo<clsAfericao>();
    EXPECT_FALSE(Novo<clsListaAfericoes>()->AddAfericao(origem)->Alterado);
}

TEST(clsListaAfericoes, AddAfericao_OutsideAnyList_ArgumentDoesNotEnter)
{
    auto sensor = Novo<clsSensor>();
    auto nova = Novo<clsAfericao>();
    nova->DefineSensor(sensor);
    nova->Alterado = true;
    auto copia = sensor->ListaAfericoes()->AddAfericao(nova);
    EXPECT_EQ(nova->Chave(), "");
    EXPECT_EQ(copia->Chave(), "A1");
    EXPECT_EQ(copia->NroIntAfericao, 0);
    EXPECT_TRUE(sensor->ListaAfericoes()->Item(1) == copia);
}

TEST(clsListaAfericoes, AddAfericao_Nothing_RaisesFault91)
{
    auto lista = Novo<clsListaAfericoes>();
    const Falha falha = FalhaLancada([&] { lista->AddAfericao(nullptr); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaAfericoes.AddAfericao");
    EXPECT_EQ(lista->Count(), 0);
}

TEST(clsListaAfericoes, AddAll_AppendsInOrderWithFlagsInactiveIncluded)
{
    auto fonte = ListaDeTres();
    fonte->Remove("A1");
    Acrescenta(fonte, "quatro")->Alterado = true;
    fonte->Item("A2")->Ativo = false;
    auto lista = Novo<clsListaAfericoes>();
    Acrescenta(lista, "zero");

    lista->AddAll(fonte);

    EXPECT_EQ(Numeros(*lista), (Textos{"zero", "dois", "tres", "quatro"}));
    EXPECT_EQ(Chaves(*lista), (Textos{"A1", "A2", "A3", "A4"}));
    EXPECT_FALSE(lista->Item(2)->Ativo);
    EXPECT_TRUE(lista->Item(3)->Ativo);
    EXPECT_FALSE(lista->Item(2)->Alterado);
    EXPECT_TRUE(lista->Item(4)->Alterado);
    EXPECT_EQ(Chaves(*fonte), (Textos{"A2", "A3", "A4"}));
    EXPECT_FALSE(lista->Item(2) == fonte->Item(1));
}

TEST(clsListaAfericoes, AddAll_OntoItself_DoublesItAndEnds)
{
    auto lista = ListaDeTres();
    lista->AddAll(lista);
    EXPECT_EQ(Numeros(*lista), (Textos{"um", "dois", "tres", "um", "dois", "tres"}));
    EXPECT_EQ(Chaves(*lista), (Textos{"A1", "A2", "A3", "A4", "A5", "A6"}));
}

TEST(clsListaAfericoes, AddAll_EmptySource_AddsNothing)
{
    auto lista = ListaDeTres();
    lista->AddAll(Novo<clsListaAfericoes>());
    EXPECT_EQ(lista->Count(), 3);
}

TEST(clsListaAfericoes, AddAll_NothingOrEndedSource_RaisesFault91)
{
    auto lista = ListaDeTres();
    auto encerrada = ListaDeTres();
    encerrada->Finaliza();
    for (const Ref<clsListaAfericoes> &fonte : {Ref<clsListaAfericoes>(), encerrada}) {
        const Falha falha = FalhaLancada([&] { lista->AddAll(fonte); });
        EXPECT_EQ(falha.Numero, 91);
        EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaAfericoes.AddAll");
    }
    EXPECT_EQ(lista->Count(), 3);
}

TEST(clsListaAfericoes, Remove_ByPositionOrKey_EndsTheCalibrationAndNoOther)
{
    auto sensor = Novo<clsSensor>();
    auto lista = sensor->ListaAfericoes();
    auto um = Acrescenta(lista, "um");
    auto dois = Acrescenta(lista, "dois");
    auto tres = Acrescenta(lista, "tres");

    lista->Remove(1);
    lista->Remove("a3");

    EXPECT_EQ(Numeros(*lista), Textos{"dois"});
    EXPECT_TRUE(um->Sensor().Nada());
    EXPECT_TRUE(tres->Sensor().Nada());
    EXPECT_TRUE(dois->Sensor() == sensor);
    EXPECT_EQ(um->Numero, "um");
    EXPECT_EQ(um->Chave(), "A1");
    EXPECT_FALSE(sensor->Alterado);
}

TEST(clsListaAfericoes, Remove_OutOfRangeOrUnknown_RaisesAndChangesNothing)
{
    auto lista = ListaDeTres();
    for (std::int32_t posicao : {0, 4}) {
        const Falha falha = FalhaLancada([&] { lista->Remove(posicao); });
        EXPECT_EQ(falha.Numero, 9);
        EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaAfericoes.Remove");
    }
    const Falha falha = FalhaLancada([&] { lista->Remove("A4"); });
    EXPECT_EQ(falha.Numero, 5);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaAfericoes.Remove");
    EXPECT_EQ(Chaves(*lista), (Textos{"A1", "A2", "A3"}));
}

TEST(clsListaAfericoes, Clear_HeldCalibration_StaysUsableWithItsSensor)
{
    auto sensor = Novo<clsSensor>();
    auto lista = sensor->ListaAfericoes();
    auto guardada = Acrescenta(lista, "um");
    RefFraca<clsAfericao> outra = Acrescenta(lista, "dois");

    lista->Clear();

    EXPECT_EQ(lista->Count(), 0);
    EXPECT_TRUE(guardada->Sensor() == sensor);
    EXPECT_EQ(guardada->Chave(), "A1");
    EXPECT_EQ(guardada->Numero, "um");
    EXPECT_TRUE(outra.Nada());
}

TEST(clsListaAfericoes, Clear_EmptyList_DoesNothing)
{
    auto lista = Novo<clsListaAfericoes>();
    lista->Clear();
    EXPECT_EQ(lista->Count(), 0);
}

TEST(clsListaAfericoes, Finaliza_HeldCalibration_IsNotEnded)
{
    auto sensor = Novo<clsSensor>();
    auto lista = sensor->ListaAfericoes();
    auto guardada = Acrescenta(lista, "um");
    lista->Finaliza();
    EXPECT_TRUE(guardada->Sensor() == sensor);
}

TEST(clsListaAfericoes, Finaliza_Twice_IsEndedAllTheSame)
{
    auto lista = ListaDeTres();
    RefFraca<clsAfericao> vigia = lista->Item(2);
    lista->Finaliza();
    lista->Finaliza();
    lista->Clear();
    EXPECT_TRUE(vigia.Nada());
}

TEST(clsListaAfericoes, EveryOperation_AfterFinaliza_RaisesFault91)
{
    auto lista = ListaDeTres();
    auto fonte = ListaDeTres();
    lista->Finaliza();
    const auto confere = [](const Falha &falha, const std::string &fonteFalha) {
        EXPECT_EQ(falha.Numero, 91);
        EXPECT_EQ(falha.Fonte, fonteFalha);
    };
    confere(FalhaLancada([&] { lista->Count(); }), "ZTAVOREQUIP");
    confere(FalhaLancada([&] { lista->Item(1); }), "ZTAVOREQUIP < clsListaAfericoes.Item (Property Get)");
    confere(FalhaLancada([&] { lista->Item("A1"); }), "ZTAVOREQUIP < clsListaAfericoes.Item (Property Get)");
    confere(FalhaLancada([&] { Acrescenta(lista, ""); }), "ZTAVOREQUIP < clsListaAfericoes.Add");
    confere(FalhaLancada([&] { lista->AddAfericaoED(RegistroCompleto()); }),
            "ZTAVOREQUIP < clsListaAfericoes.Add < clsListaAfericoes.AddAfericaoED");
    confere(FalhaLancada([&] { lista->AddAfericao(fonte->Item(1)); }),
            "ZTAVOREQUIP < clsListaAfericoes.Add < clsListaAfericoes.AddAfericao");
    confere(FalhaLancada([&] { lista->AddAll(fonte); }),
            "ZTAVOREQUIP < clsListaAfericoes.Add < clsListaAfericoes.AddAfericao < clsListaAfericoes.AddAll");
    confere(FalhaLancada([&] { lista->Remove(1); }), "ZTAVOREQUIP < clsListaAfericoes.Remove");
    confere(FalhaLancada([&] { lista->Remove("A1"); }), "ZTAVOREQUIP < clsListaAfericoes.Remove");
}

TEST(clsListaAfericoes, ListHeldBeyondItsSensor_IsEnded)
{
    auto sensor = Novo<clsSensor>();
    auto lista = sensor->ListaAfericoes();
    auto guardada = Acrescenta(lista, "um");
    sensor = nullptr;
    EXPECT_TRUE(guardada->Sensor().Nada());
    EXPECT_EQ(FalhaLancada([&] { lista->Count(); }).Numero, 91);
}

TEST(clsListaAfericoes, AddAll_MemoryRefusedAnywhere_LeavesAWholeListAndNoLeak)
{
    const std::int64_t antes = BlocosOcupados();
    bool recusou = true;
    for (std::int64_t n = 1; recusou; ++n) {
        ASSERT_LT(n, 1000);
        auto sensor = Novo<clsSensor>();
        auto lista = sensor->ListaAfericoes();
        auto fonte = ListaDeTres();
        fonte->AddAfericaoED(RegistroCompleto());
        for (int vez = 1; vez <= 100; ++vez) { // their copies do not fit where the others have left room
            Acrescenta(fonte, "outra");
        }
        {
            MemoriaEscassa escassa(n);
            try {
                lista->AddAll(fonte);
            } catch (const Falha &falha) {
                EXPECT_EQ(falha.Numero, 7);
                EXPECT_TRUE(falha.Fonte.ends_with(" < clsListaAfericoes.AddAll")) << falha.Fonte;
            }
            recusou = escassa.Recusou();
        }
        EXPECT_EQ(lista->Count() == 104, !recusou);
        for (std::int32_t posicao = 1; posicao <= lista->Count(); ++posicao) {
            auto afericao = lista->Item(posicao);
            EXPECT_TRUE(lista->Item(afericao->Chave()) == afericao);
            EXPECT_TRUE(afericao->Sensor() == sensor);
        }
        lista->Clear();
        lista->AddAll(fonte);
        EXPECT_EQ(lista->Count(), 104);
        EXPECT_EQ(lista->Item(4)->Numero, "12345678");
    }
    EXPECT_EQ(BlocosOcupados(), antes);
}

TEST(clsListaAfericoes, Primeira_SeveralFulfilTheCondition_FirstInTheOrderOfTheListInactiveOnesIncluded)
{
    auto lista = ListaDeTres();
    lista->Item(2)->Ativo = false;
    int perguntas = 0;
    const auto achada = lista->Primeira([&](const clsAfericao &afericao) {
        ++perguntas;
        return afericao.Numero != "um";
    });
    EXPECT_EQ(achada, lista->Item(2));
    EXPECT_EQ(perguntas, 2); // nobody asks the third
}

TEST(clsListaAfericoes, Primeira_NoneFulfilsTheCondition_Nothing)
{
    EXPECT_TRUE(ListaDeTres()->Primeira([](const clsAfericao &) { return false; }).Nada());
    EXPECT_TRUE(Novo<clsListaAfericoes>()->Primeira([](const clsAfericao &) { return true; }).Nada());
}

TEST(clsListaAfericoes, Primeira_AfterFinaliza_Fault91)
{
    auto lista = ListaDeTres();
    lista->Finaliza();
    const Falha falha = FalhaLancada([&] { lista->Primeira([](const clsAfericao &) { return true; }); });
    EXPECT_EQ(falha.Numero, 91);
}

} // namespace
