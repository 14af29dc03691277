#include "sensors/clsListaSensores.h"

#include "equipment/clsEquipto.h"
#include "tests/sensors/RegistrosCompletos.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

// A sensor that travels with calibrations, of whose fields only the number was written.
Ref<SensorED> ComAfericoes(const Textos &numeros)
{
    auto ED = SensorCompletoED();
    ED->Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
    for (const std::string &numero : numeros) {
        auto afericao = Novo<AfericaoED>();
        afericao->Numero = numero;
        ED->Afericoes.Valor()->Add(afericao);
    }
    return ED;
}

std::string SoNumero(const std::string &chave, const std::string &numero)
{
    return chave + "{0, " + numero + ", , 00:00:00, 00:00:00, 0, 0, }";
}

TEST(clsListaSensores, AddSensorED_WithoutStreet_CopiesTheAddressAllTheSame)
{
    EXPECT_EQ(Novo<clsListaSensores>()->NomeTipo(), "clsListaSensores");
    auto ED = SensorCompletoED();
    ED->CodLograd = 0;
    auto sensor = Novo<clsListaSensores>()->AddSensorED(ED);
    EXPECT_EQ(sensor->CodLograd, 0);
    EXPECT_EQ(sensor->EndCompl, "Km 2");
}

TEST(clsListaSensores, AddSensorED_WithCalibrations_BringsThemInOrderUnaltered)
{
    auto sensores = Novo<clsListaSensores>();
    auto sensor = sensores->AddSensorED(ComAfericoes({"b", "a", "c"}));
    EXPECT_EQ(Retrato(*sensor), "S1" + CamposDoSensor + " inativo");
    EXPECT_EQ(Retratos(*sensor->ListaAfericoes()),
              (Textos{SoNumero("A1", "b"), SoNumero("A2", "a"), SoNumero("A3", "c")}));
    EXPECT_TRUE(sensor->ListaAfericoes()->Item(3)->Sensor() == sensor);
    EXPECT_EQ(sensores->AddSensorED(SensorCompletoED())->ListaAfericoes()->Count(), 0);
}

TEST(clsListaSensores, AddSensorED_NothingAmongTheCalibrations_RaisesFault91WithWhatCameBefore)
{
    auto lista = Novo<clsListaSensores>();
    auto ED = ComAfericoes({"a"});
    ED->Afericoes.Valor()->Add(nullptr);
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < clsListaAfericoes.AddAfericaoED < clsListaSensores.AddSensorED",
                      [&] { lista->AddSensorED(ED); }));
    EXPECT_EQ(Retratos(*lista), Textos{"S1" + CamposDoSensor + " inativo"});
    EXPECT_EQ(lista->Item(1)->ListaAfericoes()->Count(), 1);
}

TEST(clsListaSensores, AddSensor_WithCalibrations_CopiesThemWithTheirFlags)
{
    auto outros = Novo<clsListaSensores>();
    auto origem = outros->AddSensorED(ComAfericoes({"um", "dois"}));
    origem->ListaAfericoes()->Item(2)->Alterado = true;

    auto lista = Novo<clsListaSensores>();
    auto copia = lista->AddSensor(origem);

    EXPECT_EQ(Retratos(*copia->ListaAfericoes()), (Textos{SoNumero("A1", "um"), SoNumero("A2", "dois") + " alterado"}));
    EXPECT_TRUE(copia->ListaAfericoes()->Item(2)->Sensor() == copia);
    EXPECT_TRUE(origem->ListaAfericoes()->Item(1)->Sensor() == origem);
}

TEST(clsListaSensores, AddSensor_WithEndedCalibrations_RaisesFault91BehindItsFields)
{
    auto lista = Novo<clsListaSensores>();
    auto origem = SensorCompleto();
    origem->Alterado = true;
    origem->Ativo = false;
    origem->ListaAfericoes()->Finaliza();
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < clsListaAfericoes.AddAll < clsListaSensores.AddSensor",
                      [&] { lista->AddSensor(origem); }));
    EXPECT_EQ(Retratos(*lista), Textos{"S1" + CamposDoSensor + " inativo alterado"});
}

TEST(clsListaSensores, RemoveClearAndFinaliza_HeldSensor_IsEndedWithItsCalibrations)
{
    for (const int vez : {1, 2, 3}) {
        SCOPED_TRACE(vez);
        auto equipto = Novo<clsEquipto>();
        auto lista = equipto->ListaSensores();
        auto guardado = lista->Add(1, "um");
        auto afericoes = guardado->ListaAfericoes();
        auto afericao = Acrescenta(afericoes, "1");
        vez == 1 ? lista->Remove(1) : vez == 2 ? lista->Clear() : lista->Finaliza();
        EXPECT_TRUE(guardado->Equipto().Nada());
        EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP", [&] { afericoes->Count(); }));
        EXPECT_TRUE(afericao->Sensor() == guardado);
    }
}

TEST(clsListaSensores, Dropped_HeldSensor_IsEnded)
{
    auto equipto = Novo<clsEquipto>();
    auto lista = Novo<clsListaSensores>();
    lista->DefineEquipto(equipto);
    auto guardado = lista->Add(1, "um");
    lista = nullptr;
    EXPECT_TRUE(guardado->Equipto().Nada());
}

TEST(clsListaSensores, AddSensorED_MemoryRefusedAnywhere_WorksOnTheNextTryAndNoLeak)
{
    ComCadaRecusa(
        " < clsListaSensores.AddSensorED",
        [] {
            auto lista = Novo<clsListaSensores>();
            lista->Add(1, "um");
            return std::pair(lista, ComAfericoes({"um", "dois"}));
        },
        [](const auto &par) { par.first->AddSensorED(par.second); },
        [](const auto &par, bool) {
            par.first->Clear();
            EXPECT_EQ(par.first->AddSensorED(par.second)->ListaAfericoes()->Count(), 2);
        });
}

} // namespace
