#include "sensors/clsAfericao.h"

#include "sensors/clsSensor.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/MemoriaEscassa.h"

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
    EXPECT_EQ(afericao->Chave(), "");
    EXPECT_FALSE(afericao->Alterado);
    EXPECT_EQ(afericao->NroIntAfericao, 0);
    EXPECT_EQ(afericao->Numero, "");
    EXPECT_EQ(afericao->Marca, "");
    EXPECT_TRUE(afericao->DataVerificacao.Vazia());
    EXPECT_TRUE(afericao->DataVencimento.Vazia());
    EXPECT_TRUE(afericao->Ativo);
    EXPECT_EQ(afericao->NroIntImgCertif, 0);
    EXPECT_EQ(afericao->TipoAfer, 0);
    EXPECT_EQ(afericao->PortDimel, "");
}

TEST(clsAfericao, ToAfericaoED_Saved_WritesEveryMember)
{
    auto ED = AfericaoCompleta()->ToAfericaoED();
    EXPECT_EQ(ED->NroIntAfericao.Valor(), 9007199254740991);
    EXPECT_EQ(ED->Numero.Valor(), "12345678");
    EXPECT_EQ(ED->Marca.Valor(), "00012345678901");
    EXPECT_EQ(ED->DataVerificacao.Valor(), DataDe(1, 3, 2025));
    EXPECT_EQ(ED->DataVencimento.Valor(), DataDe(28, 2, 2026));
    EXPECT_EQ(ED->Ativo.Valor(), 1);
    EXPECT_EQ(ED->NroIntImgCertif.Valor(), 4294967296);
    EXPECT_EQ(ED->TipoAfer.Valor(), 2);
    EXPECT_EQ(ED->PortDimel.Valor(), "123/15");
    ED->CadaMembro([](std::string_view nome, const auto &campo) { EXPECT_TRUE(campo.Escrito()) << nome; });
}

TEST(clsAfericao, ToAfericaoED_NotAboveZero_LeavesNroIntAfericaoUnset)
{
    for (double numero : {0.0, -1.0, -0.5}) {
        auto afericao = AfericaoCompleta();
        afericao->NroIntAfericao = numero;
        auto ED = afericao->ToAfericaoED();
        EXPECT_FALSE(ED->NroIntAfericao.Escrito()) << numero;
        EXPECT_EQ(ED->NroIntAfericao.Valor(), 0);
    }
}

TEST(clsAfericao, ToAfericaoED_NumberBetweenZeroAndOne_WritesIt)
{
    auto afericao = AfericaoCompleta();
    afericao->NroIntAfericao = 0.5;
    EXPECT_TRUE(afericao->ToAfericaoED()->NroIntAfericao.Escrito());
}

TEST(clsAfericao, ToAfericaoED_New_WritesAllButTheNumberEmptyValuesIncluded)
{
    auto ED = Novo<clsAfericao>()->ToAfericaoED();
    ED->CadaMembro(
        [](std::string_view nome, const auto &campo) { EXPECT_EQ(campo.Escrito(), nome != "NroIntAfericao") << nome; });
    EXPECT_EQ(ED->Numero.Valor(), "");
    EXPECT_EQ(ED->Marca.Valor(), "");
    EXPECT_TRUE(ED->DataVerificacao.Valor().Vazia());
    EXPECT_TRUE(ED->DataVencimento.Valor().Vazia());
    EXPECT_EQ(ED->Ativo.Valor(), 1);
    EXPECT_EQ(ED->NroIntImgCertif.Valor(), 0);
    EXPECT_EQ(ED->TipoAfer.Valor(), 0);
    EXPECT_EQ(ED->PortDimel.Valor(), "");
}

TEST(clsAfericao, ToAfericaoED_Inactive_SendsTwo)
{
    auto afericao = AfericaoCompleta();
    afericao->Ativo = false;
    EXPECT_EQ(afericao->ToAfericaoED()->Ativo.Valor(), 2);
}

TEST(clsAfericao, ToAfericaoED_Kind1_SendsThePortDimelThatItHolds)
{
    auto afericao = AfericaoCompleta();
    afericao->TipoAfer = 1;
    auto ED = afericao->ToAfericaoED();
    EXPECT_EQ(ED->TipoAfer.Valor(), 1);
    EXPECT_EQ(ED->PortDimel.Valor(), "123/15");
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
    const Falha falha = FalhaLancada([&] {
        MemoriaEscassa escassa(1);
        afericao->ToAfericaoED();
    });
    EXPECT_EQ(falha.Numero, 7);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsAfericao.ToAfericaoED");
    EXPECT_EQ(falha.Descricao, "Memória insuficiente");
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
    const Falha falha = FalhaLancada([&] { afericao->Sensor()->NroSensor = 1; });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP");
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
