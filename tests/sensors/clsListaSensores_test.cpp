#include "sensors/clsListaSensores.h"

#include "equipment/clsEquipto.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/MemoriaEscassa.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Textos = std::vector<std::string>;

Ref<clsListaSensores> ListaDeTres()
{
    auto lista = Novo<clsListaSensores>();
    lista->Add(1, "um");
    lista->Add(2, "dois");
    lista->Add(3, "tres");
    return lista;
}

Textos Chaves(const clsListaSensores &lista)
{
    Textos chaves;
    for (std::int32_t posicao = 1; posicao <= lista.Count(); ++posicao) {
        chaves.push_back(lista.Item(posicao)->Chave());
    }
    return chaves;
}

Textos Locais(const clsListaSensores &lista)
{
    Textos locais;
    for (std::int32_t posicao = 1; posicao <= lista.Count(); ++posicao) {
        locais.push_back(lista.Item(posicao)->LocalInfr);
    }
    return locais;
}

Ref<SensorED> RegistroCompleto()
{
    auto ED = Novo<SensorED>();
    ED->NroIntSensor = 900;
    ED->NroSensor = 3;
    ED->LocalInfr = "Av. São João, 1500";
    ED->CodLograd = 4711;
    ED->EndCep = 1310100;
    ED->EndNro = 1500;
    ED->EndCompl = "Km 2";
    ED->EndDescr = "Av. São João";
    ED->SentidoVia = "C";
    ED->Ativo = 2;
    return ED;
}

ListaDe<AfericaoED> Afericoes(const Textos &numeros)
{
    auto afericoes = Novo<Colecao<Ref<AfericaoED>>>();
    for (const std::string &numero : numeros) {
        auto ED = Novo<AfericaoED>();
        ED->Numero = numero;
        afericoes->Add(ED);
    }
    return afericoes;
}

TEST(clsListaSensores, New_IsEmpty)
{
    auto lista = Novo<clsListaSensores>();
    EXPECT_EQ(lista->NomeTipo(), "clsListaSensores");
    EXPECT_EQ(lista->Count(), 0);
}

TEST(clsListaSensores, Add_SetsNumberPlaceKeyAndEquipmentAndNothingElse)
{
    auto equipto = Novo<clsEquipto>();
    auto lista = equipto->ListaSensores();
    auto sensor = lista->Add(7, "Rua A");
    EXPECT_TRUE(sensor->Equipto() == equipto);
    EXPECT_EQ(sensor->Chave(), "S1");
    EXPECT_EQ(sensor->NroSensor, 7);
    EXPECT_EQ(sensor->LocalInfr, "Rua A");
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_TRUE(sensor->Ativo);
    EXPECT_EQ(sensor->NroIntSensor, 0);
    EXPECT_EQ(sensor->CodLograd, 0);
    EXPECT_EQ(sensor->ListaAfericoes()->Count(), 0);
    EXPECT_TRUE(lista->Item(1) == sensor);
    EXPECT_FALSE(equipto->Alterado);
}

TEST(clsListaSensores, Add_NumberOneWithoutAddress_IsUnalteredAndActive)
{
    auto lista = Novo<clsListaSensores>();
    auto sensor = lista->Add(1, "");
    EXPECT_EQ(sensor->NroSensor, 1);
    EXPECT_EQ(sensor->LocalInfr, "");
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_TRUE(sensor->Ativo);
}

TEST(clsListaSensores, Add_AfterRemovalFromTheMiddle_KeyIsNotReused)
{
    auto lista = ListaDeTres();
    lista->Remove("S2");
    EXPECT_EQ(lista->Add(2, "quatro")->Chave(), "S4");
    EXPECT_EQ(Chaves(*lista), (Textos{"S1", "S3", "S4"}));
    EXPECT_EQ(Locais(*lista), (Textos{"um", "tres", "quatro"}));
}

TEST(clsListaSensores, Add_AfterClear_RestartsAtS1)
{
    auto lista = ListaDeTres();
    lista->Clear();
    EXPECT_EQ(lista->Add(1, "")->Chave(), "S1");
}

TEST(clsListaSensores, Add_SameNumberTwice_KeepsBoth)
{
    auto lista = Novo<clsListaSensores>();
    lista->Add(3, "velho")->Ativo = false;
    lista->Add(3, "novo");
    EXPECT_EQ(lista->Count(), 2);
    EXPECT_EQ(Chaves(*lista), (Textos{"S1", "S2"}));
}

TEST(clsListaSensores, Add_Beyond32767_OverflowsAndAddsNothing)
{
    auto lista = Novo<clsListaSensores>();
    for (int vez = 1; vez <= 32767; ++vez) {
        lista->Add(1, "");
    }
    EXPECT_EQ(lista->Item(32767)->Chave(), "S32767");
    const Falha falha = FalhaLancada([&] { lista->Add(1, ""); });
    EXPECT_EQ(falha.Numero, 6);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaSensores.Add");
    EXPECT_EQ(FalhaLancada([&] { lista->AddSensorED(RegistroCompleto()); }).Fonte,
              "ZTAVOREQUIP < clsListaSensores.Add < clsListaSensores.AddSensorED");
    EXPECT_EQ(FalhaLancada([&] { lista->AddSensor(Novo<clsSensor>()); }).Fonte,
              "ZTAVOREQUIP < clsListaSensores.Add < clsListaSensores.AddSensor");
    EXPECT_EQ(lista->Count(), 32767);
    lista->Clear();
    EXPECT_EQ(lista->Add(1, "")->Chave(), "S1");
}

TEST(clsListaSensores, Item_PositionOrKey_FindsTheSameInactiveIncluded)
{
    auto lista = ListaDeTres();
    lista->Item(2)->Ativo = false;
    EXPECT_TRUE(lista->Item(2) == lista->Item("S2"));
    EXPECT_TRUE(lista->Item(2) == lista->Item("s2"));
    EXPECT_FALSE(lista->Item("S2")->Ativo);
    EXPECT_EQ(lista->Count(), 3);
}

TEST(clsListaSensores, Item_PositionOutOfRangeOrUnknownKey_Raises)
{
    auto lista = ListaDeTres();
    for (std::int32_t posicao : {0, -1, 4}) {
        const Falha falha = FalhaLancada([&] { lista->Item(posicao); });
        EXPECT_EQ(falha.Numero, 9);
        EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaSensores.Item (Property Get)");
    }
    lista->Remove("S3");
    for (const char *chave : {"S3", "S4", "A1", ""}) {
        const Falha falha = FalhaLancada([&] { lista->Item(chave); });
        EXPECT_EQ(falha.Numero, 5);
        EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaSensores.Item (Property Get)");
    }
}

TEST(clsListaSensores, AddSensorED_CopiesEveryMember)
{
    auto equipto = Novo<clsEquipto>();
    auto lista = equipto->ListaSensores();
    auto sensor = lista->AddSensorED(RegistroCompleto());
    EXPECT_TRUE(sensor->Equipto() == equipto);
    EXPECT_EQ(sensor->Chave(), "S1");
    EXPECT_EQ(sensor->NroIntSensor, 900);
    EXPECT_EQ(sensor->NroSensor, 3);
    EXPECT_EQ(sensor->LocalInfr, "Av. São João, 1500");
    EXPECT_EQ(sensor->CodLograd, 4711);
    EXPECT_EQ(sensor->EndCep, 1310100);
    EXPECT_EQ(sensor->EndNro, 1500);
    EXPECT_EQ(sensor->EndCompl, "Km 2");
    EXPECT_EQ(sensor->EndDescr, "Av. São João");
    EXPECT_EQ(sensor->SentidoVia, "C");
    EXPECT_FALSE(sensor->Ativo);
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_EQ(sensor->ListaAfericoes()->Count(), 0);
}

TEST(clsListaSensores, AddSensorED_WithoutStreet_CopiesTheAddressAllTheSame)
{
    auto ED = RegistroCompleto();
    ED->CodLograd = 0;
    auto sensor = Novo<clsListaSensores>()->AddSensorED(ED);
    EXPECT_EQ(sensor->CodLograd, 0);
    EXPECT_EQ(sensor->EndCompl, "Km 2");
}

TEST(clsListaSensores, AddSensorED_AnyActiveByteButTwo_GivesAnActiveOne)
{
    auto lista = Novo<clsListaSensores>();
    EXPECT_TRUE(lista->AddSensorED(Novo<SensorED>())->Ativo);
    for (std::uint8_t octeto : {std::uint8_t{0}, std::uint8_t{1}, std::uint8_t{3}, std::uint8_t{255}}) {
        auto ED = RegistroCompleto();
        ED->Ativo = octeto;
        EXPECT_TRUE(lista->AddSensorED(ED)->Ativo) << int{octeto};
    }
}

TEST(clsListaSensores, AddSensorED_WithCalibrations_BringsThemInOrderUnaltered)
{
    auto ED = RegistroCompleto();
    ED->Afericoes = Afericoes({"b", "a", "c"});
    auto sensores = Novo<clsListaSensores>();
    auto sensor = sensores->AddSensorED(ED);
    auto lista = sensor->ListaAfericoes();
    ASSERT_EQ(lista->Count(), 3);
    const char *numeros[] = {"b", "a", "c"};
    for (std::int32_t posicao = 1; posicao <= 3; ++posicao) {
        EXPECT_EQ(lista->Item(posicao)->Numero, numeros[posicao - 1]);
        EXPECT_EQ(lista->Item(posicao)->Chave(), "A" + std::to_string(posicao));
        EXPECT_TRUE(lista->Item(posicao)->Sensor() == sensor);
        EXPECT_FALSE(lista->Item(posicao)->Alterado);
    }
    EXPECT_FALSE(sensor->Alterado);
}

TEST(clsListaSensores, AddSensorED_NothingOrNothingInside_RaisesFault91)
{
    auto lista = Novo<clsListaSensores>();
    Falha falha = FalhaLancada([&] { lista->AddSensorED(nullptr); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaSensores.AddSensorED");
    EXPECT_EQ(lista->Count(), 0);

    auto ED = RegistroCompleto();
    ED->Afericoes = Afericoes({"a"});
    ED->Afericoes.Valor()->Add(nullptr);
    falha = FalhaLancada([&] { lista->AddSensorED(ED); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaAfericoes.AddAfericaoED < clsListaSensores.AddSensorED");
    ASSERT_EQ(lista->Count(), 1); // with its fields and the calibrations before that one
    EXPECT_EQ(lista->Item(1)->NroIntSensor, 900);
    EXPECT_FALSE(lista->Item(1)->Ativo);
    EXPECT_EQ(lista->Item(1)->ListaAfericoes()->Count(), 1);
}

TEST(clsListaSensores, AddSensor_CopiesFieldsFlagsAndCalibrationsUnderANewKey)
{
    auto equipto = Novo<clsEquipto>();
    auto outro = Novo<clsEquipto>();
    auto ED = RegistroCompleto();
    ED->Afericoes = Afericoes({"um", "dois"});
    auto origem = outro->ListaSensores()->AddSensorED(ED);
    origem->Alterado = true;
    origem->ListaAfericoes()->Item(2)->Alterado = true;
    auto lista = equipto->ListaSensores();
    lista->Add(1, "");

    auto copia = lista->AddSensor(origem);

    EXPECT_FALSE(copia == origem);
    EXPECT_TRUE(lista->Item(2) == copia);
    EXPECT_TRUE(copia->Equipto() == equipto);
    EXPECT_EQ(copia->Chave(), "S2");
    EXPECT_TRUE(copia->Alterado);
    EXPECT_EQ(copia->NroIntSensor, 900);
    EXPECT_EQ(copia->NroSensor, 3);
    EXPECT_EQ(copia->LocalInfr, "Av. São João, 1500");
    EXPECT_EQ(copia->CodLograd, 4711);
    EXPECT_EQ(copia->EndCep, 1310100);
    EXPECT_EQ(copia->EndNro, 1500);
    EXPECT_EQ(copia->EndCompl, "Km 2");
    EXPECT_EQ(copia->EndDescr, "Av. São João");
    EXPECT_EQ(copia->SentidoVia, "C");
    EXPECT_FALSE(copia->Ativo);
    ASSERT_EQ(copia->ListaAfericoes()->Count(), 2);
    EXPECT_FALSE(copia->ListaAfericoes()->Item(1)->Alterado);
    EXPECT_TRUE(copia->ListaAfericoes()->Item(2)->Alterado);
    EXPECT_TRUE(copia->ListaAfericoes()->Item(2)->Sensor() == copia);

    EXPECT_EQ(origem->Chave(), "S1");
    EXPECT_TRUE(origem->Equipto() == outro);
    EXPECT_TRUE(origem->ListaAfericoes()->Item(1)->Sensor() == origem);
    EXPECT_EQ(outro->ListaSensores()->Count(), 1);
}

TEST(clsListaSensores, AddSensor_NewOneOutsideAnyList_OnlyTheCopyGetsAKey)
{
    auto equipto = Novo<clsEquipto>();
    auto novo = Novo<clsSensor>();
    novo->DefineEquipto(equipto);
    novo->NroSensor = 1;
    novo->Alterado = true;
    auto copia = equipto->ListaSensores()->AddSensor(novo);
    EXPECT_EQ(novo->Chave(), "");
    EXPECT_EQ(copia->Chave(), "S1");
    EXPECT_EQ(copia->NroIntSensor, 0);
    EXPECT_TRUE(copia->Alterado);
}

TEST(clsListaSensores, AddSensor_NothingOrEndedCalibrations_RaisesFault91)
{
    auto lista = Novo<clsListaSensores>();
    Falha falha = FalhaLancada([&] { lista->AddSensor(nullptr); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaSensores.AddSensor");

    auto origem = Novo<clsSensor>();
    origem->NroIntSensor = 900;
    origem->Alterado = true;
    origem->Ativo = false;
    origem->ListaAfericoes()->Finaliza();
    falha = FalhaLancada([&] { lista->AddSensor(origem); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaAfericoes.AddAll < clsListaSensores.AddSensor");
    ASSERT_EQ(lista->Count(), 1); // with its fields, which come before the calibrations
    EXPECT_EQ(lista->Item(1)->NroIntSensor, 900);
    EXPECT_TRUE(lista->Item(1)->Alterado);
    EXPECT_FALSE(lista->Item(1)->Ativo);
}

TEST(clsListaSensores, Remove_ByPositionOrKey_EndsTheSensorAndNoOther)
{
    auto equipto = Novo<clsEquipto>();
    auto lista = equipto->ListaSensores();
    auto um = lista->Add(1, "um");
    auto dois = lista->Add(2, "dois");
    auto tres = lista->Add(3, "tres");
    auto afericoes = um->ListaAfericoes();

    lista->Remove(1);
    lista->Remove("s3");

    EXPECT_EQ(Locais(*lista), Textos{"dois"});
    EXPECT_TRUE(um->Equipto().Nada());
    EXPECT_TRUE(tres->Equipto().Nada());
    EXPECT_TRUE(dois->Equipto() == equipto);
    EXPECT_EQ(FalhaLancada([&] { afericoes->Count(); }).Numero, 91);
    EXPECT_EQ(um->LocalInfr, "um");
    EXPECT_EQ(um->Chave(), "S1");
}

TEST(clsListaSensores, Remove_OutOfRangeOrUnknown_RaisesAndChangesNothing)
{
    auto lista = ListaDeTres();
    for (std::int32_t posicao : {0, 4}) {
        const Falha falha = FalhaLancada([&] { lista->Remove(posicao); });
        EXPECT_EQ(falha.Numero, 9);
        EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaSensores.Remove");
    }
    const Falha falha = FalhaLancada([&] { lista->Remove("S4"); });
    EXPECT_EQ(falha.Numero, 5);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaSensores.Remove");
    EXPECT_EQ(Chaves(*lista), (Textos{"S1", "S2", "S3"}));
}

TEST(clsListaSensores, Clear_HeldSensor_IsEnded)
{
    auto equipto = Novo<clsEquipto>();
    auto lista = equipto->ListaSensores();
    auto guardado = lista->Add(1, "um");
    auto afericoes = guardado->ListaAfericoes();
    auto afericao = afericoes->Add("1", "", {}, {}, 0);
    lista->Clear();
    EXPECT_EQ(lista->Count(), 0);
    EXPECT_TRUE(guardado->Equipto().Nada());
    EXPECT_EQ(FalhaLancada([&] { afericoes->Count(); }).Numero, 91);
    EXPECT_TRUE(afericao->Sensor() == guardado);
}

TEST(clsListaSensores, Finaliza_Twice_ThenClear_DoesNothing)
{
    auto equipto = Novo<clsEquipto>();
    auto lista = equipto->ListaSensores();
    auto guardado = lista->Add(1, "um");
    lista->Finaliza();
    lista->Finaliza();
    lista->Clear();
    EXPECT_TRUE(guardado->Equipto().Nada());
}

TEST(clsListaSensores, EveryOperation_AfterFinaliza_RaisesFault91)
{
    auto lista = ListaDeTres();
    lista->Finaliza();
    const auto confere = [](const Falha &falha, const std::string &fonte) {
        EXPECT_EQ(falha.Numero, 91);
        EXPECT_EQ(falha.Fonte, fonte);
    };
    confere(FalhaLancada([&] { lista->Count(); }), "ZTAVOREQUIP");
    confere(FalhaLancada([&] { lista->Item(1); }), "ZTAVOREQUIP < clsListaSensores.Item (Property Get)");
    confere(FalhaLancada([&] { lista->Item("S1"); }), "ZTAVOREQUIP < clsListaSensores.Item (Property Get)");
    confere(FalhaLancada([&] { lista->Add(1, ""); }), "ZTAVOREQUIP < clsListaSensores.Add");
    confere(FalhaLancada([&] { lista->AddSensorED(RegistroCompleto()); }),
            "ZTAVOREQUIP < clsListaSensores.Add < clsListaSensores.AddSensorED");
    confere(FalhaLancada([&] { lista->AddSensor(Novo<clsSensor>()); }),
            "ZTAVOREQUIP < clsListaSensores.Add < clsListaSensores.AddSensor");
    confere(FalhaLancada([&] { lista->Remove(1); }), "ZTAVOREQUIP < clsListaSensores.Remove");
    confere(FalhaLancada([&] { lista->Remove("S1"); }), "ZTAVOREQUIP < clsListaSensores.Remove");
}

TEST(clsListaSensores, Dropped_HeldSensorIsEndedAndTheOthersAreGone)
{
    auto equipto = Novo<clsEquipto>();
    auto lista = Novo<clsListaSensores>();
    lista->DefineEquipto(equipto);
    auto guardado = lista->Add(1, "um");
    RefFraca<clsSensor> outro = lista->Add(2, "dois");
    lista = nullptr;
    EXPECT_TRUE(guardado->Equipto().Nada());
    EXPECT_TRUE(outro.Nada());
}

TEST(clsListaSensores, AddSensorED_MemoryRefusedAnywhere_WorksOnTheNextTryAndNoLeak)
{
    const std::int64_t antes = BlocosOcupados();
    bool recusou = true;
    for (std::int64_t n = 1; recusou; ++n) {
        ASSERT_LT(n, 1000);
        auto ED = RegistroCompleto();
        ED->Afericoes = Afericoes({"um", "dois"});
        auto lista = ListaDeTres();
        {
            MemoriaEscassa escassa(n);
            try {
                lista->AddSensorED(ED);
            } catch (const Falha &falha) {
                EXPECT_EQ(falha.Numero, 7);
                EXPECT_TRUE(falha.Fonte.ends_with(" < clsListaSensores.AddSensorED")) << falha.Fonte;
            }
            recusou = escassa.Recusou();
        }
        lista->Clear();
        EXPECT_EQ(lista->AddSensorED(ED)->ListaAfericoes()->Count(), 2);
    }
    EXPECT_EQ(BlocosOcupados(), antes);
}

} // namespace
