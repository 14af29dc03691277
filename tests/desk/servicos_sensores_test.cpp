#include "host/Conversoes.h"
#include "tests/desk/ServicosTeste.h"

#include <limits>
#include <stdexcept>
#include <type_traits>
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
        Faz(m_Ana, "altera", Pedido(equipamento, sensor, afericoes));
    }
    std::string Recusa(std::int32_t equipamento, std::int32_t sensor, const std::vector<Ref<AfericaoED>> &afericoes)
    {
        return RecusaDe(m_Ana, "altera", Pedido(equipamento, sensor, afericoes));
    }
    static Ref<AfericaoED> Numerada(double numero, Data de, Data ate)
    {
        return Com(SoAfericao(numero), &AfericaoED::DataVerificacao, de, &AfericaoED::DataVencimento, ate);
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
    Faz(m_Ana, "altera", Poe(SoNumero(numero), Com(SoSensor(1), &SensorED::Ativo, 2)));
    const auto lido = Abre(m_Ana, numero);
    ASSERT_EQ(lido->Sensores.Valor()->Count(), 1);
    EXPECT_EQ(lido->Sensores.Valor()->Item(1)->NroIntSensor.Valor(), 2);
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
    EXPECT_EQ(Recusa(numero, 1, {AfericaoDe("1", Jan, Jun), nullptr}),
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

TEST_F(ServicosSensores, Periodo_OfOneDay_IsAccepted)
{
    EXPECT_EQ(Periodos(ComSensores({{AfericaoDe("1", Jan, Jan)}})), "1 01/01/2026-01/01/2026; ");
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
    EXPECT_EQ(Recusa(numero, 1, {AfericaoDe("88", Jun, Dez)}),
              "O período de 30/06/2026 a 31/12/2026 da aferição 88" + recusa);
    EXPECT_EQ(Recusa(numero, 1, {AfericaoDe("88", DataDe(1, 1, 2025), Jan)}),
              "O período de 01/01/2025 a 01/01/2026 da aferição 88" + recusa);
    EXPECT_EQ(Recusa(numero, 1, {AfericaoDe("88", DataDe(1, 2, 2026), DataDe(2, 2, 2026))}),
              "O período de 01/02/2026 a 02/02/2026 da aferição 88" + recusa);
    EXPECT_EQ(Recusa(numero, 1, {AfericaoDe("88", DataDe(1, 1, 2025), Dez)}),
              "O período de 01/01/2025 a 31/12/2026 da aferição 88" + recusa);
    const auto declaracao = Com(AfericaoDe("", Jun, Dez), &AfericaoED::TipoAfer, 2, &AfericaoED::PortDimel, "15/24");
    EXPECT_EQ(Recusa(numero, 1, {declaracao}),
              "O período de 30/06/2026 a 31/12/2026 da declaração de conformidade 15/24" + recusa);
    EXPECT_EQ(Periodos(numero), "1 01/01/2026-30/06/2026; ");
}

TEST_F(ServicosSensores, Overlap_OfTwoInOneSave_NamesNobody)
{
    const std::int32_t numero = ComSensores({{}});
    EXPECT_EQ(Recusa(numero, 1, {AfericaoDe("1", Jan, Jul), AfericaoDe("2", Jul, Dez)}),
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
    EXPECT_EQ(Recusa(numero, 1, {fora}),
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
        return Pede(m_Ana, "altera", Poe(SoNumero(numero), afericao ? Poe(sensor, afericao) : sensor)).Recusa;
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

TEST_F(ServicosSensores, SensorNumber_MayRepeat)
{
    // A removed sensor's number is given again by the form, and two may end up with the same.
    Faz(m_Ana, "altera", Poe(SoNumero(ComSensores({{}})), SensorDe(1)));
}

} // namespace
