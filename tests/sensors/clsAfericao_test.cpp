#include "sensors/clsAfericao.h"

#include "tests/sensors/RegistrosCompletos.h"

#include <gtest/gtest.h>

namespace {

Ref<clsAfericao> AfericaoCompleta()
{
    auto afericao = Novo<clsAfericao>();
    afericao->NroIntAfericao = 9007199254740991;
    afericao->Numero = "12345678";
    afericao->Marca = "00012345678901";
    afericao->DataVerificacao = DataDe(1, 3, 2025);
    afericao->DataVencimento = DataDe(28, 2, 2026);
    afericao->NroIntImgCertif = 4294967296;
    afericao->TipoAfer = 2;
    afericao->PortDimel = "123/15";
    return afericao;
}

TEST(clsAfericao, New_HasDefaults)
{
    auto afericao = Novo<clsAfericao>();
    EXPECT_EQ(afericao->NomeTipo(), "clsAfericao");
    EXPECT_TRUE(afericao->Sensor().Nada());
    EXPECT_EQ(Retrato(*afericao), "{0, , , 00:00:00, 00:00:00, 0, 0, }");
}

TEST(clsAfericao, ToAfericaoED_OfEachKind_WritesAllButTheNumberOfANewOne)
{
    const std::string resto = "Numero=\"12345678\", Marca=\"00012345678901\", DataVerificacao=01/03/2025, "
                              "DataVencimento=28/02/2026, Ativo=";
    auto afericao = AfericaoCompleta();
    auto ED = afericao->ToAfericaoED();
    EXPECT_EQ(ED->NroIntAfericao.Valor(), 9007199254740991); // more digits than its text has
    EXPECT_EQ(ED->NroIntImgCertif.Valor(), 4294967296);
    afericao->NroIntAfericao = 0.5;
    EXPECT_EQ(afericao->ToAfericaoED()->Texto(), "AfericaoED{NroIntAfericao=0,5, " + resto +
                                                     "1, NroIntImgCertif=4294967296, TipoAfer=2, "
                                                     "PortDimel=\"123/15\"}");
    afericao->TipoAfer = 1; // which sends the PortDimel that it holds
    afericao->Ativo = false;
    for (const double numero : {0.0, -1.0, -0.5}) {
        afericao->NroIntAfericao = numero;
        EXPECT_EQ(afericao->ToAfericaoED()->Texto(),
                  "AfericaoED{" + resto + "2, NroIntImgCertif=4294967296, TipoAfer=1, PortDimel=\"123/15\"}");
    }
    EXPECT_EQ(Novo<clsAfericao>()->ToAfericaoED()->Texto(),
              "AfericaoED{Numero=\"\", Marca=\"\", DataVerificacao=00:00:00, DataVencimento=00:00:00, Ativo=1, "
              "NroIntImgCertif=0, TipoAfer=0, PortDimel=\"\"}");
}

TEST(clsAfericao, ToAfericaoED_Altered_LeavesAlteredAndNewRecordEachTime)
{
    auto afericao = AfericaoCompleta();
    afericao->Alterado = true;
    auto primeiro = afericao->ToAfericaoED();
    auto segundo = afericao->ToAfericaoED();
    EXPECT_TRUE(afericao->Alterado);
    EXPECT_FALSE(primeiro == segundo);
}

TEST(clsAfericao, ToAfericaoED_Fault_PassesWithItsTail)
{
    auto afericao = AfericaoCompleta();
    EXPECT_TRUE(Lanca(7, "ZTAVOREQUIP < clsAfericao.ToAfericaoED", "Memória insuficiente", [&] {
        MemoriaEscassa escassa(1);
        afericao->ToAfericaoED();
    }));
}

TEST(clsAfericao, Sensor_GivenOutsideAList_ReadsItAndNoKey)
{
    auto sensor = Novo<clsSensor>();
    auto afericao = Novo<clsAfericao>();
    afericao->DefineSensor(sensor);
    EXPECT_TRUE(afericao->Sensor() == sensor);
    EXPECT_EQ(afericao->Chave(), "");
    EXPECT_EQ(sensor->ListaAfericoes()->Count(), 0);
}

TEST(clsAfericao, Sensor_Ended_ReadsNothingAndIsNotKeptAlive)
{
    auto sensor = Novo<clsSensor>();
    RefFraca<clsSensor> vigia = sensor;
    auto afericao = Novo<clsAfericao>();
    afericao->DefineSensor(sensor);
    sensor = nullptr;
    EXPECT_TRUE(vigia.Nada());
    EXPECT_TRUE(afericao->Sensor().Nada());
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP", [&] { afericao->Sensor()->NroSensor = 1; }));
}

TEST(clsAfericao, Finaliza_Twice_DropsSensorAndKeepsTheRest)
{
    auto sensor = Novo<clsSensor>();
    auto afericao = Novo<clsAfericao>(sensor, std::int16_t{7}, *AfericaoCompleta());
    afericao->Alterado = true;
    afericao->Finaliza();
    afericao->Finaliza();
    EXPECT_TRUE(afericao->Sensor().Nada());
    EXPECT_EQ(afericao->Chave(), "A7");
    EXPECT_EQ(afericao->NumeroChave(), 7);
    EXPECT_TRUE(afericao->Alterado);
    EXPECT_EQ(afericao->Numero, "12345678");
}

} // namespace
