#include "host/Conversoes.h"
#include "tests/services/ServicosTeste.h"

#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

using namespace mesa;

namespace {

class ServicosSensores : public ServicosDeAfericoes {
  protected:
    // An "altera" of the one sensor with these calibrations.
    static Ref<EquiptoED> Pedido(std::int32_t equipamento, std::int32_t sensor,
                                 const std::vector<Ref<AfericaoED>> &afericoes)
    {
        const auto s = SoSensor(sensor);
        for (const auto &a : afericoes) {
            Poe(s, a);
        }
        return Poe(SoNumero(equipamento), s);
    }
    void Altera(std::int32_t equipamento, std::int32_t sensor, const std::vector<Ref<AfericaoED>> &afericoes)
    {
        Faz(m_Ana, "altera", Documenta(m_Ana, Pedido(equipamento, sensor, afericoes)));
    }
    std::string Recusa(std::int32_t equipamento, std::int32_t sensor, const std::vector<Ref<AfericaoED>> &afericoes)
    {
        return RecusaDe(m_Ana, "altera", Pedido(equipamento, sensor, afericoes));
    }
    static Ref<AfericaoED> Numerada(double numero, Data de, Data ate)
    {
        return Com(SoAfericao(numero), &AfericaoED::DataVerificacao, de, &AfericaoED::DataVencimento, ate);
    }
    // New ones with their document.
    std::string RecusaDocumentadas(std::int32_t equipamento, std::int32_t sensor,
                                   const std::vector<Ref<AfericaoED>> &afericoes)
    {
        return RecusaDe(m_Ana, "altera", Documenta(m_Ana, Pedido(equipamento, sensor, afericoes)));
    }
    // The active calibrations of the equipment's first active sensor: "1 01/01/2026-30/06/2026; ".
    std::string Periodos(std::int32_t equipamento)
    {
        const ListaDe<AfericaoED> lista = Abre(m_Ana, equipamento)->Sensores.Valor()->Item(1)->Afericoes;
        std::string texto;
        for (std::int32_t n = 1; !lista.Nada() && n <= lista->Count(); ++n) {
            const AfericaoED &a = *lista->Item(n);
            texto += CStr(a.NroIntAfericao.Valor()) + " " + CStr(a.DataVerificacao.Valor()) + "-" +
                     CStr(a.DataVencimento.Valor()) + "; ";
        }
        return texto;
    }
};

TEST_F(ServicosSensores, altera_NewSensorWithCalibration_GetNumbersOfTheirOwn)
{
    const std::int32_t numero = ComSensores({});
    const double documento = GuardaPdf(m_Ana, "c");
    const auto s = SensorDe(1);
    s->CodLograd = m_Registro.IncluiRua("Avenida Ipiranga");
    s->EndCep = 90010000;
    s->EndNro = 1200;
    s->EndCompl = "fundos";
    s->EndDescr = "Esquina";
    s->SentidoVia = "Norte";
    Poe(s, Com(AfericaoDe("123", Jan, Dez, documento), &AfericaoED::TipoAfer, 2, &AfericaoED::PortDimel, "123/15"));
    Faz(m_Ana, "altera", Poe(SoNumero(numero), s));
    EXPECT_EQ(Abre(m_Ana, numero)->Sensores.Valor()->Item(1)->Texto(),
              "SensorED{Afericoes=[AfericaoED{NroIntAfericao=1, Numero=\"123\", Marca=\"987\", "
              "DataVerificacao=01/01/2026, DataVencimento=31/12/2026, Ativo=1, NroIntImgCertif=1, TipoAfer=2, "
              "PortDimel=\"123/15\"}], NroIntSensor=1, NroSensor=1, CodLograd=1, EndCep=90010000, EndNro=1200, "
              "EndCompl=\"fundos\", EndDescr=\"Esquina\", SentidoVia=\"Norte\", Ativo=1, "
              "LocalInfr=\"Av. Ipiranga, 1200\"}");
}

TEST_F(ServicosSensores, altera_WithoutLists_LeavesSensorsAndCalibrations)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Jun)}, {}});
    Faz(m_Ana, "altera", Com(SoNumero(numero), &EquiptoED::Descricao, "Outra"));
    Altera(numero, 1, {}); // the sensor travels, no calibration does
    EXPECT_EQ(Abre(m_Ana, numero)->Sensores.Valor()->Count(), 2);
    EXPECT_EQ(Periodos(numero), "1 01/01/2026-30/06/2026; ");
}

TEST_F(ServicosSensores, altera_OneSensorOfTwo_LeavesTheOther)
{
    const std::int32_t numero = ComSensores({{}, {}});
    Faz(m_Ana, "altera", Poe(SoNumero(numero), Com(SoSensor(2), &SensorED::LocalInfr, "Rua Nova, 5")));
    const auto lido = Abre(m_Ana, numero);
    EXPECT_EQ(lido->Sensores.Valor()->Item(1)->LocalInfr.Valor(), "Av. Ipiranga, 1200");
    EXPECT_EQ(lido->Sensores.Valor()->Item(2)->LocalInfr.Valor(), "Rua Nova, 5");
    EXPECT_EQ(lido->Sensores.Valor()->Item(2)->NroSensor.Valor(), 2); // left unset
}

TEST_F(ServicosSensores, altera_ByteTwo_DeactivatesAndKeepsTheRows)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}, {}});
    Altera(numero, 1, {Com(SoAfericao(1), &AfericaoED::Ativo, 2)});
    EXPECT_EQ(Periodos(numero), "2 01/07/2026-31/12/2026; ");
    Faz(m_Ana, "altera", Poe(SoNumero(numero), Com(SoSensor(2), &SensorED::Ativo, 2)));
    const auto lido = Abre(m_Ana, numero);
    ASSERT_EQ(lido->Sensores.Valor()->Count(), 1);
    EXPECT_EQ(lido->Sensores.Valor()->Item(1)->NroIntSensor.Valor(), 1);
    EXPECT_EQ(Linhas("SENSOR") + Linhas("AFERICAO"), "22");
}

TEST_F(ServicosSensores, altera_SensorOfAnotherEquipment_IsRefused)
{
    ComSensores({{}});
    const std::int32_t numero = Inclui(m_Ana, Poe(EquipamentoDe("R-002"), SensorDe(1)));
    EXPECT_EQ(Recusa(numero, 1, {}), "O sensor de número interno 1 não é deste equipamento.");
    EXPECT_EQ(Recusa(numero, 2, {Numerada(5, Jan, Jun)}),
              "A aferição de número interno 5 não é do sensor 1 deste equipamento.");
    EXPECT_EQ(Recusa(numero, 2, {Numerada(0.5, Jan, Jun)}),
              "A aferição de número interno 0,5 não é do sensor 1 deste equipamento.");
}

TEST_F(ServicosSensores, altera_CalibrationOfAnotherSensor_IsRefused)
{
    EXPECT_EQ(Recusa(ComSensores({{AfericaoDe("1", Jan, Jun)}, {}}), 2, {Numerada(1, Jan, Jun)}),
              "A aferição de número interno 1 não é do sensor 2 deste equipamento.");
}

TEST_F(ServicosSensores, altera_TheSameTwice_IsRefused)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Jun)}});
    EXPECT_EQ(Recusa(numero, 1, {Numerada(1, Jan, Jun), Numerada(1, Jul, Dez)}),
              "A aferição de número interno 1 veio duas vezes.");
    EXPECT_EQ(RecusaDe(m_Ana, "altera", Poe(Poe(SoNumero(numero), SoSensor(1)), SoSensor(1))),
              "O sensor de número interno 1 veio duas vezes.");
}

TEST_F(ServicosSensores, altera_NothingInAList_IsRefused)
{
    const std::int32_t numero = ComSensores({{}});
    EXPECT_EQ(RecusaDe(m_Ana, "altera", Poe(SoNumero(numero), Ref<SensorED>())),
              "A lista enviada tem um item vazio na posição 1.");
    EXPECT_EQ(Recusa(numero, 1, {AfericaoDe("1", Jan, Jun, GuardaPdf(m_Ana, "x")), nullptr}),
              "A lista enviada tem um item vazio na posição 2.");
    EXPECT_EQ(Periodos(numero), "");
}

TEST_F(ServicosSensores, altera_BeyondTheLimits_IsRefused)
{
    const std::int32_t numero = ComSensores({{}});
    const auto doSensor = [&]<class T>(Campo<T> SensorED::*campo, std::type_identity_t<T> valor) {
        return RecusaDe(m_Ana, "altera", Poe(SoNumero(numero), Com(SensorDe(2), campo, valor)));
    };
    EXPECT_EQ(doSensor(&SensorED::LocalInfr, std::string(81, 'x')),
              "O campo \"endereço na notificação\" aceita até 80 caracteres e veio com 81.");
    EXPECT_EQ(doSensor(&SensorED::NroSensor, 0), "O campo \"número do sensor\" deve estar entre 1 e 999; veio 0.");
    EXPECT_EQ(doSensor(&SensorED::EndCep, 100000000), "O campo \"CEP\" deve estar entre 0 e 99999999; veio 100000000.");
    const auto daAfericao = [&]<class T>(Campo<T> AfericaoED::*campo, std::type_identity_t<T> valor) {
        return Recusa(numero, 1, {Com(AfericaoDe("1", Jan, Jun), campo, valor)});
    };
    EXPECT_EQ(daAfericao(&AfericaoED::Numero, "12345678901"),
              "O campo \"número INMETRO\" aceita até 10 caracteres e veio com 11.");
    EXPECT_EQ(daAfericao(&AfericaoED::Marca, std::string(15, '1')),
              "O campo \"certificado ou declaração\" aceita até 14 caracteres e veio com 15.");
    EXPECT_EQ(daAfericao(&AfericaoED::PortDimel, "1234567/15"),
              "O campo \"portaria DIMEL\" aceita até 9 caracteres e veio com 10.");
    EXPECT_EQ(daAfericao(&AfericaoED::DataVerificacao, Data{}),
              "O campo \"data de verificação\" precisa de uma data válida.");
    EXPECT_EQ(daAfericao(&AfericaoED::DataVencimento, Data{1e9}),
              "O campo \"data de vencimento\" precisa de uma data válida.");
    EXPECT_EQ(Periodos(numero), "");
}

// The form leaves a calibration with its first day when a new one begins on the second.
TEST_F(ServicosSensores, Periodo_OfOneDay_IsOnlyWhatANewCalibrationLeaves)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Jun)}});
    EXPECT_EQ(RecusaDocumentadas(numero, 1, {AfericaoDe("2", Jul, Jul)}),
              "A aferição 2 vence no dia da sua verificação, 01/07/2026: o vencimento deve ser posterior.");
    EXPECT_EQ(Recusa(numero, 1, {Numerada(1, Jun, Jun)}),
              "A aferição 1 vence no dia da sua verificação, 30/06/2026: o vencimento deve ser posterior.");
    Altera(numero, 1, {Com(SoAfericao(1), &AfericaoED::DataVencimento, Jan), AfericaoDe("2", Jan.MaisDias(1), Dez)});
    EXPECT_EQ(Periodos(numero), "1 01/01/2026-01/01/2026; 2 02/01/2026-31/12/2026; ");
}

TEST_F(ServicosSensores, Periodo_ThatEndsBeforeItBegins_IsRefused)
{
    const std::int32_t numero = ComSensores({{}});
    EXPECT_EQ(Recusa(numero, 1, {AfericaoDe("77", Jun, Jan)}),
              "A aferição 77 vence em 01/01/2026, antes da sua verificação em 30/06/2026.");
    EXPECT_THROW(m_Registro.Sql("INSERT INTO AFERICAO VALUES (9, 1, '', '', 20260630, 20260101, 1, NULL, 1, '', 1)"),
                 std::runtime_error);
}

TEST_F(ServicosSensores, Periodo_WithTimesOfDay_IsOfCivilDays)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Data{Jan.Valor + 0.9}, Data{Jun.Valor + 0.1})}});
    EXPECT_EQ(Periodos(numero), "1 01/01/2026-30/06/2026; ");
    Altera(numero, 1, {AfericaoDe("2", Jul, Dez)});
}

TEST_F(ServicosSensores, Overlap_OfANewOne_IsRefusedWithWhichAndWho)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("77", Jan, Jun)}});
    const std::string recusa =
        " do sensor 1 tem dias em comum com o da aferição 77 (01/01/2026 a 30/06/2026), gravada por Ana Souza em "
        "20/11/2026 às 10:00:00.";
    m_Registro.PassaSegundos(60);
    EXPECT_EQ(RecusaDocumentadas(numero, 1, {AfericaoDe("88", Jun, Dez)}),
              "O período de 30/06/2026 a 31/12/2026 da aferição 88" + recusa);
    EXPECT_EQ(RecusaDocumentadas(numero, 1, {AfericaoDe("88", DataDe(1, 1, 2025), Jan)}),
              "O período de 01/01/2025 a 01/01/2026 da aferição 88" + recusa);
    EXPECT_EQ(RecusaDocumentadas(numero, 1, {AfericaoDe("88", DataDe(1, 2, 2026), DataDe(2, 2, 2026))}),
              "O período de 01/02/2026 a 02/02/2026 da aferição 88" + recusa);
    EXPECT_EQ(RecusaDocumentadas(numero, 1, {AfericaoDe("88", DataDe(1, 1, 2025), Dez)}),
              "O período de 01/01/2025 a 31/12/2026 da aferição 88" + recusa);
    const auto declaracao = Com(AfericaoDe("", Jun, Dez), &AfericaoED::TipoAfer, 2, &AfericaoED::PortDimel, "15/24");
    EXPECT_EQ(RecusaDocumentadas(numero, 1, {declaracao}),
              "O período de 30/06/2026 a 31/12/2026 da declaração de conformidade 15/24" + recusa);
    EXPECT_EQ(Periodos(numero), "1 01/01/2026-30/06/2026; ");
}

TEST_F(ServicosSensores, Overlap_OfTwoInOneSave_NamesNobody)
{
    const std::int32_t numero = ComSensores({{}});
    EXPECT_EQ(RecusaDocumentadas(numero, 1, {AfericaoDe("1", Jan, Jul), AfericaoDe("2", Jul, Dez)}),
              "O período de 01/07/2026 a 31/12/2026 da aferição 2 do sensor 1 tem dias em comum com o da aferição 1 "
              "(01/01/2026 a 01/07/2026).");
    EXPECT_EQ(Periodos(numero), "");
}

TEST_F(ServicosSensores, Overlap_OnAnotherSensor_IsNone)
{
    ComSensores({{AfericaoDe("1", Jan, Dez)}, {AfericaoDe("2", Jan, Dez)}});
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM AFERICAO WHERE Ativo = 1"), "2");
}

TEST_F(ServicosSensores, Overlap_WithADeactivatedOne_IsNone)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Dez)}});
    Altera(numero, 1, {AfericaoDe("2", Jan, Dez), Com(Numerada(1, Jan, Dez), &AfericaoED::Ativo, 2)});
    EXPECT_EQ(Periodos(numero), "2 01/01/2026-31/12/2026; ");
}

TEST_F(ServicosSensores, Overlap_OnReactivation_IsRefused)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Dez)}});
    const auto fora = Com(Numerada(1, Jan, Dez), &AfericaoED::Ativo, 2);
    Altera(numero, 1, {fora, AfericaoDe("2", Jul, Dez)});
    fora->Ativo = std::uint8_t{1};
    EXPECT_EQ(RecusaDocumentadas(numero, 1, {fora}),
              "O período de 01/01/2026 a 31/12/2026 da aferição 1 do sensor 1 tem dias em comum com o da aferição 2 "
              "(01/07/2026 a 31/12/2026), gravada por Ana Souza em 20/11/2026 às 10:00:00.");
    fora->DataVencimento = Jun;
    Altera(numero, 1, {fora});
    EXPECT_EQ(Periodos(numero), "1 01/01/2026-30/06/2026; 2 01/07/2026-31/12/2026; ");
}

TEST_F(ServicosSensores, Overlap_ShortenAndAdd_SucceedsInEitherOrder)
{
    for (const bool novaPrimeiro : {false, true}) {
        const std::int32_t numero = Inclui(
            m_Ana, Poe(EquipamentoDe(novaPrimeiro ? "R-1" : "R-2"), Poe(SensorDe(1), AfericaoDe("1", Jan, Dez))));
        const Ref<EquiptoED> lido = Abre(m_Ana, numero);
        const SensorED &gravado = *lido->Sensores.Valor()->Item(1);
        const auto curta = Numerada(gravado.Afericoes.Valor()->Item(1)->NroIntAfericao, Jan, Jun);
        const auto nova = AfericaoDe("2", Jul, Dez);
        Altera(numero, gravado.NroIntSensor, novaPrimeiro ? std::vector{nova, curta} : std::vector{curta, nova});
        EXPECT_EQ(Abre(m_Ana, numero)->Sensores.Valor()->Item(1)->Afericoes.Valor()->Count(), 2);
    }
}

TEST_F(ServicosSensores, Overlap_TwoThatChangePlaces_Succeed)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}});
    Altera(numero, 1, {Numerada(1, Jul, Dez), Numerada(2, Jan, Jun)});
    EXPECT_EQ(Periodos(numero), "1 01/07/2026-31/12/2026; 2 01/01/2026-30/06/2026; ");
}

TEST_F(ServicosSensores, Overlap_AfterARefusedSave_NothingStaysAside)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}});
    Recusa(numero, 1, {Numerada(1, Jan, Dez)});
    EXPECT_EQ(Periodos(numero), "1 01/01/2026-30/06/2026; 2 01/07/2026-31/12/2026; ");
}

TEST_F(ServicosSensores, Overlap_ByEveryWayPastTheServices_IsRefusedByTheDatabase)
{
    const std::int32_t numero =
        ComSensores({{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}, {AfericaoDe("3", Jan, Dez)}});
    const std::string periodos = Periodos(numero);
    const std::string nova = "INTO AFERICAO VALUES (9, 1, '', '', 20260630, 20260701, ";
    for (const std::string &sql :
         {"INSERT " + nova + "1, NULL, 1, '', 1)", "INSERT OR REPLACE " + nova + "1, NULL, 1, '', 1)",
          std::string("UPDATE AFERICAO SET DataVencimento = 20260701 WHERE NroIntAfericao = 1"),
          std::string("UPDATE AFERICAO SET DataVerificacao = 20260630 WHERE NroIntAfericao = 2"),
          std::string("UPDATE AFERICAO SET DataVerificacao = 20260101, DataVencimento = 20261231"),
          std::string("UPDATE OR REPLACE AFERICAO SET DataVencimento = 20261231 WHERE NroIntAfericao = 1"),
          std::string("INSERT INTO AFERICAO VALUES (8, 2, '', '', 20270101, 20270201, 1, NULL, 1, '', 1), "
                      "(9, 2, '', '', 20270201, 20270301, 1, NULL, 1, '', 1)")}) {
        EXPECT_EQ(MotivoDe(sql), "AFERICAO_SOBREPOSTA") << sql;
    }
    EXPECT_EQ(MotivoDe("UPDATE AFERICAO SET NroIntSensor = 1 WHERE NroIntAfericao = 3"), "AFERICAO_FIXA");
    m_Registro.Sql("INSERT " + nova + "2, NULL, 1, '', 1)");
    EXPECT_EQ(MotivoDe("UPDATE AFERICAO SET Ativo = 1 WHERE NroIntAfericao = 9"), "AFERICAO_SOBREPOSTA");
    // A deactivated sensor's calibrations keep their days, so that it can be reactivated.
    m_Registro.Sql("UPDATE SENSOR SET Ativo = 2");
    EXPECT_EQ(MotivoDe("INSERT INTO AFERICAO VALUES (10, 1, '', '', 20260101, 20260101, 1, NULL, 1, '', 1)"),
              "AFERICAO_SOBREPOSTA");
    m_Registro.Sql("UPDATE SENSOR SET Ativo = 1");
    EXPECT_EQ(Periodos(numero), periodos);
}

TEST_F(ServicosSensores, Sensor_Deactivated_KeepsTheDaysOfItsCalibrations)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Jun)}});
    const auto ativo = [&](std::uint8_t byte, const Ref<AfericaoED> &afericao) {
        const auto sensor = Com(SoSensor(1), &SensorED::Ativo, byte);
        return Pede(m_Ana, "altera", Documenta(m_Ana, Poe(SoNumero(numero), afericao ? Poe(sensor, afericao) : sensor)))
            .Recusa;
    };
    EXPECT_EQ(ativo(2, nullptr), "");
    const std::string recusa =
        "O período de 30/06/2026 a 31/12/2026 da aferição 2 do sensor 1 tem dias em comum com o da aferição 1 "
        "(01/01/2026 a 30/06/2026), gravada por Ana Souza em 20/11/2026 às 10:00:00.";
    EXPECT_EQ(ativo(2, AfericaoDe("2", Jun, Dez)), recusa);
    EXPECT_EQ(ativo(1, AfericaoDe("2", Jun, Dez)), recusa);
    EXPECT_EQ(ativo(1, AfericaoDe("2", Jul, Dez)), "");
    EXPECT_EQ(Periodos(numero), "1 01/01/2026-30/06/2026; 2 01/07/2026-31/12/2026; ");
}

TEST_F(ServicosSensores, Documento_ThatIsNotThere_IsRefused)
{
    const std::int32_t numero = ComSensores({{}});
    EXPECT_EQ(Recusa(numero, 1, {AfericaoDe("77", Jan, Jun, 5)}),
              "O documento de número 5 da aferição 77 não existe no cliente Autoridade Estadual de Trânsito.");
    EXPECT_EQ(Recusa(numero, 1, {AfericaoDe("77", Jan, Jun, 1.5)}),
              "O documento de número 1,5 da aferição 77 não existe no cliente Autoridade Estadual de Trânsito.");
    EXPECT_EQ(Recusa(numero, 1, {AfericaoDe("77", Jan, Jun, std::numeric_limits<double>::infinity())}),
              "O documento de número inválido da aferição 77 não existe no cliente Autoridade Estadual de Trânsito.");
    const double deOutro = GuardaPdf(m_Registro.Sessao("elisa"), "x");
    EXPECT_EQ(Recusa(numero, 1, {AfericaoDe("77", Jan, Jun, deOutro)}),
              "O documento de número 1 da aferição 77 não existe no cliente Autoridade Estadual de Trânsito.");
    EXPECT_EQ(Periodos(numero), "");
}

TEST_F(ServicosSensores, Logradouro_ThatIsNotThere_IsRefused)
{
    const std::int32_t numero = ComSensores({{}});
    const auto recusa = [&](std::int32_t codigo) {
        const auto sensor = Com(SoSensor(1), &SensorED::CodLograd, codigo);
        return Pede(m_Ana, "altera", Poe(SoNumero(numero), sensor)).Recusa;
    };
    EXPECT_EQ(recusa(1), "Não existe o logradouro de código 1.");
    EXPECT_EQ(recusa(m_Registro.IncluiRua("Avenida Ipiranga")), "");
    EXPECT_EQ(recusa(2), "Não existe o logradouro de código 2.");
    EXPECT_EQ(recusa(0), "");                           // none
    m_Registro.Sql("UPDATE SENSOR SET CodLograd = 77"); // stored when there was such a street
    EXPECT_EQ(recusa(77), "");
}

TEST_F(ServicosSensores, Documento_OfAnotherEquipment_IsRefused)
{
    ComSensores({{AfericaoDe("1", Jan, Jun)}});
    const std::int32_t outro = Inclui(m_Ana, Poe(EquipamentoDe("R-002"), SensorDe(1)));
    const std::string recusa = "O documento de número 1 da aferição 77 já é do equipamento R-001: um documento é das "
                               "aferições de um equipamento só. Envie o PDF de novo.";
    EXPECT_EQ(Recusa(outro, 2, {AfericaoDe("77", Jan, Jun, 1)}), recusa);
    Altera(1, 1, {Com(SoAfericao(1), &AfericaoED::Ativo, 2)}); // what was excluded keeps its document
    EXPECT_EQ(Recusa(outro, 2, {AfericaoDe("77", Jan, Jun, 1)}), recusa);
    Faz(m_Ana, "desativa", SoNumero(1));
    EXPECT_EQ(Recusa(outro, 2, {AfericaoDe("77", Jan, Jun, 1)}), recusa);
    Faz(m_Ana, "reativa", SoNumero(1));
    Abre(m_Ana, 1);
    Altera(1, 1, {AfericaoDe("2", Jan, Jun, 1)}); // within the equipment it is shared
    // Nor does a correction let go of what the earlier version rests on.
    Altera(1, 1, {Com(SoAfericao(2), &AfericaoED::NroIntImgCertif, GuardaPdf(m_Ana, "certo"))});
    Altera(1, 1, {Com(SoAfericao(1), &AfericaoED::NroIntImgCertif, GuardaPdf(m_Ana, "outro certo"))});
    EXPECT_EQ(Recusa(outro, 2, {AfericaoDe("77", Jan, Jun, 1)}), recusa);
}

// What the form asks for, asked again: of a new calibration, each on its own.
TEST_F(ServicosSensores, Afericao_AgainstARuleOfTheForm_IsRefusedInWords)
{
    const std::int32_t pardal = ComSensores({{}});
    const double doPardal = GuardaPdf(m_Ana, "pardal");
    const auto um = [&](Ref<AfericaoED> afericao) {
        afericao->NroIntImgCertif = doPardal;
        return afericao;
    };
    const auto declaracao = [&](const std::string &portaria) {
        return Com(um(AfericaoDe("", Jan, Jun)), &AfericaoED::TipoAfer, 2, &AfericaoED::PortDimel, portaria);
    };
    const std::string semPortaria = "O campo \"portaria DIMEL\" precisa de número e ano, como 123/15; veio \"";
    const std::string dosAnos = ", e uma aferição é de um dos anos de 1970 a 2100.";
    struct Caso {
        Ref<AfericaoED> Afericao;
        std::string Recusa;
    };
    const Data hoje = DataDe(20, 11, 2026);
    const std::vector<Caso> casos = {
        {um(AfericaoDe("", Jan, Jun)), "O campo \"número INMETRO\" precisa ser informado."},
        {um(AfericaoDe("  ", Jan, Jun)), "O campo \"número INMETRO\" precisa ser informado."},
        {declaracao(""), semPortaria + "\"."},
        {declaracao("15"), semPortaria + "15\"."},
        {declaracao("0/15"), semPortaria + "0/15\"."},
        {declaracao("12/0"), semPortaria + "12/0\"."},
        {declaracao("/15"), semPortaria + "/15\"."},
        {declaracao("12/"), semPortaria + "12/\"."},
        {declaracao("1/2/3"), semPortaria + "1/2/3\"."},
        {Com(um(AfericaoDe("7", Jan, Jun)), &AfericaoED::TipoAfer, 0), "Não existe o tipo de aferição 0."},
        {Com(um(AfericaoDe("7", Jan, Jun)), &AfericaoED::TipoAfer, 3), "Não existe o tipo de aferição 3."},
        {Com(um(AfericaoDe("7", Jan, Jun)), &AfericaoED::Marca, "12A"),
         "O campo \"certificado ou declaração\" aceita só algarismos; veio \"12A\"."},
        {um(AfericaoDe("7", DataDe(31, 12, 1969), Jun)), "O campo \"data de verificação\" é de 31/12/1969" + dosAnos},
        {um(AfericaoDe("7", DataDe(1, 1, 206), Jun)), "O campo \"data de verificação\" é de 01/01/0206" + dosAnos},
        {um(AfericaoDe("7", Jan, DataDe(1, 1, 2101))), "O campo \"data de vencimento\" é de 01/01/2101" + dosAnos},
        {um(AfericaoDe("7", hoje.MaisDias(1), Dez)),
         "A aferição 7 tem verificação em 21/11/2026, que ainda não chegou: hoje é 20/11/2026."},
        {um(AfericaoDe("7", Jan, Jan)),
         "A aferição 7 vence no dia da sua verificação, 01/01/2026: o vencimento deve ser posterior."},
        {AfericaoDe("7", Jan, Jun), "A aferição 7 não tem documento: envie o PDF."},
    };
    for (const Caso &caso : casos) {
        EXPECT_EQ(Recusa(pardal, 1, {caso.Afericao}), caso.Recusa);
    }
    EXPECT_EQ(Linhas("AFERICAO"), "0");
    Altera(pardal, 1, {declaracao("123456/05")}); // an empty number, and a year of two digits
    Altera(pardal, 1, {Com(um(AfericaoDe("7", hoje, hoje.MaisDias(1))), &AfericaoED::Marca, "")});
}

TEST_F(ServicosSensores, Declaracao_IsOnlyOfTheTypesThatHaveThem)
{
    const auto declaracao = [&](const std::string &tipo, std::uint8_t medidor) {
        const std::int32_t numero = Inclui(m_Ana, Poe(DoTipo(EquipamentoDe("T" + tipo), tipo, medidor), SensorDe(1)));
        const std::int32_t sensor = Abre(m_Ana, numero)->Sensores.Valor()->Item(1)->NroIntSensor;
        const auto afericao = Com(AfericaoDe("", Jan, Jun), &AfericaoED::TipoAfer, 2, &AfericaoED::PortDimel, "15/24");
        return Pede(m_Ana, "altera", Documenta(m_Ana, Pedido(numero, sensor, {afericao}))).Recusa;
    };
    for (const char *tipo : {"C", "L", "P"}) {
        EXPECT_EQ(declaracao(tipo, 1), "") << tipo;
    }
    EXPECT_EQ(declaracao("M", 2), "");
    for (const auto &[tipo, medidor] :
         {std::pair<std::string, std::uint8_t>{"R", 2}, {"A", 2}, {"E", 3}, {"U", 3}, {"F", 1}}) {
        EXPECT_EQ(declaracao(tipo, medidor),
                  "Equipamentos do tipo \"" + tipo + "\" não têm declarações de conformidade.");
    }
}

TEST_F(ServicosSensores, Afericao_Stored_KeepsItsKindAndItsDocument)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Jun)}});
    EXPECT_EQ(Recusa(numero, 1, {Com(SoAfericao(1), &AfericaoED::TipoAfer, 2, &AfericaoED::PortDimel, "1/26")}),
              "O tipo da aferição 1 não pode mais mudar.");
    EXPECT_EQ(Recusa(numero, 1, {Com(SoAfericao(1), &AfericaoED::NroIntImgCertif, 0)}),
              "A aferição 1 não tem documento: envie o PDF.");
    EXPECT_EQ(Recusa(numero, 1, {Com(SoAfericao(1), &AfericaoED::Numero, "")}),
              "O campo \"número INMETRO\" precisa ser informado.");
    EXPECT_EQ(Recusa(numero, 1,
                     {Com(SoAfericao(1), &AfericaoED::DataVerificacao, DataDe(21, 11, 2026),
                          &AfericaoED::DataVencimento, Dez)}),
              "A aferição 1 tem verificação em 21/11/2026, que ainda não chegou: hoje é 20/11/2026.");
}

// Rows of an earlier time, that no rule of today would take, are saved along with what changes about them.
TEST_F(ServicosSensores, Afericao_StoredBeforeTheRules_IsStillSavable)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Jun)}});
    m_Registro.Sql("UPDATE AFERICAO SET Versao = Versao + 1, Numero = '', Marca = 'ABC', NroIntImgCertif = NULL, "
                   "DataVerificacao = 19500101, DataVencimento = 21500101; UPDATE SENSOR SET LocalInfr = ''");
    m_Registro.Historia("AFERICAO", 1);
    m_Registro.Historia("SENSOR", 1);
    const auto inteiro = Abre(m_Ana, numero);
    Com(inteiro, &EquiptoED::Descricao, "Outra");
    Faz(m_Ana, "altera", inteiro);
    EXPECT_EQ(m_Registro.Sql("SELECT Versao FROM EQUIPAMENTO"), "2");
    Altera(numero, 1, {Com(SoAfericao(1), &AfericaoED::DataVencimento, Jun)});
    Altera(numero, 1, {Com(SoAfericao(1), &AfericaoED::Ativo, 2)});
}

TEST_F(ServicosSensores, Sensores_AreNumberedFromOneWithoutGapOrRepetition)
{
    const std::int32_t numero = ComSensores({{}, {}});
    const auto recusa = [&](const std::vector<Ref<SensorED>> &sensores) {
        const auto pedido = SoNumero(numero);
        for (const auto &sensor : sensores) {
            Poe(pedido, sensor);
        }
        return Pede(m_Ana, "altera", pedido).Recusa;
    };
    const auto fora = [](std::int32_t sensor) { return Com(SoSensor(sensor), &SensorED::Ativo, 2); };
    const auto dentro = [](std::int32_t sensor) { return Com(SoSensor(sensor), &SensorED::Ativo, 1); };
    EXPECT_EQ(recusa({SensorDe(2)}), "O equipamento R-001 já tem um sensor de número 2.");
    EXPECT_EQ(recusa({SensorDe(3), SensorDe(3)}), "O equipamento R-001 já tem um sensor de número 3.");
    EXPECT_EQ(recusa({SensorDe(4)}), "O equipamento R-001 não pode ter o sensor 4 sem o sensor 3: os sensores são "
                                     "numerados a partir de 1, sem falhas.");
    EXPECT_EQ(recusa({fora(1)}), "O sensor 1 do equipamento R-001 não pode ser excluído enquanto houver o sensor 2: os "
                                 "sensores são excluídos do último para o primeiro.");
    EXPECT_EQ(recusa({Com(SoSensor(2), &SensorED::NroSensor, 3)}),
              "O número do sensor 2 do equipamento R-001 não pode mais mudar; veio 3.");
    EXPECT_EQ(recusa({Com(SensorDe(3), &SensorED::LocalInfr, " ")}),
              "O campo \"endereço na notificação\" precisa ser informado.");
    EXPECT_EQ(Linhas("SENSOR"), "2");

    EXPECT_EQ(recusa({SensorDe(4), SensorDe(3)}), ""); // in any order
    EXPECT_EQ(recusa({fora(4), fora(3)}), "");
    EXPECT_EQ(recusa({fora(2), SensorDe(2)}), ""); // a removed sensor's number is given again
    EXPECT_EQ(recusa({dentro(2)}), "O equipamento R-001 já tem um sensor de número 2.");
    EXPECT_EQ(recusa({fora(1), fora(5)}), "");
}

// Numbers of an earlier time stay as they are; only who comes and who goes has to fit.
TEST_F(ServicosSensores, Sensores_StoredWithGapsOrTwice_AreStillSavable)
{
    const std::int32_t numero = ComSensores({{}, {}, {}});
    m_Registro.Sql("UPDATE SENSOR SET NroSensor = 5 WHERE NroIntSensor IN (2, 3)");
    Faz(m_Ana, "altera", Poe(SoNumero(numero), Com(SoSensor(2), &SensorED::LocalInfr, "Rua Nova, 5")));
    Faz(m_Ana, "altera", Poe(SoNumero(numero), SensorDe(2)));
    Faz(m_Ana, "altera", Poe(SoNumero(numero), Com(SoSensor(3), &SensorED::Ativo, 2)));
}

TEST_F(ServicosSensores, Sensores_OfTypesWithoutAPageForThem_AreTheOneOfTheCalibrations)
{
    struct Caso {
        std::string Tipo;
        std::uint8_t Medidor;
    };
    for (const Caso &caso : std::vector<Caso>{{"M", 2}, {"A", 2}, {"E", 3}, {"U", 3}}) {
        const std::int32_t numero = Inclui(m_Ana, DoTipo(EquipamentoDe("T" + caso.Tipo), caso.Tipo, caso.Medidor));
        const auto altera = [&](const Ref<SensorED> &sensor) {
            return Pede(m_Ana, "altera", Poe(SoNumero(numero), sensor)).Recusa;
        };
        EXPECT_EQ(altera(SensorDe(2)),
                  "Equipamentos do tipo \"" + caso.Tipo + "\" têm um sensor só, o de número 1; veio 2.");
        EXPECT_EQ(altera(Com(SensorDe(1), &SensorED::LocalInfr, "")), ""); // it has no place of its own
        const std::int32_t sensor = Abre(m_Ana, numero)->Sensores.Valor()->Item(1)->NroIntSensor;
        EXPECT_EQ(altera(Com(SoSensor(sensor), &SensorED::Ativo, 2)),
                  "O sensor 1 do equipamento T" + caso.Tipo +
                      " guarda as aferições do equipamento e não pode ser excluído.");
    }
    const std::int32_t numero = Inclui(m_Ana, DoTipo(EquipamentoDe("TV"), "V", 3));
    EXPECT_EQ(RecusaDe(m_Ana, "altera", Poe(SoNumero(numero), SensorDe(1))),
              "Equipamentos do tipo \"V\" não têm sensores nem aferições.");
}

} // namespace
