#include "sensors/clsSensor.h"

#include "equipment/clsEquipto.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/MemoriaEscassa.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

Ref<clsAfericao> Acrescenta(const Ref<clsSensor> &sensor, const std::string &numero)
{
    return sensor->ListaAfericoes()->Add(numero, "M" + numero, DataDe(1, 1, 2025), DataDe(31, 12, 2025), 10);
}

Ref<clsSensor> SensorCompleto()
{
    auto sensor = Novo<clsSensor>();
    sensor->NroIntSensor = 900;
    sensor->NroSensor = 3;
    sensor->LocalInfr = "Av. São João, 1500, sentido centro";
    sensor->CodLograd = 4711;
    sensor->EndCep = 1310100;
    sensor->EndNro = 1500;
    sensor->EndCompl = "Km 2";
    sensor->EndDescr = "Av. São João";
    sensor->SentidoVia = "C";
    return sensor;
}

// Names of the members that were written.
std::set<std::string> Escritos(const SensorED &ED)
{
    std::set<std::string> nomes;
    ED.CadaMembro([&](std::string_view nome, const auto &campo) {
        if (campo.Escrito()) {
            nomes.insert(std::string(nome));
        }
    });
    return nomes;
}

TEST(clsSensor, New_HasDefaults)
{
    auto sensor = Novo<clsSensor>();
    EXPECT_EQ(sensor->NomeTipo(), "clsSensor");
    EXPECT_TRUE(sensor->Equipto().Nada());
    EXPECT_EQ(sensor->Chave(), "");
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_EQ(sensor->NroIntSensor, 0);
    EXPECT_EQ(sensor->NroSensor, 0);
    EXPECT_EQ(sensor->LocalInfr, "");
    EXPECT_EQ(sensor->CodLograd, 0);
    EXPECT_EQ(sensor->EndCep, 0);
    EXPECT_EQ(sensor->EndNro, 0);
    EXPECT_EQ(sensor->EndCompl, "");
    EXPECT_EQ(sensor->EndDescr, "");
    EXPECT_EQ(sensor->SentidoVia, "");
    EXPECT_TRUE(sensor->Ativo);
}

TEST(clsSensor, ListaAfericoes_FirstRead_CreatesItWithTheSensorAndKeepsIt)
{
    auto sensor = Novo<clsSensor>();
    auto lista = sensor->ListaAfericoes();
    EXPECT_EQ(lista->Count(), 0);
    EXPECT_TRUE(sensor->ListaAfericoes() == lista);
    EXPECT_TRUE(Acrescenta(sensor, "um")->Sensor() == sensor);
}

TEST(clsSensor, Equipto_Given_ReadsItAndDoesNotKeepItAlive)
{
    auto equipto = Novo<clsEquipto>();
    equipto->Codigo = "R001";
    auto sensor = Novo<clsSensor>();
    sensor->DefineEquipto(equipto);
    EXPECT_TRUE(sensor->Equipto() == equipto);
    EXPECT_EQ(sensor->Equipto()->Codigo, "R001");
    EXPECT_EQ(sensor->Chave(), "");
    RefFraca<clsEquipto> vigia = equipto;
    equipto = nullptr;
    EXPECT_TRUE(vigia.Nada());
    EXPECT_TRUE(sensor->Equipto().Nada());
    EXPECT_EQ(FalhaLancada([&] { sensor->Equipto()->CodMunic = 1; }).Numero, 91);
}

TEST(clsSensor, ToSensorED_Saved_WritesEveryMember)
{
    auto sensor = SensorCompleto();
    auto ED = sensor->ToSensorED();
    EXPECT_EQ(ED->NroIntSensor.Valor(), 900);
    EXPECT_EQ(ED->NroSensor.Valor(), 3);
    EXPECT_EQ(ED->LocalInfr.Valor(), "Av. São João, 1500, sentido centro");
    EXPECT_EQ(ED->CodLograd.Valor(), 4711);
    EXPECT_EQ(ED->EndCep.Valor(), 1310100);
    EXPECT_EQ(ED->EndNro.Valor(), 1500);
    EXPECT_EQ(ED->EndCompl.Valor(), "Km 2");
    EXPECT_EQ(ED->EndDescr.Valor(), "Av. São João");
    EXPECT_EQ(ED->SentidoVia.Valor(), "C");
    EXPECT_EQ(ED->Ativo.Valor(), 1);
    EXPECT_EQ(Escritos(*ED), (std::set<std::string>{"NroIntSensor", "NroSensor", "LocalInfr", "CodLograd", "EndCep",
                                                    "EndNro", "EndCompl", "EndDescr", "SentidoVia", "Ativo"}));
}

TEST(clsSensor, ToSensorED_New_WritesOnlyWhatIsAlwaysWritten)
{
    auto sensor = Novo<clsSensor>();
    auto ED = sensor->ToSensorED();
    EXPECT_EQ(Escritos(*ED), (std::set<std::string>{"NroSensor", "LocalInfr", "Ativo"}));
    EXPECT_EQ(ED->NroIntSensor.Valor(), 0);
    EXPECT_EQ(ED->NroSensor.Valor(), 0);
    EXPECT_EQ(ED->LocalInfr.Valor(), "");
    EXPECT_TRUE(ED->Afericoes.Valor().Nada());
    EXPECT_EQ(sensor->ListaAfericoes()->Count(), 0);
}

TEST(clsSensor, ToSensorED_NroIntSensorBelowOne_LeavesItUnset)
{
    for (std::int32_t numero : {0, -1}) {
        auto sensor = SensorCompleto();
        sensor->NroIntSensor = numero;
        EXPECT_FALSE(sensor->ToSensorED()->NroIntSensor.Escrito()) << numero;
    }
}

TEST(clsSensor, ToSensorED_CodLogradNotAboveZero_SendsNoneOfTheFiveAddressMembers)
{
    for (std::int32_t codigo : {0, -1}) {
        auto sensor = SensorCompleto();
        sensor->CodLograd = codigo;
        EXPECT_EQ(Escritos(*sensor->ToSensorED()),
                  (std::set<std::string>{"NroIntSensor", "NroSensor", "LocalInfr", "SentidoVia", "Ativo"}));
    }
}

TEST(clsSensor, ToSensorED_CodLogradAboveZero_SendsEmptyAddressMembersToo)
{
    auto sensor = Novo<clsSensor>();
    sensor->CodLograd = 1;
    EXPECT_EQ(Escritos(*sensor->ToSensorED()), (std::set<std::string>{"NroSensor", "LocalInfr", "CodLograd", "EndCep",
                                                                      "EndNro", "EndCompl", "EndDescr", "Ativo"}));
}

TEST(clsSensor, ToSensorED_Inactive_SendsTwo)
{
    auto sensor = SensorCompleto();
    sensor->Ativo = false;
    EXPECT_EQ(sensor->ToSensorED()->Ativo.Valor(), 2);
}

TEST(clsSensor, ToSensorED_NoCalibrationAltered_LeavesAfericoesAbsent)
{
    auto sensor = SensorCompleto();
    sensor->Alterado = true;
    Acrescenta(sensor, "um");
    auto ED = sensor->ToSensorED();
    EXPECT_FALSE(ED->Afericoes.Escrito());
    EXPECT_TRUE(ED->Afericoes.Valor().Nada());
    EXPECT_TRUE(sensor->Alterado);
}

TEST(clsSensor, ToSensorED_OnlyTheThirdOfThreeAltered_SendsThatOneWithoutAKey)
{
    auto sensor = SensorCompleto();
    Acrescenta(sensor, "um");
    Acrescenta(sensor, "dois");
    Acrescenta(sensor, "tres")->Alterado = true;
    auto ED = sensor->ToSensorED();
    ASSERT_EQ(ED->Afericoes.Valor()->Count(), 1);
    EXPECT_EQ(ED->Afericoes.Valor()->Item(1)->Numero.Valor(), "tres");
    EXPECT_EQ(FalhaLancada([&] { ED->Afericoes.Valor()->Item("A3"); }).Numero, 5);
    EXPECT_TRUE(sensor->ListaAfericoes()->Item(3)->Alterado);
}

TEST(clsSensor, ToSensorED_SeveralAltered_SendsThemInOrderInactiveIncluded)
{
    auto sensor = SensorCompleto();
    Acrescenta(sensor, "um")->Alterado = true;
    Acrescenta(sensor, "dois");
    Acrescenta(sensor, "tres")->Alterado = true;
    sensor->ListaAfericoes()->Item(3)->Ativo = false;
    auto afericoes = sensor->ToSensorED()->Afericoes.Valor();
    ASSERT_EQ(afericoes->Count(), 2);
    EXPECT_EQ(afericoes->Item(1)->Numero.Valor(), "um");
    EXPECT_EQ(afericoes->Item(1)->Ativo.Valor(), 1);
    EXPECT_EQ(afericoes->Item(2)->Numero.Valor(), "tres");
    EXPECT_EQ(afericoes->Item(2)->Ativo.Valor(), 2);
}

TEST(clsSensor, getClone_CopiesEveryFieldKeyAndEquipment)
{
    auto equipto = Novo<clsEquipto>();
    auto sensor = SensorCompleto();
    sensor->DefineEquipto(equipto);
    sensor->DefineChave("S9");
    sensor->Ativo = false;
    auto clone = sensor->getClone();
    EXPECT_FALSE(clone == sensor);
    EXPECT_TRUE(clone->Equipto() == equipto);
    EXPECT_EQ(clone->Chave(), "S9");
    EXPECT_EQ(clone->NroIntSensor, 900);
    EXPECT_EQ(clone->NroSensor, 3);
    EXPECT_EQ(clone->LocalInfr, "Av. São João, 1500, sentido centro");
    EXPECT_EQ(clone->CodLograd, 4711);
    EXPECT_EQ(clone->EndCep, 1310100);
    EXPECT_EQ(clone->EndNro, 1500);
    EXPECT_EQ(clone->EndCompl, "Km 2");
    EXPECT_EQ(clone->EndDescr, "Av. São João");
    EXPECT_EQ(clone->SentidoVia, "C");
    EXPECT_FALSE(clone->Ativo);
}

TEST(clsSensor, getClone_OfAlteredSensor_CloneReadsUnaltered)
{
    auto sensor = SensorCompleto();
    sensor->Alterado = true;
    EXPECT_FALSE(sensor->getClone()->Alterado);
    EXPECT_TRUE(sensor->Alterado);
}

TEST(clsSensor, getClone_Calibrations_AreNewObjectsOfTheCloneWithNewKeysAndTheirFlags)
{
    auto sensor = SensorCompleto();
    Acrescenta(sensor, "um");
    Acrescenta(sensor, "dois")->Alterado = true;
    Acrescenta(sensor, "tres")->Ativo = false;
    sensor->ListaAfericoes()->Remove("A1");
    auto clone = sensor->getClone();
    auto lista = clone->ListaAfericoes();
    ASSERT_EQ(lista->Count(), 2);
    EXPECT_FALSE(lista == sensor->ListaAfericoes());
    EXPECT_EQ(lista->Item(1)->Chave(), "A1");
    EXPECT_EQ(lista->Item(1)->Numero, "dois");
    EXPECT_TRUE(lista->Item(1)->Alterado);
    EXPECT_TRUE(lista->Item(1)->Sensor() == clone);
    EXPECT_EQ(lista->Item(2)->Chave(), "A2");
    EXPECT_FALSE(lista->Item(2)->Alterado);
    EXPECT_FALSE(lista->Item(2)->Ativo);
    EXPECT_EQ(sensor->ListaAfericoes()->Item(1)->Chave(), "A2");
    EXPECT_FALSE(sensor->ListaAfericoes()->Item(1) == lista->Item(1));
}

TEST(clsSensor, getClone_Edited_SourceStaysExactlyAsItWas)
{
    auto sensor = SensorCompleto();
    auto um = Acrescenta(sensor, "um");
    {
        auto clone = sensor->getClone();
        clone->LocalInfr = "outro";
        clone->CodLograd = 0;
        clone->Alterado = true;
        clone->ListaAfericoes()->Item(1)->Numero = "outra";
        Acrescenta(clone, "dois");
        clone->ListaAfericoes()->Remove(1);
    }
    EXPECT_EQ(sensor->LocalInfr, "Av. São João, 1500, sentido centro");
    EXPECT_EQ(sensor->CodLograd, 4711);
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_EQ(sensor->ListaAfericoes()->Count(), 1);
    EXPECT_TRUE(sensor->ListaAfericoes()->Item("A1") == um);
    EXPECT_TRUE(um->Sensor() == sensor);
    EXPECT_EQ(um->Numero, "um");
}

TEST(clsSensor, Atualiza_TakesOverTheEditedFieldsAndNoOther)
{
    auto equipto = Novo<clsEquipto>();
    auto outro = Novo<clsEquipto>();
    auto sensor = Novo<clsSensor>();
    sensor->DefineEquipto(equipto);
    sensor->DefineChave("S1");
    sensor->NroIntSensor = 1;
    sensor->NroSensor = 1;
    auto copia = SensorCompleto();
    copia->DefineEquipto(outro);
    copia->DefineChave("S2");
    copia->Alterado = true;
    copia->Ativo = false;

    sensor->Atualiza(copia);

    EXPECT_TRUE(sensor->Alterado);
    EXPECT_EQ(sensor->LocalInfr, "Av. São João, 1500, sentido centro");
    EXPECT_EQ(sensor->CodLograd, 4711);
    EXPECT_EQ(sensor->EndCep, 1310100);
    EXPECT_EQ(sensor->EndNro, 1500);
    EXPECT_EQ(sensor->EndCompl, "Km 2");
    EXPECT_EQ(sensor->EndDescr, "Av. São João");
    EXPECT_EQ(sensor->SentidoVia, "C");
    EXPECT_TRUE(sensor->Equipto() == equipto);
    EXPECT_EQ(sensor->Chave(), "S1");
    EXPECT_EQ(sensor->NroIntSensor, 1);
    EXPECT_EQ(sensor->NroSensor, 1);
    EXPECT_TRUE(sensor->Ativo);
}

TEST(clsSensor, Atualiza_FromUntouchedCloneOfAlteredSensor_ReadsUnaltered)
{
    auto sensor = SensorCompleto();
    sensor->Alterado = true;
    sensor->Atualiza(sensor->getClone());
    EXPECT_FALSE(sensor->Alterado);
}

TEST(clsSensor, Atualiza_InactiveSensor_StaysInactive)
{
    auto sensor = SensorCompleto();
    sensor->Ativo = false;
    auto copia = SensorCompleto();
    sensor->Atualiza(copia);
    EXPECT_FALSE(sensor->Ativo);
}

TEST(clsSensor, Atualiza_Calibrations_AreNewObjectsWithKeysFromA1AndOldKeysAreStale)
{
    auto sensor = SensorCompleto();
    Acrescenta(sensor, "um");
    auto antiga = Acrescenta(sensor, "dois");
    Acrescenta(sensor, "tres");
    sensor->ListaAfericoes()->Remove("A1");
    auto lista = sensor->ListaAfericoes();
    auto clone = sensor->getClone();
    clone->ListaAfericoes()->Item("A2")->Alterado = true;
    Acrescenta(clone, "quatro")->Ativo = false;

    sensor->Atualiza(clone);

    EXPECT_TRUE(sensor->ListaAfericoes() == lista);
    ASSERT_EQ(lista->Count(), 3);
    const char *numeros[] = {"dois", "tres", "quatro"};
    for (std::int32_t posicao = 1; posicao <= 3; ++posicao) {
        auto afericao = lista->Item(posicao);
        EXPECT_EQ(afericao->Chave(), "A" + std::to_string(posicao));
        EXPECT_EQ(afericao->Numero, numeros[posicao - 1]);
        EXPECT_TRUE(afericao->Sensor() == sensor);
        EXPECT_FALSE(afericao == clone->ListaAfericoes()->Item(posicao));
    }
    EXPECT_TRUE(lista->Item(2)->Alterado);
    EXPECT_FALSE(lista->Item(1)->Alterado);
    EXPECT_FALSE(lista->Item(3)->Ativo);
    EXPECT_EQ(antiga->Chave(), "A2");
    EXPECT_FALSE(lista->Item("A2") == antiga);
    EXPECT_TRUE(antiga->Sensor() == sensor);
    EXPECT_EQ(clone->ListaAfericoes()->Count(), 3);
}

TEST(clsSensor, Atualiza_Nothing_RaisesFault91AndChangesNothing)
{
    auto sensor = SensorCompleto();
    Acrescenta(sensor, "um");
    const Falha falha = FalhaLancada([&] { sensor->Atualiza(nullptr); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsSensor.Atualiza");
    EXPECT_EQ(sensor->LocalInfr, "Av. São João, 1500, sentido centro");
    EXPECT_EQ(sensor->ListaAfericoes()->Count(), 1);
}

TEST(clsSensor, EveryOperation_ListWasEnded_RaisesFault91WithItsTail)
{
    auto sensor = SensorCompleto();
    Acrescenta(sensor, "um");
    auto fonte = SensorCompleto();
    Acrescenta(fonte, "dois");
    auto alvo = SensorCompleto();
    sensor->ListaAfericoes()->Finaliza();
    const auto confere = [](const Falha &falha, const std::string &fonte) {
        EXPECT_EQ(falha.Numero, 91);
        EXPECT_EQ(falha.Fonte, fonte);
    };
    confere(FalhaLancada([&] { sensor->ToSensorED(); }), "ZTAVOREQUIP < clsSensor.ToSensorED");
    confere(FalhaLancada([&] { sensor->getClone(); }), "ZTAVOREQUIP < clsListaAfericoes.AddAll < clsSensor.getClone");
    confere(FalhaLancada([&] { alvo->Atualiza(sensor); }),
            "ZTAVOREQUIP < clsListaAfericoes.AddAll < clsSensor.Atualiza");
    confere(FalhaLancada([&] { sensor->Atualiza(fonte); }),
            "ZTAVOREQUIP < clsListaAfericoes.Add < clsListaAfericoes.AddAfericao < clsListaAfericoes.AddAll"
            " < clsSensor.Atualiza");
}

TEST(clsSensor, Atualiza_FaultAmidTheCopies_FieldsAndClearedListStayAsFarAsTheyCame)
{
    auto sensor = SensorCompleto();
    Acrescenta(sensor, "um");
    auto copia = Novo<clsSensor>();
    copia->Alterado = true;
    copia->LocalInfr = "novo";
    copia->ListaAfericoes()->Finaliza();
    FalhaLancada([&] { sensor->Atualiza(copia); });
    EXPECT_TRUE(sensor->Alterado);
    EXPECT_EQ(sensor->LocalInfr, "novo");
    EXPECT_EQ(sensor->CodLograd, 0);
    EXPECT_EQ(sensor->EndCep, 0);
    EXPECT_EQ(sensor->EndNro, 0);
    EXPECT_EQ(sensor->EndCompl, "");
    EXPECT_EQ(sensor->EndDescr, "");
    EXPECT_EQ(sensor->SentidoVia, "");
    EXPECT_EQ(sensor->ListaAfericoes()->Count(), 0);
}

TEST(clsSensor, Finaliza_Twice_EndsTheListDropsEquiptoAndKeepsTheRest)
{
    auto equipto = Novo<clsEquipto>();
    auto sensor = SensorCompleto();
    sensor->DefineEquipto(equipto);
    sensor->DefineChave("S1");
    auto lista = sensor->ListaAfericoes();
    auto guardada = Acrescenta(sensor, "um");
    sensor->Finaliza();
    sensor->Finaliza();
    EXPECT_TRUE(sensor->Equipto().Nada());
    EXPECT_EQ(FalhaLancada([&] { lista->Count(); }).Numero, 91);
    EXPECT_TRUE(guardada->Sensor() == sensor);
    EXPECT_EQ(sensor->Chave(), "S1");
    EXPECT_EQ(sensor->NroIntSensor, 900);
    EXPECT_EQ(sensor->ListaAfericoes()->Count(), 0);
    EXPECT_FALSE(sensor->ListaAfericoes() == lista);
}

TEST(clsSensor, Dropped_WithItsCalibrations_NoneIsLeft)
{
    auto sensor = SensorCompleto();
    RefFraca<clsSensor> vigiaSensor = sensor;
    RefFraca<clsListaAfericoes> vigiaLista = sensor->ListaAfericoes();
    RefFraca<clsAfericao> vigiaAfericao = Acrescenta(sensor, "um");
    sensor = nullptr;
    EXPECT_TRUE(vigiaSensor.Nada());
    EXPECT_TRUE(vigiaLista.Nada());
    EXPECT_TRUE(vigiaAfericao.Nada());
}

// Runs an operation once for every request of memory in it, refusing that one, until it is left in peace.
template <class Operacao> void ComCadaRecusa(const std::string &cauda, Operacao &&operacao)
{
    const std::int64_t antes = BlocosOcupados();
    bool recusou = true;
    std::int64_t n = 0;
    while (recusou) {
        ASSERT_LT(++n, 1000);
        auto sensor = SensorCompleto();
        Acrescenta(sensor, "um")->Alterado = true;
        Acrescenta(sensor, "dois, too long for a text without memory of its own")->Alterado = true;
        auto clone = sensor->getClone();
        {
            MemoriaEscassa escassa(n);
            try {
                operacao(sensor, clone);
            } catch (const Falha &falha) {
                EXPECT_EQ(falha.Numero, 7);
                EXPECT_TRUE(falha.Fonte.ends_with(cauda)) << falha.Fonte;
            }
            recusou = escassa.Recusou();
        }
        operacao(sensor, clone);
        EXPECT_EQ(sensor->ListaAfericoes()->Count(), 2);
    }
    EXPECT_GT(n, 2);
    EXPECT_EQ(BlocosOcupados(), antes);
}

TEST(clsSensor, getClone_MemoryRefusedAnywhere_SourceWholeAndNoLeak)
{
    ComCadaRecusa(" < clsSensor.getClone", [](const Ref<clsSensor> &sensor, const Ref<clsSensor> &) {
        EXPECT_EQ(sensor->getClone()->ListaAfericoes()->Count(), 2);
    });
}

TEST(clsSensor, Atualiza_MemoryRefusedAnywhere_WorksOnTheNextTryAndNoLeak)
{
    ComCadaRecusa(" < clsSensor.Atualiza",
                  [](const Ref<clsSensor> &sensor, const Ref<clsSensor> &clone) { sensor->Atualiza(clone); });
}

TEST(clsSensor, ToSensorED_MemoryRefusedAnywhere_SourceWholeAndNoLeak)
{
    ComCadaRecusa(" < clsSensor.ToSensorED", [](const Ref<clsSensor> &sensor, const Ref<clsSensor> &) {
        EXPECT_EQ(sensor->ToSensorED()->Afericoes.Valor()->Count(), 2);
    });
}

} // namespace
