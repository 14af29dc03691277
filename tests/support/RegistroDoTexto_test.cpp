#include "tests/support/RegistroDoTexto.h"

#include "host/EquiptoED.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(RegistroDoTexto, DoTexto_OfWhatARecordPrints_GivesThatRecord)
{
    for (const std::string texto :
         {"", R"(NroIntEquip=-7, Codigo="", Descricao="Saída, {1}", OperadorTrans=123456789012, TipoAgente=255)",
          R"(Sensores=[], txtObsNotif="x")",
          R"(Sensores=[SensorED{Afericoes=[AfericaoED{DataVerificacao=05/03/2026, Ativo=1}, AfericaoED{}], )"
          R"(NroSensor=1}, SensorED{}], TipoAgente=1)"}) {
        EXPECT_EQ(DoTexto<EquiptoED>(texto)->Texto(), "EquiptoED{" + texto + "}");
    }
    for (const char *texto : {"Codig=1", "Codigo", "Codigo=\"", "Sensores=[SensorED", "TipoAgente=1}"}) {
        EXPECT_ANY_THROW(DoTexto<EquiptoED>(texto)) << texto;
    }
}

} // namespace
