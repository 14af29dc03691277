#include "sensors/clsSensor.h"

#include "equipment/clsEquipto.h"
#include "tests/sensors/RegistrosCompletos.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

// What is sent of a full sensor, in its parts: the number that the service gave, and the structured address.
const std::string Numerado = "NroIntSensor=900, ";
const std::string ComEndereco = "CodLograd=4711, EndCep=1310100, EndNro=1500, EndCompl=\"Km 2\", "
                                "EndDescr=\"Av. São João\", ";
std::string Enviado(const std::string &numero, const std::string &endereco, int ativo)
{
    return "SensorED{" + numero + "NroSensor=3, " + endereco + "SentidoVia=\"C\", Ativo=" + std::to_string(ativo) +
           ", LocalInfr=\"Av. São João, 1500, sentido centro\"}";
}

TEST(clsSensor, New_HasDefaults)
{
    auto sensor = Novo<clsSensor>();
    EXPECT_EQ(sensor->NomeTipo(), "clsSensor");
    EXPECT_TRUE(sensor->Equipto().Nada());
    EXPECT_EQ(Retrato(*sensor), "{0, 0, , 0, 0, 0, , , }");
}

TEST(clsSensor, ListaAfericoes_FirstRead_CreatesItWithTheSensorAndKeepsIt)
{
    auto sensor = Novo<clsSensor>();
    auto lista = sensor->ListaAfericoes();
    EXPECT_EQ(lista->Count(), 0);
    EXPECT_TRUE(sensor->ListaAfericoes() == lista);
    EXPECT_TRUE(Acrescenta(sensor->ListaAfericoes(), "um")->Sensor() == sensor);
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

TEST(clsSensor, ToSensorED_OfEachKind_WritesTheseMembersAndNoOther)
{
    const auto enviado = [](auto muda) {
        auto sensor = SensorCompleto();
        muda(*sensor);
        return sensor->ToSensorED()->Texto();
    };
    EXPECT_EQ(enviado([](clsSensor &) {}), Enviado(Numerado, ComEndereco, 1));
    EXPECT_EQ(enviado([](clsSensor &sensor) { sensor.Ativo = false; }), Enviado(Numerado, ComEndereco, 2));
    for (const std::int32_t numero : {0, -1}) {
        EXPECT_EQ(enviado([&](clsSensor &sensor) { sensor.NroIntSensor = numero; }), Enviado("", ComEndereco, 1));
        EXPECT_EQ(enviado([&](clsSensor &sensor) { sensor.CodLograd = numero; }), Enviado(Numerado, "", 1));
    }
    auto novo = Novo<clsSensor>();
    EXPECT_EQ(novo->ToSensorED()->Texto(), "SensorED{NroSensor=0, Ativo=1, LocalInfr=\"\"}");
    EXPECT_EQ(novo->ListaAfericoes()->Count(), 0);
    novo->CodLograd = 1; // the empty members of an address travel with it
    EXPECT_EQ(novo->ToSensorED()->Texto(), "SensorED{NroSensor=0, CodLograd=1, EndCep=0, EndNro=0, EndCompl=\"\", "
                                           "EndDescr=\"\", Ativo=1, LocalInfr=\"\"}");
}

TEST(clsSensor, ToSensorED_Calibrations_SendsTheAlteredOnesInOrderWithoutAKeyInactiveIncluded)
{
    auto sensor = SensorCompleto();
    sensor->Alterado = true;
    for (const std::string numero : {"um", "dois", "tres"}) {
        Acrescenta(sensor->ListaAfericoes(), numero);
    }
    EXPECT_FALSE(sensor->ToSensorED()->Afericoes.Escrito()); // none is
    sensor->ListaAfericoes()->Item(1)->Alterado = true;
    sensor->ListaAfericoes()->Item(3)->Alterado = true;
    sensor->ListaAfericoes()->Item(3)->Ativo = false;
    auto afericoes = sensor->ToSensorED()->Afericoes.Valor();
    ASSERT_EQ(afericoes->Count(), 2);
    EXPECT_EQ(afericoes->Item(1)->Numero.Valor(), "um");
    EXPECT_EQ(afericoes->Item(1)->Ativo.Valor(), 1);
    EXPECT_EQ(afericoes->Item(2)->Numero.Valor(), "tres");
    EXPECT_EQ(afericoes->Item(2)->Ativo.Valor(), 2);
    EXPECT_EQ(FalhaLancada([&] { afericoes->Item("A3"); }).Numero, 5);
    EXPECT_TRUE(sensor->ListaAfericoes()->Item(3)->Alterado);
    EXPECT_TRUE(sensor->Alterado);
}

TEST(clsSensor, getClone_OfAlteredSensor_CopiesEveryFieldKeyAndEquipmentUnaltered)
{
    auto equipto = Novo<clsEquipto>();
    auto sensor = SensorCompleto();
    sensor->DefineEquipto(equipto);
    sensor->DefineChave("S9");
    sensor->Ativo = false;
    sensor->Alterado = true;
    auto clone = sensor->getClone();
    EXPECT_FALSE(clone == sensor);
    EXPECT_TRUE(clone->Equipto() == equipto);
    EXPECT_EQ(Retrato(*clone), "S9" + CamposDoSensor + " inativo");
    EXPECT_TRUE(sensor->Alterado);
}

TEST(clsSensor, getClone_Calibrations_AreNewObjectsOfTheCloneWithNewKeysAndTheirFlags)
{
    auto sensor = SensorCompleto();
    Acrescenta(sensor->ListaAfericoes(), "um");
    Acrescenta(sensor->ListaAfericoes(), "dois")->Alterado = true;
    Acrescenta(sensor->ListaAfericoes(), "tres")->Ativo = false;
    sensor->ListaAfericoes()->Remove("A1");
    auto clone = sensor->getClone();
    auto lista = clone->ListaAfericoes();
    EXPECT_FALSE(lista == sensor->ListaAfericoes());
    EXPECT_EQ(Retratos(*lista), (Textos{"A1" + CamposDe("dois") + " alterado", "A2" + CamposDe("tres") + " inativo"}));
    EXPECT_TRUE(lista->Item(1)->Sensor() == clone);
    EXPECT_EQ(sensor->ListaAfericoes()->Item(1)->Chave(), "A2");
    EXPECT_FALSE(sensor->ListaAfericoes()->Item(1) == lista->Item(1));
}

TEST(clsSensor, getClone_Edited_SourceStaysExactlyAsItWas)
{
    auto sensor = SensorCompleto();
    auto um = Acrescenta(sensor->ListaAfericoes(), "um");
    {
        auto clone = sensor->getClone();
        clone->LocalInfr = "outro";
        clone->CodLograd = 0;
        clone->Alterado = true;
        clone->ListaAfericoes()->Item(1)->Numero = "outra";
        Acrescenta(clone->ListaAfericoes(), "dois");
        clone->ListaAfericoes()->Remove(1);
    }
    EXPECT_EQ(Retrato(*sensor), CamposDoSensor);
    EXPECT_EQ(Retratos(*sensor->ListaAfericoes()), Textos{"A1" + CamposDe("um")});
    EXPECT_TRUE(sensor->ListaAfericoes()->Item("A1") == um);
    EXPECT_TRUE(um->Sensor() == sensor);
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

    EXPECT_EQ(Retrato(*sensor), "S1{1, 1" + CamposDoSensor.substr(CamposDoSensor.find(", Av")) + " alterado");
    EXPECT_TRUE(sensor->Equipto() == equipto);
}

TEST(clsSensor, Atualiza_FromUntouchedClone_ReadsUnalteredAndAsActiveAsItWas)
{
    auto sensor = SensorCompleto();
    sensor->Alterado = true;
    auto clone = sensor->getClone();
    sensor->Ativo = false;
    sensor->Atualiza(clone);
    EXPECT_EQ(Retrato(*sensor), CamposDoSensor + " inativo");
}

TEST(clsSensor, Atualiza_Calibrations_AreNewObjectsWithKeysFromA1AndOldKeysAreStale)
{
    auto sensor = SensorCompleto();
    Acrescenta(sensor->ListaAfericoes(), "um");
    auto antiga = Acrescenta(sensor->ListaAfericoes(), "dois");
    Acrescenta(sensor->ListaAfericoes(), "tres");
    sensor->ListaAfericoes()->Remove("A1");
    auto lista = sensor->ListaAfericoes();
    auto clone = sensor->getClone();
    clone->ListaAfericoes()->Item("A2")->Alterado = true;
    Acrescenta(clone->ListaAfericoes(), "quatro")->Ativo = false;

    sensor->Atualiza(clone);

    EXPECT_TRUE(sensor->ListaAfericoes() == lista);
    EXPECT_EQ(Retratos(*lista), (Textos{"A1" + CamposDe("dois"), "A2" + CamposDe("tres") + " alterado",
                                        "A3" + CamposDe("quatro") + " inativo"}));
    for (std::int32_t posicao = 1; posicao <= 3; ++posicao) {
        EXPECT_TRUE(lista->Item(posicao)->Sensor() == sensor);
        EXPECT_FALSE(lista->Item(posicao) == clone->ListaAfericoes()->Item(posicao));
    }
    EXPECT_EQ(antiga->Chave(), "A2");
    EXPECT_FALSE(lista->Item("A2") == antiga);
    EXPECT_TRUE(antiga->Sensor() == sensor);
    EXPECT_EQ(clone->ListaAfericoes()->Count(), 3);
}

TEST(clsSensor, Atualiza_Nothing_RaisesFault91AndChangesNothing)
{
    auto sensor = SensorCompleto();
    Acrescenta(sensor->ListaAfericoes(), "um");
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < clsSensor.Atualiza", [&] { sensor->Atualiza(nullptr); }));
    EXPECT_EQ(Retrato(*sensor), CamposDoSensor);
    EXPECT_EQ(sensor->ListaAfericoes()->Count(), 1);
}

TEST(clsSensor, EveryOperation_ListWasEnded_RaisesFault91WithItsTail)
{
    auto sensor = SensorCompleto();
    Acrescenta(sensor->ListaAfericoes(), "um");
    auto fonte = SensorCompleto();
    Acrescenta(fonte->ListaAfericoes(), "dois");
    auto alvo = SensorCompleto();
    sensor->ListaAfericoes()->Finaliza();
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < clsSensor.ToSensorED", [&] { sensor->ToSensorED(); }));
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < clsListaAfericoes.AddAll < clsSensor.getClone", [&] { sensor->getClone(); }));
    EXPECT_TRUE(
        Lanca(91, "ZTAVOREQUIP < clsListaAfericoes.AddAll < clsSensor.Atualiza", [&] { alvo->Atualiza(sensor); }));
    EXPECT_TRUE(Lanca(91,
                      "ZTAVOREQUIP < clsListaAfericoes.Add < clsListaAfericoes.AddAfericao"
                      " < clsListaAfericoes.AddAll < clsSensor.Atualiza",
                      [&] { sensor->Atualiza(fonte); }));
}

TEST(clsSensor, Atualiza_FaultAmidTheCopies_FieldsAndClearedListStayAsFarAsTheyCame)
{
    auto sensor = SensorCompleto();
    Acrescenta(sensor->ListaAfericoes(), "um");
    auto copia = Novo<clsSensor>();
    copia->Alterado = true;
    copia->LocalInfr = "novo";
    copia->ListaAfericoes()->Finaliza();
    FalhaLancada([&] { sensor->Atualiza(copia); });
    EXPECT_EQ(Retrato(*sensor), "{900, 3, novo, 0, 0, 0, , , } alterado");
    EXPECT_EQ(sensor->ListaAfericoes()->Count(), 0);
}

TEST(clsSensor, Finaliza_Twice_EndsTheListDropsEquiptoAndKeepsTheRest)
{
    auto equipto = Novo<clsEquipto>();
    auto sensor = SensorCompleto();
    sensor->DefineEquipto(equipto);
    sensor->DefineChave("S1");
    auto lista = sensor->ListaAfericoes();
    auto guardada = Acrescenta(sensor->ListaAfericoes(), "um");
    sensor->Finaliza();
    sensor->Finaliza();
    EXPECT_TRUE(sensor->Equipto().Nada());
    EXPECT_EQ(FalhaLancada([&] { lista->Count(); }).Numero, 91);
    EXPECT_TRUE(guardada->Sensor() == sensor);
    EXPECT_EQ(Retrato(*sensor), "S1" + CamposDoSensor);
    EXPECT_EQ(sensor->ListaAfericoes()->Count(), 0);
    EXPECT_FALSE(sensor->ListaAfericoes() == lista);
}

TEST(clsSensor, Dropped_WithItsCalibrations_NoneIsLeft)
{
    auto sensor = SensorCompleto();
    RefFraca<clsSensor> vigiaSensor = sensor;
    RefFraca<clsListaAfericoes> vigiaLista = sensor->ListaAfericoes();
    RefFraca<clsAfericao> vigiaAfericao = Acrescenta(sensor->ListaAfericoes(), "um");
    sensor = nullptr;
    EXPECT_TRUE(vigiaSensor.Nada());
    EXPECT_TRUE(vigiaLista.Nada());
    EXPECT_TRUE(vigiaAfericao.Nada());
}

using ComClone = std::pair<Ref<clsSensor>, Ref<clsSensor>>;

TEST(clsSensor, EveryCopy_MemoryRefusedAnywhere_WorksOnTheNextTryAndNoLeak)
{
    struct {
        std::string Cauda;
        void (*Operacao)(const ComClone &);
    } const casos[] = {
        {" < clsSensor.getClone",
         [](const ComClone &par) { EXPECT_EQ(par.first->getClone()->ListaAfericoes()->Count(), 2); }},
        {" < clsSensor.Atualiza", [](const ComClone &par) { par.first->Atualiza(par.second); }},
        {" < clsSensor.ToSensorED",
         [](const ComClone &par) { EXPECT_EQ(par.first->ToSensorED()->Afericoes.Valor()->Count(), 2); }},
    };
    for (const auto &caso : casos) {
        ComCadaRecusa(
            caso.Cauda,
            [] {
                auto sensor = SensorCompleto();
                for (const std::string numero : {"um", "dois, too long for a text without memory of its own"}) {
                    Acrescenta(sensor->ListaAfericoes(), numero)->Alterado = true;
                }
                return ComClone(sensor, sensor->getClone());
            },
            caso.Operacao,
            [&](const ComClone &par, bool) {
                caso.Operacao(par);
                EXPECT_EQ(par.first->ListaAfericoes()->Count(), 2);
            });
    }
}

} // namespace
