#include "equipment/clsEquipto.h"

#include "shell/ModGeral.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"
#include "tests/support/MemoriaEscassa.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace {

using Textos = std::vector<std::string>;

void Preenche(clsEquipto &equipto)
{
    equipto.NroIntEquip = 12;
    equipto.ClienteInc = "PREFEITURA";
    equipto.SetorInc = "TRANSITO";
    equipto.Codigo = "R001";
    equipto.SubCodigo = "B";
    equipto.Descricao = "Radar da São João";
    equipto.Modelo = "Fabricante ML-7";
    equipto.CodMunic = 8801;
    equipto.ArquivoLayout = "PADRAO";
    equipto.TemImagemEntrelacada = true;
    equipto.TemLimiteDif = false;
    equipto.TemPerfilMag = true;
    equipto.NroIntRejLimDif = 31;
    equipto.TipoAgente = 1;
    equipto.TipoEquip = "R";
    equipto.TipoVia = "U";
    equipto.Ativo = true;
    equipto.VelocPermitida = 60;
    equipto.txtObsNotif = "Equipamento fixo";
}

Ref<clsEquipto> EquiptoCompleto()
{
    auto equipto = Novo<clsEquipto>();
    Preenche(*equipto);
    return equipto;
}

Ref<EquiptoED> RegistroCompleto()
{
    auto ED = Novo<EquiptoED>();
    ED->NroIntEquip = 77;
    ED->ClienteInc = "DAER";
    ED->SetorInc = "ESTRADAS";
    ED->Codigo = "P900";
    ED->SubCodigo = "C";
    ED->Descricao = "Pardal do km 12";
    ED->CodMunic = 8749;
    ED->TipoVia = "R";
    ED->TipoEquip = "P";
    ED->VelocPermitida = 80;
    ED->ArquivoLayout = "NENHUM";
    ED->TemImagemEntrelacada = 1;
    ED->Modelo = "Modelo X";
    ED->TemLimiteDif = 1;
    ED->TemPerfilMag = 1;
    ED->NroIntRejLimDif = 32;
    ED->Ativo = 1;
    ED->ClienteTrans = "PREFEITURA";
    ED->OperadorTrans = 123456789012.0;
    ED->DataTrans = 20260314;
    ED->HoraTrans = 93005;
    ED->TipoAgente = 3;
    ED->txtObsNotif = "Obs";
    return ED;
}

Ref<SensorED> RegistroSensor(std::int16_t numero, const Textos &afericoes = {})
{
    auto ED = Novo<SensorED>();
    ED->NroIntSensor = 1000 + numero;
    ED->NroSensor = numero;
    ED->LocalInfr = "Sensor " + std::to_string(numero);
    if (!afericoes.empty()) {
        ED->Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
        for (const std::string &afericao : afericoes) {
            auto afericaoED = Novo<AfericaoED>();
            afericaoED->Numero = afericao;
            ED->Afericoes.Valor()->Add(afericaoED);
        }
    }
    return ED;
}

ListaDe<SensorED> Sensores(std::int16_t quantos)
{
    auto sensores = Novo<Colecao<Ref<SensorED>>>();
    for (std::int16_t numero = 1; numero <= quantos; ++numero) {
        sensores->Add(RegistroSensor(numero));
    }
    return sensores;
}

std::set<std::string> NaoEscritos(const EquiptoED &ED)
{
    std::set<std::string> nomes;
    ED.CadaMembro([&](std::string_view nome, const auto &campo) {
        if (!campo.Escrito()) {
            nomes.insert(std::string(nome));
        }
    });
    return nomes;
}

const std::set<std::string> NuncaEnviados{"ClienteTrans", "OperadorTrans",  "DataTrans",
                                          "HoraTrans",    "ListaLimiteDif", "ListaDiaEspecifico"};

std::set<std::string> NuncaEnviadosE(std::set<std::string> outros)
{
    outros.insert(NuncaEnviados.begin(), NuncaEnviados.end());
    return outros;
}

void ConfereVazio(clsEquipto &equipto)
{
    EXPECT_EQ(equipto.NroIntEquip, 0);
    EXPECT_EQ(equipto.ClienteInc, "");
    EXPECT_EQ(equipto.SetorInc, "");
    EXPECT_EQ(equipto.Codigo, "");
    EXPECT_EQ(equipto.SubCodigo, "");
    EXPECT_EQ(equipto.Descricao, "");
    EXPECT_EQ(equipto.Modelo, "");
    EXPECT_EQ(equipto.CodMunic, 0);
    EXPECT_EQ(equipto.ArquivoLayout, "");
    EXPECT_FALSE(equipto.TemImagemEntrelacada);
    EXPECT_FALSE(equipto.TemLimiteDif);
    EXPECT_FALSE(equipto.TemPerfilMag);
    EXPECT_EQ(equipto.NroIntRejLimDif, 0);
    EXPECT_EQ(equipto.TipoAgente, 0);
    EXPECT_EQ(equipto.TipoEquip, "");
    EXPECT_EQ(equipto.TipoVia, "");
    EXPECT_EQ(equipto.VelocPermitida, 0);
    EXPECT_EQ(equipto.txtObsNotif, "");
    EXPECT_EQ(equipto.ClienteTrans(), "");
    EXPECT_FALSE(equipto.Alterado);
    EXPECT_EQ(equipto.ListaSensores()->Count(), 0);
}

TEST(clsEquipto, New_HasDefaults)
{
    auto equipto = Novo<clsEquipto>();
    EXPECT_EQ(equipto->NomeTipo(), "clsEquipto");
    ConfereVazio(*equipto);
    EXPECT_FALSE(equipto->Ativo);
    EXPECT_EQ(equipto->OperadorTrans(), "");
    EXPECT_EQ(equipto->DataTrans(), "");
    EXPECT_EQ(equipto->HoraTrans(), "");
}

TEST(clsEquipto, ListaSensores_FirstRead_CreatesItWithTheEquipmentAndKeepsIt)
{
    auto equipto = Novo<clsEquipto>();
    auto lista = equipto->ListaSensores();
    EXPECT_TRUE(equipto->ListaSensores() == lista);
    EXPECT_TRUE(lista->Add(1, "")->Equipto() == equipto);
    RefFraca<clsEquipto> vigia = equipto;
    equipto = nullptr;
    EXPECT_TRUE(vigia.Nada());
}

TEST(clsEquipto, ToEquiptoED_Complete_WritesEveryMemberItSends)
{
    EXPECT_EQ(EquiptoCompleto()->ToEquiptoED()->Texto(),
              "EquiptoED{NroIntEquip=12, ClienteInc=\"PREFEITURA\", SetorInc=\"TRANSITO\", Codigo=\"R001\", "
              "SubCodigo=\"B\", Descricao=\"Radar da São João\", CodMunic=8801, TipoVia=\"U\", TipoEquip=\"R\", "
              "VelocPermitida=60, ArquivoLayout=\"PADRAO\", TemImagemEntrelacada=1, Modelo=\"Fabricante ML-7\", "
              "TemLimiteDif=2, TemPerfilMag=1, NroIntRejLimDif=31, Ativo=1, TipoAgente=1, "
              "txtObsNotif=\"Equipamento fixo\"}");
}

TEST(clsEquipto, ToEquiptoED_EachFlag_TravelsInItsOwnByte)
{
    for (int qual = 0; qual < 4; ++qual) {
        auto equipto = EquiptoCompleto();
        equipto->TemImagemEntrelacada = qual == 0;
        equipto->TemLimiteDif = qual == 1;
        equipto->TemPerfilMag = qual == 2;
        equipto->Ativo = qual == 3;
        auto ED = equipto->ToEquiptoED();
        EXPECT_EQ(ED->TemImagemEntrelacada.Valor(), qual == 0 ? 1 : 2) << qual;
        EXPECT_EQ(ED->TemLimiteDif.Valor(), qual == 1 ? 1 : 2) << qual;
        EXPECT_EQ(ED->TemPerfilMag.Valor(), qual == 2 ? 1 : 2) << qual;
        EXPECT_EQ(ED->Ativo.Valor(), qual == 3 ? 1 : 2) << qual;
    }
}

TEST(clsEquipto, ToEquiptoED_New_HasNoNumberNoSensorsAndActiveByteTwo)
{
    auto equipto = Novo<clsEquipto>();
    equipto->ListaSensores()->Add(1, "Rua A")->Alterado = true;
    auto ED = equipto->ToEquiptoED();
    EXPECT_EQ(ED->Texto(), "EquiptoED{ClienteInc=\"\", Codigo=\"\", SubCodigo=\"\", Descricao=\"\", CodMunic=0, "
                           "TipoVia=\"\", TipoEquip=\"\", VelocPermitida=0, ArquivoLayout=\"\", "
                           "TemImagemEntrelacada=2, Modelo=\"\", TemLimiteDif=2, TemPerfilMag=2, Ativo=2, "
                           "TipoAgente=0}");
    EXPECT_EQ(NaoEscritos(*ED),
              NuncaEnviadosE({"NroIntEquip", "SetorInc", "NroIntRejLimDif", "Sensores", "txtObsNotif"}));
    EXPECT_TRUE(ED->Sensores.Valor().Nada());
}

TEST(clsEquipto, ToEquiptoED_NegativeNumber_SendsNeitherNumberNorSensors)
{
    auto equipto = EquiptoCompleto();
    equipto->NroIntEquip = -1;
    equipto->ListaSensores()->Add(1, "Rua A")->Alterado = true;
    EXPECT_EQ(NaoEscritos(*equipto->ToEquiptoED()), NuncaEnviadosE({"NroIntEquip", "Sensores"}));
}

TEST(clsEquipto, ToEquiptoED_TipoAgente2_NeverSendsTheSpeed)
{
    auto equipto = EquiptoCompleto();
    equipto->TipoAgente = 2;
    auto ED = equipto->ToEquiptoED();
    EXPECT_EQ(NaoEscritos(*ED), NuncaEnviadosE({"VelocPermitida", "Sensores"}));
    EXPECT_EQ(ED->VelocPermitida.Valor(), 0);
}

TEST(clsEquipto, ToEquiptoED_AnyOtherTipoAgente_SendsTheSpeedZeroIncluded)
{
    for (std::uint8_t tipo : {std::uint8_t{0}, std::uint8_t{1}, std::uint8_t{3}, std::uint8_t{255}}) {
        auto equipto = EquiptoCompleto();
        equipto->TipoAgente = tipo;
        equipto->VelocPermitida = 0;
        EXPECT_TRUE(equipto->ToEquiptoED()->VelocPermitida.Escrito()) << int{tipo};
    }
}

TEST(clsEquipto, ToEquiptoED_ClearedByTheUser_LeavesThemUnset)
{
    auto equipto = EquiptoCompleto();
    equipto->SetorInc = "";
    equipto->txtObsNotif = "";
    equipto->NroIntRejLimDif = 0;
    EXPECT_EQ(NaoEscritos(*equipto->ToEquiptoED()),
              NuncaEnviadosE({"SetorInc", "txtObsNotif", "NroIntRejLimDif", "Sensores"}));
    equipto->NroIntRejLimDif = -1;
    EXPECT_FALSE(equipto->ToEquiptoED()->NroIntRejLimDif.Escrito());
}

TEST(clsEquipto, ToEquiptoED_OnlyTheSecondOfThreeSensorsAltered_SendsThatOneWithoutAKey)
{
    auto equipto = EquiptoCompleto();
    equipto->ListaSensores()->Add(1, "um");
    equipto->ListaSensores()->Add(2, "dois")->Alterado = true;
    equipto->ListaSensores()->Add(3, "tres");
    auto ED = equipto->ToEquiptoED();
    ASSERT_EQ(ED->Sensores.Valor()->Count(), 1);
    EXPECT_EQ(ED->Sensores.Valor()->Item(1)->LocalInfr.Valor(), "dois");
    EXPECT_EQ(FalhaLancada([&] { ED->Sensores.Valor()->Item("S2"); }).Numero, 5);
}

TEST(clsEquipto, ToEquiptoED_SeveralAltered_SendsThemInOrderWithTheirAlteredCalibrations)
{
    auto equipto = EquiptoCompleto();
    auto lista = equipto->ListaSensores();
    lista->Add(1, "um")->Alterado = true;
    lista->Add(2, "dois");
    auto tres = lista->Add(3, "tres");
    tres->Alterado = true;
    tres->Ativo = false;
    tres->ListaAfericoes()->Add("A", "", {}, {}, 0);
    tres->ListaAfericoes()->Add("B", "", {}, {}, 0)->Alterado = true;
    auto sensores = equipto->ToEquiptoED()->Sensores.Valor();
    ASSERT_EQ(sensores->Count(), 2);
    EXPECT_EQ(sensores->Item(1)->LocalInfr.Valor(), "um");
    EXPECT_FALSE(sensores->Item(1)->Afericoes.Escrito());
    EXPECT_EQ(sensores->Item(2)->Ativo.Valor(), 2);
    ASSERT_EQ(sensores->Item(2)->Afericoes.Valor()->Count(), 1);
    EXPECT_EQ(sensores->Item(2)->Afericoes.Valor()->Item(1)->Numero.Valor(), "B");
}

TEST(clsEquipto, ToEquiptoED_CalibrationAlteredButNotItsSensor_SendsNothingOfIt)
{
    auto equipto = EquiptoCompleto();
    equipto->ListaSensores()->Add(1, "um")->ListaAfericoes()->Add("A", "", {}, {}, 0)->Alterado = true;
    EXPECT_FALSE(equipto->ToEquiptoED()->Sensores.Escrito());
}

TEST(clsEquipto, ToEquiptoED_NoSensorAltered_LeavesSensoresAbsentAndFlagsAsTheyWere)
{
    auto equipto = EquiptoCompleto();
    equipto->Alterado = true;
    equipto->ListaSensores()->Add(1, "um");
    auto ED = equipto->ToEquiptoED();
    EXPECT_FALSE(ED->Sensores.Escrito());
    EXPECT_TRUE(equipto->Alterado);
}

TEST(clsEquipto, ToEquiptoED_ListWasEnded_RaisesFault91WithItsTail)
{
    auto equipto = EquiptoCompleto();
    equipto->ListaSensores()->Finaliza();
    const Falha falha = FalhaLancada([&] { equipto->ToEquiptoED(); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsEquipto.ToEquiptoED");
}

TEST(clsEquipto, Finaliza_Twice_EndsTheWholeTreeAndKeepsTheFields)
{
    auto equipto = EquiptoCompleto();
    auto lista = equipto->ListaSensores();
    auto sensor = lista->Add(1, "um");
    RefFraca<clsSensor> outro = lista->Add(2, "dois");
    RefFraca<clsAfericao> afericao = sensor->ListaAfericoes()->Add("A", "", {}, {}, 0);
    equipto->Finaliza();
    equipto->Finaliza();
    EXPECT_EQ(FalhaLancada([&] { lista->Count(); }).Numero, 91);
    EXPECT_TRUE(sensor->Equipto().Nada());
    EXPECT_TRUE(outro.Nada());
    EXPECT_TRUE(afericao.Nada());
    EXPECT_EQ(equipto->Codigo, "R001");
    EXPECT_EQ(equipto->ListaSensores()->Count(), 0);
    EXPECT_TRUE(equipto->ListaSensores()->Add(1, "")->Equipto() == equipto);
}

TEST(clsEquipto, Release_OfTheRecord_EndsTheWholeTree)
{
    auto equipto = Novo<clsEquipto>();
    const Ref<clsListaSensores> lista = equipto->ListaSensores(); // held elsewhere
    RefFraca<clsSensor> sensor = lista->Add(1, "");
    equipto = nullptr;
    EXPECT_EQ(FalhaLancada([&] { lista->Count(); }).Numero, 91);
    EXPECT_TRUE(sensor.Nada());
}

TEST(clsEquipto, Finaliza_WithoutList_DoesNothing)
{
    auto equipto = EquiptoCompleto();
    equipto->Finaliza();
    EXPECT_EQ(equipto->NroIntEquip, 12);
}

TEST(clsEquipto, Dropped_WithItsTree_EveryRecordIsGone)
{
    const std::int64_t antes = BlocosOcupados();
    {
        auto equipto = EquiptoCompleto();
        std::vector<RefFraca<clsSensor>> sensores;
        std::vector<RefFraca<clsAfericao>> antigas;
        std::vector<RefFraca<clsAfericao>> afericoes;
        for (std::int16_t numero = 1; numero <= 5; ++numero) {
            auto sensor = equipto->ListaSensores()->Add(numero, "");
            sensores.emplace_back(sensor);
            for (int vez = 1; vez <= 4; ++vez) {
                antigas.emplace_back(sensor->ListaAfericoes()->Add("", "", {}, {}, 0));
            }
            sensor->Atualiza(sensor->getClone());
            for (std::int32_t posicao = 1; posicao <= 4; ++posicao) {
                afericoes.emplace_back(sensor->ListaAfericoes()->Item(posicao));
            }
        }
        const auto terminou = [](const auto &registro) { return registro.Nada(); };
        EXPECT_EQ(std::ranges::count_if(antigas, terminou), 20);
        EXPECT_EQ(std::ranges::count_if(afericoes, terminou), 0);
        EXPECT_EQ(std::ranges::count_if(sensores, terminou), 0);
        RefFraca<clsEquipto> vigia = equipto;
        equipto = nullptr;
        EXPECT_TRUE(vigia.Nada());
        EXPECT_EQ(std::ranges::count_if(sensores, terminou), 5);
        EXPECT_EQ(std::ranges::count_if(afericoes, terminou), 20);
    }
    EXPECT_EQ(BlocosOcupados(), antes);
}

class clsEquiptoComHost : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
        goGateway();
        goMensagem();
        host->LimpaRegistro();
    }
};

TEST_F(clsEquiptoComHost, CarregaED_Complete_CopiesEveryMember)
{
    auto equipto = EquiptoCompleto();
    equipto->Alterado = true;
    equipto->CarregaED(RegistroCompleto());
    EXPECT_EQ(equipto->NroIntEquip, 77);
    EXPECT_EQ(equipto->ClienteInc, "DAER");
    EXPECT_EQ(equipto->SetorInc, "ESTRADAS");
    EXPECT_EQ(equipto->Codigo, "P900");
    EXPECT_EQ(equipto->SubCodigo, "C");
    EXPECT_EQ(equipto->Descricao, "Pardal do km 12");
    EXPECT_EQ(equipto->Modelo, "Modelo X");
    EXPECT_EQ(equipto->CodMunic, 8749);
    EXPECT_EQ(equipto->ArquivoLayout, "NENHUM");
    EXPECT_TRUE(equipto->TemImagemEntrelacada);
    EXPECT_TRUE(equipto->TemLimiteDif);
    EXPECT_TRUE(equipto->TemPerfilMag);
    EXPECT_EQ(equipto->NroIntRejLimDif, 32);
    EXPECT_EQ(equipto->TipoAgente, 3);
    EXPECT_EQ(equipto->TipoEquip, "P");
    EXPECT_EQ(equipto->TipoVia, "R");
    EXPECT_EQ(equipto->VelocPermitida, 80);
    EXPECT_EQ(equipto->txtObsNotif, "Obs");
    EXPECT_TRUE(equipto->Ativo);
    EXPECT_EQ(equipto->ClienteTrans(), "PREFEITURA");
    EXPECT_EQ(equipto->OperadorTrans(), "123456789012");
    EXPECT_EQ(equipto->DataTrans(), "14/03/2026");
    EXPECT_EQ(equipto->HoraTrans(), "09:30:05");
    EXPECT_FALSE(equipto->Alterado);
    EXPECT_EQ(host->Registro(), (Textos{"goMensagem.FormataData(20260314, 0) -> \"14/03/2026\"",
                                        "goMensagem.FormataHora(93005, 0) -> \"09:30:05\""}));
}

TEST_F(clsEquiptoComHost, CarregaED_FreshRecord_EmptiesEverythingAndReadsActive)
{
    auto equipto = EquiptoCompleto();
    equipto->ListaSensores()->Add(1, "velho");
    equipto->CarregaED(Novo<EquiptoED>());
    ConfereVazio(*equipto);
    EXPECT_TRUE(equipto->Ativo);
    EXPECT_EQ(equipto->OperadorTrans(), "0");
    EXPECT_EQ(equipto->DataTrans(), "");
    EXPECT_EQ(equipto->HoraTrans(), "00:00:00");
}

TEST_F(clsEquiptoComHost, CarregaED_FlagBytes_OnlyOneIsTrueButForActiveOnlyTwoIsFalse)
{
    for (int octeto : {0, 1, 2, 3, 255}) {
        auto ED = RegistroCompleto();
        const auto valor = static_cast<std::uint8_t>(octeto);
        ED->TemImagemEntrelacada = valor;
        ED->TemLimiteDif = valor;
        ED->TemPerfilMag = valor;
        ED->Ativo = valor;
        auto equipto = Novo<clsEquipto>();
        equipto->CarregaED(ED);
        EXPECT_EQ(equipto->TemImagemEntrelacada, octeto == 1) << octeto;
        EXPECT_EQ(equipto->TemLimiteDif, octeto == 1) << octeto;
        EXPECT_EQ(equipto->TemPerfilMag, octeto == 1) << octeto;
        EXPECT_EQ(equipto->Ativo, octeto != 2) << octeto;
    }
}

TEST_F(clsEquiptoComHost, CarregaED_EachFlag_IsReadFromItsOwnByte)
{
    for (int qual = 0; qual < 4; ++qual) {
        const auto octeto = [qual](int dele) { return static_cast<std::uint8_t>(qual == dele ? 1 : 2); };
        auto ED = Novo<EquiptoED>();
        ED->TemImagemEntrelacada = octeto(0);
        ED->TemLimiteDif = octeto(1);
        ED->TemPerfilMag = octeto(2);
        ED->Ativo = octeto(3);
        auto equipto = Novo<clsEquipto>();
        equipto->CarregaED(ED);
        EXPECT_EQ(equipto->TemImagemEntrelacada, qual == 0) << qual;
        EXPECT_EQ(equipto->TemLimiteDif, qual == 1) << qual;
        EXPECT_EQ(equipto->TemPerfilMag, qual == 2) << qual;
        EXPECT_EQ(equipto->Ativo, qual == 3) << qual;
    }
}

TEST_F(clsEquiptoComHost, CarregaED_WithSensors_RebuildsListInOrderWithKeysFromS1)
{
    auto equipto = Novo<clsEquipto>();
    auto velho = equipto->ListaSensores()->Add(1, "velho");
    equipto->ListaSensores()->Add(2, "outro velho");
    velho->Alterado = true;
    auto lista = equipto->ListaSensores();
    auto ED = RegistroCompleto();
    ED->Sensores = Novo<Colecao<Ref<SensorED>>>();
    ED->Sensores.Valor()->Add(RegistroSensor(2, {"b", "a"}));
    ED->Sensores.Valor()->Add(RegistroSensor(1));

    equipto->CarregaED(ED);

    EXPECT_TRUE(equipto->ListaSensores() == lista);
    ASSERT_EQ(lista->Count(), 2);
    auto primeiro = lista->Item("S1");
    EXPECT_EQ(primeiro->NroSensor, 2);
    EXPECT_TRUE(primeiro->Equipto() == equipto);
    EXPECT_FALSE(primeiro->Alterado);
    ASSERT_EQ(primeiro->ListaAfericoes()->Count(), 2);
    EXPECT_EQ(primeiro->ListaAfericoes()->Item(1)->Numero, "b");
    EXPECT_EQ(primeiro->ListaAfericoes()->Item(2)->Numero, "a");
    EXPECT_EQ(lista->Item("S2")->NroSensor, 1);
    EXPECT_TRUE(velho->Equipto().Nada());
    EXPECT_FALSE(equipto->ToEquiptoED()->Sensores.Escrito());
}

TEST_F(clsEquiptoComHost, CarregaED_SensoresAbsent_LeavesAnEmptyListNotTheOldOne)
{
    auto equipto = Novo<clsEquipto>();
    equipto->ListaSensores()->Add(1, "velho");
    equipto->CarregaED(RegistroCompleto());
    EXPECT_EQ(equipto->ListaSensores()->Count(), 0);
}

TEST_F(clsEquiptoComHost, CarregaED_Nothing_RaisesFault91AndChangesNothing)
{
    auto equipto = EquiptoCompleto();
    const Falha falha = FalhaLancada([&] { equipto->CarregaED(nullptr); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsEquipto.CarregaED");
    EXPECT_EQ(equipto->NroIntEquip, 12);
}

TEST_F(clsEquiptoComHost, CarregaED_DateFormatFails_EverythingBeforeItIsCopiedAndNothingBehind)
{
    auto equipto = EquiptoCompleto();
    equipto->Alterado = true;
    equipto->ListaSensores()->Add(1, "velho");
    host->FalhaEm("goMensagem.FormataData", 1, 1234, "sem data");
    const Falha falha = FalhaLancada([&] { equipto->CarregaED(RegistroCompleto()); });
    EXPECT_EQ(falha.Numero, 1234);
    EXPECT_EQ(falha.Descricao, "sem data");
    EXPECT_EQ(falha.Fonte, "goMensagem.FormataData < clsEquipto.CarregaED");
    EXPECT_EQ(equipto->NroIntEquip, 77);
    EXPECT_EQ(equipto->txtObsNotif, "Obs");
    EXPECT_EQ(equipto->ClienteTrans(), "PREFEITURA");
    EXPECT_EQ(equipto->OperadorTrans(), "123456789012");
    EXPECT_EQ(equipto->DataTrans(), "");
    EXPECT_EQ(equipto->HoraTrans(), "");
    EXPECT_TRUE(equipto->Alterado);
    EXPECT_EQ(equipto->ListaSensores()->Count(), 1);
}

TEST_F(clsEquiptoComHost, CarregaED_TimeFormatFails_DateIsCopiedAndNothingBehind)
{
    auto equipto = EquiptoCompleto();
    equipto->Alterado = true;
    host->FalhaEm("goMensagem.FormataHora");
    const Falha falha = FalhaLancada([&] { equipto->CarregaED(RegistroCompleto()); });
    EXPECT_EQ(falha.Fonte, "goMensagem.FormataHora < clsEquipto.CarregaED");
    EXPECT_EQ(equipto->DataTrans(), "14/03/2026");
    EXPECT_EQ(equipto->HoraTrans(), "");
    EXPECT_TRUE(equipto->Alterado);
}

TEST_F(clsEquiptoComHost, CarregaED_NothingAmongTheSensors_RaisesWithTheWholePathAfterAlteradoWasReset)
{
    auto equipto = EquiptoCompleto();
    equipto->Alterado = true;
    auto ED = RegistroCompleto();
    ED->Sensores = Sensores(1);
    ED->Sensores.Valor()->Add(nullptr);
    const Falha falha = FalhaLancada([&] { equipto->CarregaED(ED); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsListaSensores.AddSensorED < clsEquipto.CarregaED");
    EXPECT_FALSE(equipto->Alterado);
    EXPECT_EQ(equipto->ListaSensores()->Count(), 1);
}

TEST_F(clsEquiptoComHost, Salva_New_SendsIncluiAndLoadsWhatTheServiceAnswers)
{
    std::string enviado;
    host->Atende<EquiptoED>("EquiptoRN", "inclui", [&](const Ref<EquiptoED> &pedido) -> Resposta {
        enviado = pedido->Texto();
        return RegistroCompleto();
    });
    auto equipto = EquiptoCompleto();
    equipto->NroIntEquip = 0;
    equipto->Alterado = true;
    equipto->ListaSensores()->Add(1, "um")->Alterado = true;
    const std::string esperado = equipto->ToEquiptoED()->Texto();

    EXPECT_TRUE(equipto->Salva());

    EXPECT_EQ(enviado, esperado);
    EXPECT_EQ(equipto->NroIntEquip, 77);
    EXPECT_EQ(equipto->Codigo, "P900");
    EXPECT_EQ(equipto->DataTrans(), "14/03/2026");
    EXPECT_FALSE(equipto->Alterado);
    EXPECT_EQ(equipto->ListaSensores()->Count(), 0);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
                                                 "EquiptoRN.ExecutaMetodo(\"inclui\", " + esperado + ") -> True",
                                                 "EquiptoRN.ObtemRetorno() -> EquiptoED{NroIntEquip=77*",
                                                 "goMensagem.FormataData(*", "goMensagem.FormataHora(*"}));
}

TEST_F(clsEquiptoComHost, Salva_Saved_SendsAlteraAndLeavesTheRecordAsItIs)
{
    host->Atende<EquiptoED>("EquiptoRN", "altera",
                            [](const Ref<EquiptoED> &) -> Resposta { return RegistroCompleto(); });
    auto equipto = EquiptoCompleto();
    equipto->Alterado = true;
    auto sensor = equipto->ListaSensores()->Add(1, "um");
    sensor->Alterado = true;

    EXPECT_TRUE(equipto->Salva());

    EXPECT_TRUE(equipto->Alterado);
    EXPECT_TRUE(sensor->Alterado);
    EXPECT_EQ(equipto->NroIntEquip, 12);
    EXPECT_EQ(equipto->Codigo, "R001");
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
                                                 "EquiptoRN.ExecutaMetodo(\"altera\", EquiptoED{NroIntEquip=12, *"}));
}

TEST_F(clsEquiptoComHost, Salva_NegativeNumber_SendsAlteraWithoutTheNumber)
{
    host->Atende<EquiptoED>("EquiptoRN", "altera", [](const Ref<EquiptoED> &pedido) -> Resposta {
        EXPECT_FALSE(pedido->NroIntEquip.Escrito());
        return {};
    });
    auto equipto = EquiptoCompleto();
    equipto->NroIntEquip = -1;
    EXPECT_TRUE(equipto->Salva());
    EXPECT_FALSE(host->Contem("EquiptoRN.ObtemRetorno"));
}

TEST_F(clsEquiptoComHost, Salva_Refused_ShowsTheServicesErrorAndChangesNothing)
{
    for (std::int32_t numero : {0, 12}) {
        host->LimpaRegistro();
        const std::string metodo = numero == 0 ? "inclui" : "altera";
        host->RecusaOperacao(metodo, "Código já usado");
        auto equipto = EquiptoCompleto();
        equipto->NroIntEquip = numero;
        equipto->Alterado = true;
        equipto->ListaSensores()->Add(1, "um");
        EXPECT_FALSE(equipto->Salva());
        EXPECT_EQ(equipto->NroIntEquip, numero);
        EXPECT_TRUE(equipto->Alterado);
        EXPECT_EQ(equipto->ListaSensores()->Count(), 1);
        EXPECT_TRUE(
            RegistroIgual(host->Registro(), {"Gateway.CriaObjetoRN(*", "EquiptoRN.ExecutaMetodo(\"" + metodo + "\", *",
                                             "EquiptoRN.MostraErro() -> \"Código já usado\""}));
    }
    EXPECT_TRUE(host->Erros().empty());
}

TEST_F(clsEquiptoComHost, Salva_ServiceReplacesTheRecord_GoesOnAllTheSame)
{
    host->Atende<EquiptoED>("EquiptoRN", "altera", [](const Ref<EquiptoED> &) -> Resposta {
        return Resposta(RegistroCompleto()).Troca(RegistroCompleto());
    });
    auto equipto = EquiptoCompleto();
    EXPECT_TRUE(equipto->Salva());
    EXPECT_EQ(equipto->Codigo, "R001");
}

TEST_F(clsEquiptoComHost, Salva_ServiceReplacesTheRecordByAnotherType_RaisesFault13EvenWhenRefused)
{
    host->Atende<EquiptoED>("EquiptoRN", "altera", [](const Ref<EquiptoED> &) -> Resposta {
        return Resposta::Recusa("não").Troca(Novo<AfericaoED>());
    });
    const Falha falha = FalhaLancada([&] { EquiptoCompleto()->Salva(); });
    EXPECT_EQ(falha.Numero, 13);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsEquipto.Salva");
    EXPECT_FALSE(host->Contem("EquiptoRN.MostraErro"));
}

TEST_F(clsEquiptoComHost, Salva_IncluiAnswersNothing_RaisesFault91)
{
    host->Atende<EquiptoED>("EquiptoRN", "inclui", [](const Ref<EquiptoED> &) -> Resposta { return Ref<EquiptoED>(); });
    auto equipto = EquiptoCompleto();
    equipto->NroIntEquip = 0;
    const Falha falha = FalhaLancada([&] { equipto->Salva(); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsEquipto.CarregaED < clsEquipto.Salva");
    EXPECT_EQ(equipto->NroIntEquip, 0);
}

TEST_F(clsEquiptoComHost, Salva_IncluiAnswersAnotherType_RaisesFault13)
{
    host->Atende<EquiptoED>("EquiptoRN", "inclui",
                            [](const Ref<EquiptoED> &) -> Resposta { return Novo<AfericaoED>(); });
    auto equipto = EquiptoCompleto();
    equipto->NroIntEquip = 0;
    const Falha falha = FalhaLancada([&] { equipto->Salva(); });
    EXPECT_EQ(falha.Numero, 13);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsEquipto.Salva");
}

TEST_F(clsEquiptoComHost, Salva_EachStepFails_RaisesWithItsTail)
{
    host->Atende<EquiptoED>("EquiptoRN", "altera", [](const Ref<EquiptoED> &) -> Resposta { return {}; });
    auto equipto = EquiptoCompleto();
    for (const std::string passo : {"Gateway.CriaObjetoRN", "EquiptoRN.ExecutaMetodo"}) {
        host->FalhaEm(passo, 1, 1234, "caiu");
        const Falha falha = FalhaLancada([&] { equipto->Salva(); });
        EXPECT_EQ(falha.Numero, 1234);
        EXPECT_EQ(falha.Descricao, "caiu");
        EXPECT_EQ(falha.Fonte, passo + " < clsEquipto.Salva");
    }
    host->RecusaOperacao("altera", "não");
    host->FalhaEm("EquiptoRN.MostraErro");
    EXPECT_EQ(FalhaLancada([&] { equipto->Salva(); }).Fonte, "EquiptoRN.MostraErro < clsEquipto.Salva");
    EXPECT_TRUE(equipto->Salva());
}

TEST_F(clsEquiptoComHost, Salva_RecordCannotBeBuilt_RaisesAfterTheProxyWasAskedAndCallsNothing)
{
    auto equipto = EquiptoCompleto();
    equipto->ListaSensores()->Finaliza();
    const Falha falha = FalhaLancada([&] { equipto->Salva(); });
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsEquipto.ToEquiptoED < clsEquipto.Salva");
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Gateway.CriaObjetoRN(*"}));
}

TEST_F(clsEquiptoComHost, Salva_GatewayNotThereYet_IsFetchedFromTheSession)
{
    host->Atende<EquiptoED>("EquiptoRN", "altera", [](const Ref<EquiptoED> &) -> Resposta { return {}; });
    LiberaServicos();
    EXPECT_TRUE(EquiptoCompleto()->Salva());
    EXPECT_EQ(host->Conta("objMTM.ObtemGateway"), 1);
}

TEST_F(clsEquiptoComHost, Carrega_Found_AsksByNumberAloneAndLoads)
{
    host->Atende<EquiptoED>("EquiptoRN", "consulta",
                            [](const Ref<EquiptoED> &) -> Resposta { return RegistroCompleto(); });
    auto equipto = EquiptoCompleto();
    EXPECT_TRUE(equipto->Carrega(77));
    EXPECT_EQ(equipto->Codigo, "P900");
    EXPECT_TRUE(RegistroIgual(
        host->Registro(), {"Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
                           "EquiptoRN.ExecutaMetodo(\"consulta\", EquiptoED{NroIntEquip=77}) -> True",
                           "EquiptoRN.ObtemRetorno() -> *", "goMensagem.FormataData(*", "goMensagem.FormataHora(*"}));
}

TEST_F(clsEquiptoComHost, Carrega_NumberZeroOrBelow_IsWrittenAllTheSame)
{
    for (std::int32_t numero : {0, -5}) {
        host->Atende<EquiptoED>("EquiptoRN", "consulta", [numero](const Ref<EquiptoED> &pedido) -> Resposta {
            EXPECT_TRUE(pedido->NroIntEquip.Escrito());
            EXPECT_EQ(pedido->NroIntEquip.Valor(), numero);
            return RegistroCompleto();
        });
        EXPECT_TRUE(Novo<clsEquipto>()->Carrega(numero));
    }
}

TEST_F(clsEquiptoComHost, Carrega_Refused_ShowsTheServicesErrorAndKeepsTheContents)
{
    host->RecusaOperacao("consulta", "Equipamento não encontrado");
    auto equipto = EquiptoCompleto();
    equipto->Alterado = true;
    equipto->ListaSensores()->Add(1, "um");
    EXPECT_FALSE(equipto->Carrega(77));
    EXPECT_EQ(equipto->NroIntEquip, 12);
    EXPECT_EQ(equipto->Codigo, "R001");
    EXPECT_TRUE(equipto->Alterado);
    EXPECT_EQ(equipto->ListaSensores()->Count(), 1);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Gateway.CriaObjetoRN(*", "EquiptoRN.ExecutaMetodo(*",
                                                 "EquiptoRN.MostraErro() -> \"Equipamento não encontrado\""}));
}

TEST_F(clsEquiptoComHost, Carrega_EachStepFails_RaisesWithItsTailAndKeepsTheContents)
{
    host->Atende<EquiptoED>("EquiptoRN", "consulta",
                            [](const Ref<EquiptoED> &) -> Resposta { return RegistroCompleto(); });
    auto equipto = EquiptoCompleto();
    for (const std::string passo : {"Gateway.CriaObjetoRN", "EquiptoRN.ExecutaMetodo", "EquiptoRN.ObtemRetorno"}) {
        host->FalhaEm(passo, 1, 1234, "caiu");
        const Falha falha = FalhaLancada([&] { equipto->Carrega(77); });
        EXPECT_EQ(falha.Numero, 1234);
        EXPECT_EQ(falha.Descricao, "caiu");
        EXPECT_EQ(falha.Fonte, passo + " < clsEquipto.Carrega");
        EXPECT_EQ(equipto->NroIntEquip, 12);
    }
    host->FalhaEm("goMensagem.FormataHora");
    EXPECT_EQ(FalhaLancada([&] { equipto->Carrega(77); }).Fonte,
              "goMensagem.FormataHora < clsEquipto.CarregaED < clsEquipto.Carrega");
    EXPECT_TRUE(equipto->Carrega(77));
}

TEST_F(clsEquiptoComHost, Carrega_AnswersNothingOrAnotherType_Raises)
{
    auto equipto = EquiptoCompleto();
    host->Atende<EquiptoED>("EquiptoRN", "consulta",
                            [](const Ref<EquiptoED> &) -> Resposta { return Ref<EquiptoED>(); });
    Falha falha = FalhaLancada([&] { equipto->Carrega(77); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsEquipto.CarregaED < clsEquipto.Carrega");
    host->Atende<EquiptoED>("EquiptoRN", "consulta",
                            [](const Ref<EquiptoED> &) -> Resposta { return Novo<SensorED>(); });
    falha = FalhaLancada([&] { equipto->Carrega(77); });
    EXPECT_EQ(falha.Numero, 13);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsEquipto.Carrega");
    EXPECT_EQ(equipto->NroIntEquip, 12);
}

TEST_F(clsEquiptoComHost, ReCarrega_AsksForItsOwnNumberAndForgetsEdits)
{
    host->Atende<EquiptoED>("EquiptoRN", "consulta", [](const Ref<EquiptoED> &pedido) -> Resposta {
        auto ED = RegistroCompleto();
        ED->NroIntEquip = pedido->NroIntEquip;
        ED->Sensores = Sensores(2);
        return ED;
    });
    auto equipto = EquiptoCompleto();
    equipto->Alterado = true;
    equipto->ListaSensores()->Add(1, "só na tela")->Alterado = true;
    EXPECT_TRUE(equipto->ReCarrega());
    EXPECT_EQ(equipto->NroIntEquip, 12);
    EXPECT_FALSE(equipto->Alterado);
    EXPECT_EQ(equipto->ListaSensores()->Count(), 2);
    EXPECT_EQ(equipto->ListaSensores()->Item(1)->LocalInfr, "Sensor 1");
    EXPECT_EQ(host->Conta("EquiptoRN.ExecutaMetodo(\"consulta\", EquiptoED{NroIntEquip=12})"), 1);
}

TEST_F(clsEquiptoComHost, ReCarrega_RefusedOrFailed_AnswersFalseOrRaisesWithBothTails)
{
    auto equipto = EquiptoCompleto();
    host->RecusaOperacao("consulta", "não");
    EXPECT_FALSE(equipto->ReCarrega());
    host->FalhaEm("EquiptoRN.ExecutaMetodo");
    EXPECT_EQ(FalhaLancada([&] { equipto->ReCarrega(); }).Fonte,
              "EquiptoRN.ExecutaMetodo < clsEquipto.Carrega < clsEquipto.ReCarrega");
}

TEST_F(clsEquiptoComHost, SalvaThenReCarrega_Altera_OnlyTheReloadResetsAlterado)
{
    host->Atende<EquiptoED>("EquiptoRN", "altera", [](const Ref<EquiptoED> &) -> Resposta { return {}; });
    host->Atende<EquiptoED>("EquiptoRN", "consulta",
                            [](const Ref<EquiptoED> &) -> Resposta { return RegistroCompleto(); });
    auto equipto = EquiptoCompleto();
    equipto->Alterado = true;
    ASSERT_TRUE(equipto->Salva());
    EXPECT_TRUE(equipto->Alterado);
    ASSERT_TRUE(equipto->ReCarrega());
    EXPECT_FALSE(equipto->Alterado);
}

TEST_F(clsEquiptoComHost, CarregaED_FaultAnywhere_NoRecordIsLeftWhenTheRootIsDropped)
{
    auto ED = RegistroCompleto();
    ED->Sensores = Sensores(1);
    ED->Sensores.Valor()->Add(RegistroSensor(2, {"a", "b"}));
    const auto recusa = [&](std::int64_t n) {
        auto equipto = EquiptoCompleto();
        equipto->ListaSensores()->Add(1, "velho")->ListaAfericoes()->Add("A", "", {}, {}, 0);
        bool recusou = false;
        std::string fonte;
        {
            MemoriaEscassa escassa(n);
            try {
                equipto->CarregaED(ED);
            } catch (const Falha &falha) {
                fonte = falha.Fonte;
            }
            recusou = escassa.Recusou();
        }
        if (recusou) {
            EXPECT_TRUE(fonte.ends_with(" < clsEquipto.CarregaED")) << fonte;
        }
        equipto->CarregaED(ED);
        EXPECT_EQ(equipto->ListaSensores()->Item(2)->ListaAfericoes()->Count(), 2);
        host->LimpaRegistro();
        return recusou;
    };
    recusa(1);
    const std::int64_t antes = BlocosOcupados();
    std::int64_t n = 1;
    while (recusa(n)) {
        ASSERT_LT(++n, 1000);
    }
    EXPECT_GT(n, 10);
    EXPECT_EQ(BlocosOcupados(), antes);
}

} // namespace
