#include "equipment/clsEquipto.h"

#include "shell/ModGeral.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"
#include "tests/support/MemoriaEscassa.h"
#include "tests/support/RegistroDoTexto.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace {

using Textos = std::vector<std::string>;

// What a complete record sends.
const std::string Enviado =
    R"(EquiptoED{NroIntEquip=12, ClienteInc="PREFEITURA", SetorInc="TRANSITO", Codigo="R001", SubCodigo="B", )"
    R"(Descricao="Radar da São João", CodMunic=8801, TipoVia="U", TipoEquip="R", VelocPermitida=60, )"
    R"(ArquivoLayout="PADRAO", TemImagemEntrelacada=1, Modelo="Fabricante ML-7", TemLimiteDif=2, TemPerfilMag=1, )"
    R"(NroIntRejLimDif=31, Ativo=1, TipoAgente=1, txtObsNotif="Equipamento fixo"})";

Ref<clsEquipto> EquiptoCompleto(std::int32_t nroIntEquip = 12)
{
    auto equipto = Novo<clsEquipto>();
    equipto->NroIntEquip = nroIntEquip;
    equipto->ClienteInc = "PREFEITURA";
    equipto->SetorInc = "TRANSITO";
    equipto->Codigo = "R001";
    equipto->SubCodigo = "B";
    equipto->Descricao = "Radar da São João";
    equipto->Modelo = "Fabricante ML-7";
    equipto->CodMunic = 8801;
    equipto->ArquivoLayout = "PADRAO";
    equipto->TemImagemEntrelacada = true;
    equipto->TemLimiteDif = false;
    equipto->TemPerfilMag = true;
    equipto->NroIntRejLimDif = 31;
    equipto->TipoAgente = 1;
    equipto->TipoEquip = "R";
    equipto->TipoVia = "U";
    equipto->Ativo = true;
    equipto->VelocPermitida = 60;
    equipto->txtObsNotif = "Equipamento fixo";
    equipto->Alterado = true;
    return equipto;
}

// The members of a record of the service that travel both ways, and with those that it alone writes.
const std::string MembrosDoServico =
    R"(NroIntEquip=77, ClienteInc="Autoridade das Estradas de Rodagem", SetorInc="ESTRADAS", Codigo="P900", SubCodigo="C", )"
    R"(Descricao="Pardal do km 12", CodMunic=8749, TipoVia="R", TipoEquip="P", VelocPermitida=80, )"
    R"(ArquivoLayout="NENHUM", TemImagemEntrelacada=1, Modelo="Modelo X", TemLimiteDif=1, TemPerfilMag=1, )"
    R"(NroIntRejLimDif=32, Ativo=1, TipoAgente=3, txtObsNotif="Obs")";

Ref<EquiptoED> RegistroCompleto(const std::string &sensores = "")
{
    return DoTexto<EquiptoED>(MembrosDoServico + sensores +
                              R"(, ClienteTrans="PREFEITURA", )"
                              "OperadorTrans=123456789012, DataTrans=20260314, "
                              "HoraTrans=93005");
}

void ConfereVazio(clsEquipto &equipto, bool ativo)
{
    EXPECT_EQ(equipto.NroIntEquip, 0);
    EXPECT_EQ(equipto.ToEquiptoED()->Texto(),
              std::string(R"(EquiptoED{ClienteInc="", Codigo="", SubCodigo="", Descricao="", CodMunic=0, TipoVia="", )"
                          R"(TipoEquip="", VelocPermitida=0, ArquivoLayout="", TemImagemEntrelacada=2, Modelo="", )") +
                  "TemLimiteDif=2, TemPerfilMag=2, Ativo=" + (ativo ? "1" : "2") + ", TipoAgente=0}");
    EXPECT_EQ(equipto.NroIntRejLimDif, 0);
    EXPECT_EQ(equipto.ClienteTrans(), "");
    EXPECT_FALSE(equipto.Alterado);
}

TEST(clsEquipto, New_HasDefaultsAndSendsNeitherNumberNorSensors)
{
    auto equipto = Novo<clsEquipto>();
    EXPECT_EQ(equipto->NomeTipo(), "clsEquipto");
    EXPECT_EQ(equipto->ListaSensores()->Count(), 0);
    EXPECT_EQ(equipto->OperadorTrans(), "");
    EXPECT_EQ(equipto->DataTrans(), "");
    EXPECT_EQ(equipto->HoraTrans(), "");
    equipto->ListaSensores()->Add(1, "Rua A")->Alterado = true;
    ConfereVazio(*equipto, false);
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

TEST(clsEquipto, ToEquiptoED_OfEachState_SendsWhatItSays)
{
    struct {
        const char *Nome;
        void (*Muda)(clsEquipto &);                              // of a complete record
        std::vector<std::pair<std::string, std::string>> Trocas; // in what it sends
    } const casos[] = {
        {"complete", [](clsEquipto &) {}, {}},
        {"not interlaced", [](clsEquipto &e) { e.TemImagemEntrelacada = false; }, {{"Entrelacada=1", "Entrelacada=2"}}},
        {"limits", [](clsEquipto &e) { e.TemLimiteDif = true; }, {{"LimiteDif=2", "LimiteDif=1"}}},
        {"no profile", [](clsEquipto &e) { e.TemPerfilMag = false; }, {{"PerfilMag=1", "PerfilMag=2"}}},
        {"inactive", [](clsEquipto &e) { e.Ativo = false; }, {{"Ativo=1", "Ativo=2"}}},
        {"a negative number sends no sensors",
         [](clsEquipto &e) {
             e.NroIntEquip = -1;
             e.ListaSensores()->Add(1, "Rua A")->Alterado = true;
         },
         {{"NroIntEquip=12, ", ""}}},
        {"meter type 2 never sends the speed",
         [](clsEquipto &e) { e.TipoAgente = 2; },
         {{"VelocPermitida=60, ", ""}, {"TipoAgente=1", "TipoAgente=2"}}},
        {"cleared by the user",
         [](clsEquipto &e) {
             e.SetorInc = "";
             e.txtObsNotif = "";
             e.NroIntRejLimDif = 0;
         },
         {{R"(SetorInc="TRANSITO", )", ""}, {"NroIntRejLimDif=31, ", ""}, {R"(, txtObsNotif="Equipamento fixo")", ""}}},
        {"a negative rejection", [](clsEquipto &e) { e.NroIntRejLimDif = -1; }, {{"NroIntRejLimDif=31, ", ""}}},
        {"a sensor not altered", [](clsEquipto &e) { e.ListaSensores()->Add(1, "um"); }, {}},
        {"a calibration altered but not its sensor",
         [](clsEquipto &e) {
             e.ListaSensores()->Add(1, "um")->ListaAfericoes()->Add("A", "", {}, {}, 0)->Alterado = true;
         },
         {}},
        {"several sensors altered, with their altered calibrations, in order",
         [](clsEquipto &e) {
             e.ListaSensores()->Add(1, "um")->Alterado = true;
             e.ListaSensores()->Add(2, "dois");
             auto tres = e.ListaSensores()->Add(3, "tres");
             tres->Alterado = true;
             tres->Ativo = false;
             tres->ListaAfericoes()->Add("A", "", {}, {}, 0);
             tres->ListaAfericoes()->Add("B", "", {}, {}, 0)->Alterado = true;
         },
         {{"TipoAgente=1",
           R"(Sensores=[SensorED{NroSensor=1, Ativo=1, LocalInfr="um"}, SensorED{Afericoes=[AfericaoED{Numero="B", )"
           R"(Marca="", DataVerificacao=00:00:00, DataVencimento=00:00:00, Ativo=1, NroIntImgCertif=0, TipoAfer=0, )"
           R"(PortDimel=""}], NroSensor=3, Ativo=2, LocalInfr="tres"}], TipoAgente=1)"}}},
    };
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Nome);
        std::string esperado = Enviado;
        for (const auto &[antes, depois] : caso.Trocas) {
            esperado.replace(esperado.find(antes), antes.size(), depois);
        }
        auto equipto = EquiptoCompleto();
        caso.Muda(*equipto);
        EXPECT_EQ(equipto->ToEquiptoED()->Texto(), esperado);
        EXPECT_TRUE(equipto->Alterado);
    }
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

TEST(clsEquipto, ToEquiptoED_ListWasEnded_RaisesFault91WithItsTail)
{
    auto equipto = EquiptoCompleto();
    equipto->ListaSensores()->Finaliza();
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < clsEquipto.ToEquiptoED", [&] { equipto->ToEquiptoED(); }));
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
    // What an operation answers from now on.
    void Responde(const std::string &metodo, const Resposta &resposta)
    {
        host->Atende<EquiptoED>("EquiptoRN", metodo, [resposta](const Ref<EquiptoED> &) { return resposta; });
    }
    // A complete record with one sensor.
    static Ref<clsEquipto> ComSensor(std::int32_t nroIntEquip = 12)
    {
        auto equipto = EquiptoCompleto(nroIntEquip);
        equipto->ListaSensores()->Add(1, "um");
        return equipto;
    }
    // Such a record as it was made.
    static void ConfereIntacto(clsEquipto &equipto, std::int32_t nroIntEquip = 12)
    {
        EXPECT_EQ(equipto.NroIntEquip, nroIntEquip);
        EXPECT_EQ(equipto.Codigo, "R001");
        EXPECT_TRUE(equipto.Alterado);
        EXPECT_EQ(equipto.ListaSensores()->Count(), 1);
    }
    // The log of a remote call, with what followed it.
    void ConfereChamada(const std::string &metodo, const std::string &pedido, const Textos &depois)
    {
        Textos esperado{"Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
                        "EquiptoRN.ExecutaMetodo(\"" + metodo + "\", " + pedido};
        esperado.insert(esperado.end(), depois.begin(), depois.end());
        EXPECT_TRUE(RegistroIgual(host->Registro(), esperado));
    }
};

const Textos AposResposta{"EquiptoRN.ObtemRetorno() -> EquiptoED{NroIntEquip=77*",
                          "goMensagem.FormataData(20260314, 0) -> \"14/03/2026\"",
                          "goMensagem.FormataHora(93005, 0) -> \"09:30:05\""};

TEST_F(clsEquiptoComHost, CarregaED_Complete_CopiesEveryMember)
{
    auto equipto = EquiptoCompleto();
    equipto->CarregaED(RegistroCompleto());
    EXPECT_EQ(equipto->ToEquiptoED()->Texto(), "EquiptoED{" + MembrosDoServico + "}");
    EXPECT_EQ(equipto->ClienteTrans(), "PREFEITURA");
    EXPECT_EQ(equipto->OperadorTrans(), "123456789012");
    EXPECT_EQ(equipto->DataTrans(), "14/03/2026");
    EXPECT_EQ(equipto->HoraTrans(), "09:30:05");
    EXPECT_FALSE(equipto->Alterado);
    EXPECT_EQ(host->Registro(), Textos(AposResposta.begin() + 1, AposResposta.end()));
}

TEST_F(clsEquiptoComHost, CarregaED_FreshRecord_EmptiesEverythingAndReadsActive)
{
    auto equipto = ComSensor();
    equipto->CarregaED(Novo<EquiptoED>());
    ConfereVazio(*equipto, true);
    EXPECT_EQ(equipto->ListaSensores()->Count(), 0);
    EXPECT_EQ(equipto->OperadorTrans(), "0");
    EXPECT_EQ(equipto->DataTrans(), "");
    EXPECT_EQ(equipto->HoraTrans(), "00:00:00");
}

TEST_F(clsEquiptoComHost, CarregaED_FlagBytes_OnlyOneIsTrueButForActiveOnlyTwoIsFalseEachOfItsOwn)
{
    for (std::uint8_t octeto : Bytes{0, 1, 2, 3, 255}) {
        for (int qual = 0; qual < 4; ++qual) { // the byte of that one, and the opposite in the others
            const auto byte = [&](int deste) -> std::uint8_t { return qual == deste ? octeto : octeto == 1 ? 2 : 1; };
            auto ED = Novo<EquiptoED>();
            ED->TemImagemEntrelacada = byte(0);
            ED->TemLimiteDif = byte(1);
            ED->TemPerfilMag = byte(2);
            ED->Ativo = byte(3);
            auto equipto = Novo<clsEquipto>();
            equipto->CarregaED(ED);
            EXPECT_EQ(equipto->TemImagemEntrelacada, byte(0) == 1) << int{octeto} << ' ' << qual;
            EXPECT_EQ(equipto->TemLimiteDif, byte(1) == 1) << int{octeto} << ' ' << qual;
            EXPECT_EQ(equipto->TemPerfilMag, byte(2) == 1) << int{octeto} << ' ' << qual;
            EXPECT_EQ(equipto->Ativo, byte(3) != 2) << int{octeto} << ' ' << qual;
        }
    }
}

TEST_F(clsEquiptoComHost, CarregaED_WithSensors_RebuildsListInOrderWithKeysFromS1)
{
    auto equipto = Novo<clsEquipto>();
    auto velho = equipto->ListaSensores()->Add(1, "velho");
    equipto->ListaSensores()->Add(2, "outro velho");
    velho->Alterado = true;
    auto lista = equipto->ListaSensores();

    equipto->CarregaED(RegistroCompleto(R"(, Sensores=[SensorED{Afericoes=[AfericaoED{Numero="b"}, )"
                                        R"(AfericaoED{Numero="a"}], NroSensor=2}, SensorED{NroSensor=1}])"));

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
    auto equipto = ComSensor();
    equipto->CarregaED(RegistroCompleto());
    EXPECT_EQ(equipto->ListaSensores()->Count(), 0);
}

TEST_F(clsEquiptoComHost, CarregaED_Nothing_RaisesFault91AndChangesNothing)
{
    auto equipto = ComSensor();
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < clsEquipto.CarregaED", [&] { equipto->CarregaED(nullptr); }));
    ConfereIntacto(*equipto);
}

TEST_F(clsEquiptoComHost, CarregaED_FormatFails_EverythingBeforeItIsCopiedAndNothingBehind)
{
    for (const auto &[passo, data] :
         {std::pair{"goMensagem.FormataData", ""}, {"goMensagem.FormataHora", "14/03/2026"}}) {
        auto equipto = ComSensor();
        host->FalhaEm(passo, 1, 1234, "caiu");
        EXPECT_TRUE(Lanca(1234, std::string(passo) + " < clsEquipto.CarregaED", "caiu",
                          [&] { equipto->CarregaED(RegistroCompleto()); }));
        EXPECT_EQ(equipto->ToEquiptoED()->Texto(), "EquiptoED{" + MembrosDoServico + "}");
        EXPECT_EQ(equipto->ClienteTrans(), "PREFEITURA");
        EXPECT_EQ(equipto->OperadorTrans(), "123456789012");
        EXPECT_EQ(equipto->DataTrans(), data);
        EXPECT_EQ(equipto->HoraTrans(), "");
        EXPECT_TRUE(equipto->Alterado);
        EXPECT_EQ(equipto->ListaSensores()->Count(), 1);
    }
}

TEST_F(clsEquiptoComHost, CarregaED_NothingAmongTheSensors_RaisesWithTheWholePathAfterAlteradoWasReset)
{
    auto equipto = EquiptoCompleto();
    auto ED = RegistroCompleto(", Sensores=[SensorED{NroSensor=1}]");
    ED->Sensores.Valor()->Add(nullptr);
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < clsListaSensores.AddSensorED < clsEquipto.CarregaED",
                      [&] { equipto->CarregaED(ED); }));
    EXPECT_FALSE(equipto->Alterado);
    EXPECT_EQ(equipto->ListaSensores()->Count(), 1);
}

TEST_F(clsEquiptoComHost, Salva_New_SendsIncluiAndLoadsWhatTheServiceAnswers)
{
    Responde("inclui", RegistroCompleto());
    auto equipto = ComSensor(0);
    equipto->ListaSensores()->Item(1)->Alterado = true;
    const std::string esperado = equipto->ToEquiptoED()->Texto();
    EXPECT_TRUE(equipto->Salva());
    EXPECT_EQ(equipto->ToEquiptoED()->Texto(), "EquiptoED{" + MembrosDoServico + "}");
    EXPECT_EQ(equipto->DataTrans(), "14/03/2026");
    EXPECT_FALSE(equipto->Alterado);
    EXPECT_EQ(equipto->ListaSensores()->Count(), 0);
    ConfereChamada("inclui", esperado + ") -> True", AposResposta);
}

TEST_F(clsEquiptoComHost, Salva_Saved_SendsAlteraAndLeavesTheRecordAsItIs)
{
    Responde("altera", RegistroCompleto());
    auto equipto = ComSensor();
    equipto->ListaSensores()->Item(1)->Alterado = true;
    EXPECT_TRUE(equipto->Salva());
    ConfereIntacto(*equipto);
    EXPECT_TRUE(equipto->ListaSensores()->Item(1)->Alterado);
    ConfereChamada("altera", "EquiptoED{NroIntEquip=12, *", {});
}

// The service's mark of what was read goes back with the change, and the one of what was saved with the next.
TEST_F(clsEquiptoComHost, Salva_Saved_HandsBackTheMarkOfWhatWasReadLast)
{
    const auto lido = RegistroCompleto();
    lido->VersaoLida = 5;
    auto equipto = Novo<clsEquipto>();
    EXPECT_EQ(equipto->ToEquiptoED()->VersaoLida, 0);
    equipto->CarregaED(lido);
    std::vector<std::int64_t> vindas;
    bool recusa = true;
    host->Atende<EquiptoED>("EquiptoRN", "altera", [&](const Ref<EquiptoED> &pedido) {
        vindas.push_back(pedido->VersaoLida);
        pedido->VersaoLida += recusa ? 0 : 1; // a refusal gives no other
        return recusa ? Resposta::Recusa("não") : Resposta();
    });
    EXPECT_FALSE(equipto->Salva());
    recusa = false;
    EXPECT_TRUE(equipto->Salva());
    EXPECT_TRUE(equipto->Salva());
    EXPECT_EQ(vindas, (std::vector<std::int64_t>{5, 5, 6}));
}

TEST_F(clsEquiptoComHost, Salva_NegativeNumber_SendsAlteraWithoutTheNumber)
{
    Responde("altera", {});
    EXPECT_TRUE(EquiptoCompleto(-1)->Salva());
    ConfereChamada("altera", "EquiptoED{ClienteInc=*", {});
}

TEST_F(clsEquiptoComHost, SalvaAndCarrega_Refused_ShowTheServicesErrorAndChangeNothing)
{
    struct {
        const char *Metodo;
        std::int32_t NroIntEquip;
        bool (*Pede)(clsEquipto &);
    } const casos[] = {{"inclui", 0, [](clsEquipto &e) { return e.Salva(); }},
                       {"altera", 12, [](clsEquipto &e) { return e.Salva(); }},
                       {"consulta", 12, [](clsEquipto &e) { return e.Carrega(77); }},
                       {"consulta", 12, [](clsEquipto &e) { return e.ReCarrega(); }}};
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Metodo);
        host->LimpaRegistro();
        host->RecusaOperacao(caso.Metodo, "Código já usado");
        auto equipto = ComSensor(caso.NroIntEquip);
        EXPECT_FALSE(caso.Pede(*equipto));
        ConfereIntacto(*equipto, caso.NroIntEquip);
        ConfereChamada(caso.Metodo, "*", {"EquiptoRN.MostraErro() -> \"Código já usado\""});
    }
    EXPECT_TRUE(host->Erros().empty());
}

TEST_F(clsEquiptoComHost, Salva_ServiceReplacesTheRecord_GoesOnUnlessItIsOfAnotherTypeEvenWhenRefused)
{
    Responde("altera", Resposta(RegistroCompleto()).Troca(RegistroCompleto()));
    auto equipto = ComSensor();
    EXPECT_TRUE(equipto->Salva());
    ConfereIntacto(*equipto);
    Responde("altera", Resposta::Recusa("não").Troca(Novo<AfericaoED>()));
    EXPECT_TRUE(Lanca(13, "ZTAVOREQUIP < clsEquipto.Salva", [&] { equipto->Salva(); }));
    EXPECT_FALSE(host->Contem("EquiptoRN.MostraErro"));
}

TEST_F(clsEquiptoComHost, SalvaAndCarrega_AnsweredNothingOrAnotherType_RaiseAndChangeNothing)
{
    for (const char *metodo : {"inclui", "consulta"}) {
        const bool salva = std::string(metodo) == "inclui";
        const std::string cauda = salva ? " < clsEquipto.Salva" : " < clsEquipto.Carrega";
        auto equipto = ComSensor(salva ? 0 : 12);
        const auto pede = [&] { salva ? equipto->Salva() : equipto->Carrega(77); };
        Responde(metodo, Ref<EquiptoED>());
        EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < clsEquipto.CarregaED" + cauda, pede));
        Responde(metodo, Novo<AfericaoED>());
        EXPECT_TRUE(Lanca(13, "ZTAVOREQUIP" + cauda, pede));
        ConfereIntacto(*equipto, salva ? 0 : 12);
    }
}

TEST_F(clsEquiptoComHost, SalvaAndCarrega_EachStepFails_RaiseWithTheirTailsAndWorkAfterwards)
{
    Responde("altera", {});
    Responde("consulta", RegistroCompleto());
    auto equipto = ComSensor();
    for (const std::string passo : {"Gateway.CriaObjetoRN", "EquiptoRN.ExecutaMetodo", "EquiptoRN.ObtemRetorno"}) {
        host->FalhaEm(passo, 1, 1234, "caiu");
        if (passo != "EquiptoRN.ObtemRetorno") {
            EXPECT_TRUE(Lanca(1234, passo + " < clsEquipto.Salva", "caiu", [&] { equipto->Salva(); }));
            host->FalhaEm(passo, 1, 1234, "caiu");
        }
        EXPECT_TRUE(Lanca(1234, passo + " < clsEquipto.Carrega", "caiu", [&] { equipto->Carrega(77); }));
        ConfereIntacto(*equipto);
    }
    host->RecusaOperacao("altera", "não");
    host->FalhaEm("EquiptoRN.MostraErro");
    EXPECT_TRUE(Lanca(51, "EquiptoRN.MostraErro < clsEquipto.Salva", [&] { equipto->Salva(); }));
    EXPECT_TRUE(equipto->Salva());
    host->FalhaEm("EquiptoRN.ExecutaMetodo");
    EXPECT_TRUE(Lanca(51, "EquiptoRN.ExecutaMetodo < clsEquipto.Carrega < clsEquipto.ReCarrega",
                      [&] { equipto->ReCarrega(); }));
    host->FalhaEm("goMensagem.FormataHora");
    EXPECT_TRUE(
        Lanca(51, "goMensagem.FormataHora < clsEquipto.CarregaED < clsEquipto.Carrega", [&] { equipto->Carrega(77); }));
    EXPECT_TRUE(equipto->Carrega(77));
}

TEST_F(clsEquiptoComHost, Salva_RecordCannotBeBuilt_RaisesAfterTheProxyWasAskedAndCallsNothing)
{
    auto equipto = EquiptoCompleto();
    equipto->ListaSensores()->Finaliza();
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < clsEquipto.ToEquiptoED < clsEquipto.Salva", [&] { equipto->Salva(); }));
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Gateway.CriaObjetoRN(*"}));
}

TEST_F(clsEquiptoComHost, Salva_GatewayNotThereYet_IsFetchedFromTheSession)
{
    Responde("altera", {});
    LiberaServicos();
    EXPECT_TRUE(EquiptoCompleto()->Salva());
    EXPECT_EQ(host->Conta("objMTM.ObtemGateway"), 1);
}

TEST_F(clsEquiptoComHost, Carrega_OfAnyNumber_AsksByItAloneAndLoads)
{
    Responde("consulta", RegistroCompleto());
    for (std::int32_t numero : {77, 0, -5}) {
        host->LimpaRegistro();
        auto equipto = EquiptoCompleto();
        EXPECT_TRUE(equipto->Carrega(numero));
        EXPECT_EQ(equipto->Codigo, "P900");
        ConfereChamada("consulta", "EquiptoED{NroIntEquip=" + std::to_string(numero) + "}) -> True", AposResposta);
    }
}

TEST_F(clsEquiptoComHost, ReCarrega_AfterASave_AsksForItsOwnNumberAndForgetsEdits)
{
    Responde("altera", {});
    Responde("consulta", RegistroCompleto(R"(, Sensores=[SensorED{LocalInfr="Sensor 1"}, SensorED{}])"));
    auto equipto = ComSensor();
    equipto->ListaSensores()->Item(1)->Alterado = true;
    ASSERT_TRUE(equipto->Salva());
    EXPECT_TRUE(equipto->Alterado) << "only the reload resets it";
    host->LimpaRegistro();
    EXPECT_TRUE(equipto->ReCarrega());
    EXPECT_FALSE(equipto->Alterado);
    EXPECT_EQ(equipto->ListaSensores()->Count(), 2);
    EXPECT_EQ(equipto->ListaSensores()->Item(1)->LocalInfr, "Sensor 1");
    ConfereChamada("consulta", "EquiptoED{NroIntEquip=12}) -> True", AposResposta);
}

TEST_F(clsEquiptoComHost, CarregaED_FaultAnywhere_NoRecordIsLeftWhenTheRootIsDropped)
{
    auto ED = RegistroCompleto(R"(, Sensores=[SensorED{LocalInfr="Sensor 1"}, SensorED{LocalInfr="Sensor 2", )"
                               R"(Afericoes=[AfericaoED{Numero="a"}, AfericaoED{Numero="b"}]}])");
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
