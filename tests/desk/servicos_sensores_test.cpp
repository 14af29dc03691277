#include "host/Conversoes.h"
#include "tests/desk/RegistroDeTeste.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <vector>

using namespace mesa;

namespace {

const Data Jan = DataDe(1, 1, 2026);
const Data Jun = DataDe(30, 6, 2026);
const Data Jul = DataDe(1, 7, 2026);
const Data Dez = DataDe(31, 12, 2026);

class ServicosSensores : public testing::Test {
  protected:
    // The equipment's number, with one sensor for each list of calibrations.
    std::int32_t Com(const std::vector<std::vector<Ref<AfericaoED>>> &sensores)
    {
        return IncluiComSensores(m_Ana, sensores);
    }
    // An "altera" of the one sensor with these calibrations.
    Retorno Altera(std::int32_t equipamento, std::int32_t sensor, const std::vector<Ref<AfericaoED>> &afericoes)
    {
        auto e = SoNumero(equipamento);
        auto s = Novo<SensorED>();
        s->NroIntSensor = sensor;
        for (const auto &a : afericoes) {
            Poe(s, a);
        }
        Poe(e, s);
        return Pede(m_Ana, "altera", e);
    }
    static Ref<AfericaoED> Numerada(double numero, Data de, Data ate)
    {
        auto a = Novo<AfericaoED>();
        a->NroIntAfericao = numero;
        a->DataVerificacao = de;
        a->DataVencimento = ate;
        return a;
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

    RegistroDeTeste m_Registro;
    Ref<SessaoServico> m_Ana = m_Registro.Sessao("ana");
};

TEST_F(ServicosSensores, altera_NewSensorWithCalibration_GetNumbersOfTheirOwn)
{
    const std::int32_t numero = Com({});
    const double documento = GuardaPdf(m_Ana, "c");
    auto e = SoNumero(numero);
    auto s = SensorDe(1);
    s->CodLograd = 1007;
    s->EndCep = 90010000;
    s->EndNro = 1200;
    s->EndCompl = "fundos";
    s->EndDescr = "Esquina";
    s->SentidoVia = "Norte";
    auto a = AfericaoDe("123", Jan, Dez, documento);
    a->TipoAfer = std::uint8_t{2};
    a->PortDimel = "123/15";
    Poe(s, a);
    Poe(e, s);
    ASSERT_TRUE(Pede(m_Ana, "altera", e).Feita);
    EXPECT_EQ(Abre(m_Ana, numero)->Sensores.Valor()->Item(1)->Texto(),
              "SensorED{Afericoes=[AfericaoED{NroIntAfericao=1, Numero=\"123\", Marca=\"987\", "
              "DataVerificacao=01/01/2026, DataVencimento=31/12/2026, Ativo=1, NroIntImgCertif=1, TipoAfer=2, "
              "PortDimel=\"123/15\"}], NroIntSensor=1, NroSensor=1, CodLograd=1007, EndCep=90010000, EndNro=1200, "
              "EndCompl=\"fundos\", EndDescr=\"Esquina\", SentidoVia=\"Norte\", Ativo=1, "
              "LocalInfr=\"Av. Ipiranga, 1200\"}");
}

TEST_F(ServicosSensores, altera_WithoutLists_LeavesSensorsAndCalibrations)
{
    const std::int32_t numero = Com({{AfericaoDe("1", Jan, Jun)}, {}});
    auto e = SoNumero(numero);
    e->Descricao = "Outra";
    ASSERT_TRUE(Pede(m_Ana, "altera", e).Feita);
    ASSERT_TRUE(Altera(numero, 1, {}).Feita); // the sensor travels, no calibration does
    EXPECT_EQ(Abre(m_Ana, numero)->Sensores.Valor()->Count(), 2);
    EXPECT_EQ(Periodos(numero), "1 01/01/2026-30/06/2026; ");
}

TEST_F(ServicosSensores, altera_OneSensorOfTwo_LeavesTheOther)
{
    const std::int32_t numero = Com({{}, {}});
    auto e = SoNumero(numero);
    auto s = Novo<SensorED>();
    s->NroIntSensor = 2;
    s->LocalInfr = "Rua Nova, 5";
    Poe(e, s);
    ASSERT_TRUE(Pede(m_Ana, "altera", e).Feita);
    const auto lido = Abre(m_Ana, numero);
    EXPECT_EQ(lido->Sensores.Valor()->Item(1)->LocalInfr.Valor(), "Av. Ipiranga, 1200");
    EXPECT_EQ(lido->Sensores.Valor()->Item(2)->LocalInfr.Valor(), "Rua Nova, 5");
    EXPECT_EQ(lido->Sensores.Valor()->Item(2)->NroSensor.Valor(), 2); // left unset
}

TEST_F(ServicosSensores, altera_ByteTwo_DeactivatesAndKeepsTheRows)
{
    const std::int32_t numero = Com({{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}, {}});
    auto a = Novo<AfericaoED>();
    a->NroIntAfericao = 1;
    a->Ativo = std::uint8_t{2};
    ASSERT_TRUE(Altera(numero, 1, {a}).Feita);
    EXPECT_EQ(Periodos(numero), "2 01/07/2026-31/12/2026; ");
    auto e = SoNumero(numero);
    auto s = Novo<SensorED>();
    s->NroIntSensor = 1;
    s->Ativo = std::uint8_t{2};
    Poe(e, s);
    ASSERT_TRUE(Pede(m_Ana, "altera", e).Feita);
    const auto lido = Abre(m_Ana, numero);
    ASSERT_EQ(lido->Sensores.Valor()->Count(), 1);
    EXPECT_EQ(lido->Sensores.Valor()->Item(1)->NroIntSensor.Valor(), 2);
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM SENSOR"), "2");
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM AFERICAO"), "2");
}

TEST_F(ServicosSensores, altera_SensorOfAnotherEquipment_IsRefused)
{
    Com({{}});
    auto outro = EquipamentoDe("R-002");
    Poe(outro, SensorDe(1));
    const std::int32_t numero = Inclui(m_Ana, outro);
    EXPECT_EQ(Altera(numero, 1, {}).Recusa, "O sensor de número interno 1 não é deste equipamento.");
    EXPECT_EQ(Altera(numero, 2, {Numerada(5, Jan, Jun)}).Recusa,
              "A aferição de número interno 5 não é do sensor 1 deste equipamento.");
    EXPECT_EQ(Altera(numero, 2, {Numerada(0.5, Jan, Jun)}).Recusa,
              "A aferição de número interno 0,5 não é do sensor 1 deste equipamento.");
}

TEST_F(ServicosSensores, altera_CalibrationOfAnotherSensor_IsRefused)
{
    const std::int32_t numero = Com({{AfericaoDe("1", Jan, Jun)}, {}});
    EXPECT_EQ(Altera(numero, 2, {Numerada(1, Jan, Jun)}).Recusa,
              "A aferição de número interno 1 não é do sensor 2 deste equipamento.");
}

TEST_F(ServicosSensores, altera_TheSameTwice_IsRefused)
{
    const std::int32_t numero = Com({{AfericaoDe("1", Jan, Jun)}});
    EXPECT_EQ(Altera(numero, 1, {Numerada(1, Jan, Jun), Numerada(1, Jul, Dez)}).Recusa,
              "A aferição de número interno 1 veio duas vezes.");
    auto e = SoNumero(numero);
    for (int vez = 0; vez < 2; ++vez) {
        auto s = Novo<SensorED>();
        s->NroIntSensor = 1;
        Poe(e, s);
    }
    EXPECT_EQ(Pede(m_Ana, "altera", e).Recusa, "O sensor de número interno 1 veio duas vezes.");
}

TEST_F(ServicosSensores, altera_NothingInAList_IsRefused)
{
    const std::int32_t numero = Com({{}});
    auto e = SoNumero(numero);
    Poe(e, Ref<SensorED>());
    EXPECT_EQ(Pede(m_Ana, "altera", e).Recusa, "A lista enviada tem um item vazio na posição 1.");
    EXPECT_EQ(Altera(numero, 1, {AfericaoDe("1", Jan, Jun), nullptr}).Recusa,
              "A lista enviada tem um item vazio na posição 2.");
    EXPECT_EQ(Periodos(numero), "");
}

TEST_F(ServicosSensores, altera_BeyondTheLimits_IsRefused)
{
    const std::int32_t numero = Com({{}});
    const auto recusa = [&](const std::function<void(SensorED &)> &mudanca) {
        auto e = SoNumero(numero);
        auto s = SensorDe(2);
        mudanca(*s);
        Poe(e, s);
        return Pede(m_Ana, "altera", e).Recusa;
    };
    EXPECT_EQ(recusa([](SensorED &s) { s.LocalInfr = std::string(81, 'x'); }),
              "O campo \"endereço na notificação\" aceita até 80 caracteres e veio com 81.");
    EXPECT_EQ(recusa([](SensorED &s) { s.NroSensor = std::int16_t{0}; }),
              "O campo \"número do sensor\" deve estar entre 1 e 999; veio 0.");
    EXPECT_EQ(recusa([](SensorED &s) { s.EndCep = 100000000; }),
              "O campo \"CEP\" deve estar entre 0 e 99999999; veio 100000000.");
    const auto recusaAfericao = [&](const std::function<void(AfericaoED &)> &mudanca) {
        auto a = AfericaoDe("1", Jan, Jun);
        mudanca(*a);
        return Altera(numero, 1, {a}).Recusa;
    };
    EXPECT_EQ(recusaAfericao([](AfericaoED &a) { a.Numero = "12345678901"; }),
              "O campo \"número INMETRO\" aceita até 10 caracteres e veio com 11.");
    EXPECT_EQ(recusaAfericao([](AfericaoED &a) { a.Marca = std::string(15, '1'); }),
              "O campo \"certificado ou declaração\" aceita até 14 caracteres e veio com 15.");
    EXPECT_EQ(recusaAfericao([](AfericaoED &a) { a.PortDimel = "1234567/15"; }),
              "O campo \"portaria DIMEL\" aceita até 9 caracteres e veio com 10.");
    EXPECT_EQ(recusaAfericao([](AfericaoED &a) { a.DataVerificacao = Data{}; }),
              "O campo \"data de verificação\" precisa de uma data válida.");
    EXPECT_EQ(recusaAfericao([](AfericaoED &a) { a.DataVencimento = Data{1e9}; }),
              "O campo \"data de vencimento\" precisa de uma data válida.");
    EXPECT_EQ(Periodos(numero), "");
}

TEST_F(ServicosSensores, Periodo_OfOneDay_IsAccepted)
{
    EXPECT_EQ(Periodos(Com({{AfericaoDe("1", Jan, Jan)}})), "1 01/01/2026-01/01/2026; ");
}

TEST_F(ServicosSensores, Periodo_ThatEndsBeforeItBegins_IsRefused)
{
    const std::int32_t numero = Com({{}});
    EXPECT_EQ(Altera(numero, 1, {AfericaoDe("77", Jun, Jan)}).Recusa,
              "A aferição 77 vence em 01/01/2026, antes da sua verificação em 30/06/2026.");
    EXPECT_THROW(m_Registro.Sql("INSERT INTO AFERICAO VALUES (9, 1, '', '', 20260630, 20260101, 1, NULL, 1, '')"),
                 std::runtime_error);
}

TEST_F(ServicosSensores, Periodo_WithTimesOfDay_IsOfCivilDays)
{
    const std::int32_t numero = Com({{AfericaoDe("1", Data{Jan.Valor + 0.9}, Data{Jun.Valor + 0.1})}});
    EXPECT_EQ(Periodos(numero), "1 01/01/2026-30/06/2026; ");
    EXPECT_TRUE(Altera(numero, 1, {AfericaoDe("2", Jul, Dez)}).Feita);
}

TEST_F(ServicosSensores, Overlap_OfANewOne_IsRefusedWithWhichAndWho)
{
    const std::int32_t numero = Com({{AfericaoDe("77", Jan, Jun)}});
    const std::string recusa =
        " do sensor 1 tem dias em comum com o da aferição 77 (01/01/2026 a 30/06/2026), gravada por Ana Souza em "
        "20/11/2026 às 10:00:00.";
    m_Registro.PassaSegundos(60);
    EXPECT_EQ(Altera(numero, 1, {AfericaoDe("88", Jun, Dez)}).Recusa,
              "O período de 30/06/2026 a 31/12/2026 da aferição 88" + recusa);
    EXPECT_EQ(Altera(numero, 1, {AfericaoDe("88", DataDe(1, 1, 2025), Jan)}).Recusa,
              "O período de 01/01/2025 a 01/01/2026 da aferição 88" + recusa);
    EXPECT_EQ(Altera(numero, 1, {AfericaoDe("88", DataDe(1, 2, 2026), DataDe(2, 2, 2026))}).Recusa,
              "O período de 01/02/2026 a 02/02/2026 da aferição 88" + recusa);
    EXPECT_EQ(Altera(numero, 1, {AfericaoDe("88", DataDe(1, 1, 2025), Dez)}).Recusa,
              "O período de 01/01/2025 a 31/12/2026 da aferição 88" + recusa);
    auto declaracao = AfericaoDe("", Jun, Dez);
    declaracao->TipoAfer = std::uint8_t{2};
    declaracao->PortDimel = "15/24";
    EXPECT_EQ(Altera(numero, 1, {declaracao}).Recusa,
              "O período de 30/06/2026 a 31/12/2026 da declaração de conformidade 15/24" + recusa);
    EXPECT_EQ(Periodos(numero), "1 01/01/2026-30/06/2026; ");
}

TEST_F(ServicosSensores, Overlap_OfTwoInOneSave_NamesNobody)
{
    const std::int32_t numero = Com({{}});
    EXPECT_EQ(Altera(numero, 1, {AfericaoDe("1", Jan, Jul), AfericaoDe("2", Jul, Dez)}).Recusa,
              "O período de 01/07/2026 a 31/12/2026 da aferição 2 do sensor 1 tem dias em comum com o da aferição 1 "
              "(01/01/2026 a 01/07/2026).");
    EXPECT_EQ(Periodos(numero), "");
}

TEST_F(ServicosSensores, Overlap_OnAnotherSensor_IsNone)
{
    Com({{AfericaoDe("1", Jan, Dez)}, {AfericaoDe("2", Jan, Dez)}});
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM AFERICAO WHERE Ativo = 1"), "2");
}

TEST_F(ServicosSensores, Overlap_WithADeactivatedOne_IsNone)
{
    const std::int32_t numero = Com({{AfericaoDe("1", Jan, Dez)}});
    auto fora = Numerada(1, Jan, Dez);
    fora->Ativo = std::uint8_t{2};
    EXPECT_TRUE(Altera(numero, 1, {AfericaoDe("2", Jan, Dez), fora}).Feita);
    EXPECT_EQ(Periodos(numero), "2 01/01/2026-31/12/2026; ");
}

TEST_F(ServicosSensores, Overlap_OnReactivation_IsRefused)
{
    const std::int32_t numero = Com({{AfericaoDe("1", Jan, Dez)}});
    auto fora = Numerada(1, Jan, Dez);
    fora->Ativo = std::uint8_t{2};
    ASSERT_TRUE(Altera(numero, 1, {fora, AfericaoDe("2", Jul, Dez)}).Feita);
    fora->Ativo = std::uint8_t{1};
    EXPECT_EQ(Altera(numero, 1, {fora}).Recusa,
              "O período de 01/01/2026 a 31/12/2026 da aferição 1 do sensor 1 tem dias em comum com o da aferição 2 "
              "(01/07/2026 a 31/12/2026), gravada por Ana Souza em 20/11/2026 às 10:00:00.");
    fora->DataVencimento = Jun;
    EXPECT_TRUE(Altera(numero, 1, {fora}).Feita);
    EXPECT_EQ(Periodos(numero), "1 01/01/2026-30/06/2026; 2 01/07/2026-31/12/2026; ");
}

TEST_F(ServicosSensores, Overlap_ShortenAndAdd_SucceedsInEitherOrder)
{
    for (const bool novaPrimeiro : {false, true}) {
        auto e = EquipamentoDe(novaPrimeiro ? "A" : "B");
        auto s = SensorDe(1);
        Poe(s, AfericaoDe("1", Jan, Dez));
        Poe(e, s);
        const std::int32_t numero = Inclui(m_Ana, e);
        const Ref<EquiptoED> lido = Abre(m_Ana, numero);
        const SensorED &gravado = *lido->Sensores.Valor()->Item(1);
        const auto curta = Numerada(gravado.Afericoes.Valor()->Item(1)->NroIntAfericao, Jan, Jun);
        const auto nova = AfericaoDe("2", Jul, Dez);
        ASSERT_TRUE(
            Altera(numero, gravado.NroIntSensor, novaPrimeiro ? std::vector{nova, curta} : std::vector{curta, nova})
                .Feita);
        EXPECT_EQ(Abre(m_Ana, numero)->Sensores.Valor()->Item(1)->Afericoes.Valor()->Count(), 2);
    }
}

TEST_F(ServicosSensores, Overlap_TwoThatChangePlaces_Succeed)
{
    const std::int32_t numero = Com({{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}});
    ASSERT_TRUE(Altera(numero, 1, {Numerada(1, Jul, Dez), Numerada(2, Jan, Jun)}).Feita);
    EXPECT_EQ(Periodos(numero), "1 01/07/2026-31/12/2026; 2 01/01/2026-30/06/2026; ");
}

TEST_F(ServicosSensores, Overlap_AfterARefusedSave_NothingStaysAside)
{
    const std::int32_t numero = Com({{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}});
    EXPECT_FALSE(Altera(numero, 1, {Numerada(1, Jan, Dez)}).Feita);
    EXPECT_EQ(Periodos(numero), "1 01/01/2026-30/06/2026; 2 01/07/2026-31/12/2026; ");
}

TEST_F(ServicosSensores, Overlap_PastTheServices_IsRefusedByTheDatabase)
{
    const std::int32_t numero = Com({{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}});
    EXPECT_THROW(m_Registro.Sql("INSERT INTO AFERICAO VALUES (9, 1, '', '', 20260630, 20260701, 1, NULL, 1, '')"),
                 std::runtime_error);
    EXPECT_THROW(m_Registro.Sql("UPDATE AFERICAO SET DataVencimento = 20260701 WHERE NroIntAfericao = 1"),
                 std::runtime_error);
    m_Registro.Sql("INSERT INTO AFERICAO VALUES (9, 1, '', '', 20260630, 20260701, 2, NULL, 1, '')");
    EXPECT_THROW(m_Registro.Sql("UPDATE AFERICAO SET Ativo = 1 WHERE NroIntAfericao = 9"), std::runtime_error);
    EXPECT_THROW(m_Registro.Sql("INSERT OR REPLACE INTO AFERICAO VALUES (9, 1, '', '', 20260630, 20260701, 1, NULL, "
                                "1, '')"),
                 std::runtime_error);
    EXPECT_EQ(Periodos(numero), "1 01/01/2026-30/06/2026; 2 01/07/2026-31/12/2026; ");
}

TEST_F(ServicosSensores, Overlap_ByEveryOtherWayPastTheServices_IsRefusedByTheDatabase)
{
    const std::int32_t numero =
        Com({{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}, {AfericaoDe("3", Jan, Dez)}});
    const auto motivo = [&](const std::string &sql) {
        try {
            m_Registro.Sql(sql);
        } catch (const std::runtime_error &erro) {
            return std::string(erro.what());
        }
        return std::string("done");
    };
    const std::string sobreposta = "AFERICAO_SOBREPOSTA";
    EXPECT_EQ(motivo("UPDATE AFERICAO SET DataVerificacao = 20260630 WHERE NroIntAfericao = 2"), sobreposta);
    EXPECT_EQ(motivo("UPDATE AFERICAO SET NroIntSensor = 1 WHERE NroIntAfericao = 3"), sobreposta);
    EXPECT_EQ(motivo("UPDATE AFERICAO SET DataVerificacao = 20260101, DataVencimento = 20261231"), sobreposta);
    EXPECT_EQ(motivo("UPDATE OR REPLACE AFERICAO SET DataVencimento = 20261231 WHERE NroIntAfericao = 1"), sobreposta);
    EXPECT_EQ(motivo("INSERT INTO AFERICAO VALUES (8, 2, '', '', 20270101, 20270201, 1, NULL, 1, ''), "
                     "(9, 2, '', '', 20270201, 20270301, 1, NULL, 1, '')"),
              sobreposta);
    // A deactivated sensor's calibrations keep their days, so that it can be reactivated.
    EXPECT_EQ(motivo("UPDATE SENSOR SET Ativo = 2"), "done");
    EXPECT_EQ(motivo("INSERT INTO AFERICAO VALUES (9, 1, '', '', 20260101, 20260101, 1, NULL, 1, '')"), sobreposta);
    EXPECT_EQ(motivo("UPDATE SENSOR SET Ativo = 1"), "done");
    EXPECT_EQ(Periodos(numero), "1 01/01/2026-30/06/2026; 2 01/07/2026-31/12/2026; ");
}

TEST_F(ServicosSensores, Sensor_Deactivated_KeepsTheDaysOfItsCalibrations)
{
    const std::int32_t numero = Com({{AfericaoDe("1", Jan, Jun)}});
    const auto ativo = [&](std::uint8_t byte, const Ref<AfericaoED> &afericao) {
        auto e = SoNumero(numero);
        auto s = Novo<SensorED>();
        s->NroIntSensor = 1;
        s->Ativo = byte;
        if (afericao) {
            Poe(s, afericao);
        }
        Poe(e, s);
        return Pede(m_Ana, "altera", e).Recusa;
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
    const std::int32_t numero = Com({{}});
    EXPECT_EQ(Altera(numero, 1, {AfericaoDe("77", Jan, Jun, 5)}).Recusa,
              "O documento de número 5 da aferição 77 não existe no cliente DETRAN/RS.");
    EXPECT_EQ(Altera(numero, 1, {AfericaoDe("77", Jan, Jun, 1.5)}).Recusa,
              "O documento de número 1,5 da aferição 77 não existe no cliente DETRAN/RS.");
    EXPECT_EQ(Altera(numero, 1, {AfericaoDe("77", Jan, Jun, std::numeric_limits<double>::infinity())}).Recusa,
              "O documento de número inválido da aferição 77 não existe no cliente DETRAN/RS.");
    const double deOutro = GuardaPdf(m_Registro.Sessao("elisa"), "x");
    EXPECT_EQ(Altera(numero, 1, {AfericaoDe("77", Jan, Jun, deOutro)}).Recusa,
              "O documento de número 1 da aferição 77 não existe no cliente DETRAN/RS.");
    EXPECT_EQ(Periodos(numero), "");
}

TEST_F(ServicosSensores, Logradouro_ThatIsNotThere_IsRefused)
{
    const std::int32_t numero = Com({{}});
    const auto recusa = [&](std::int32_t codigo) {
        auto e = SoNumero(numero);
        auto s = Novo<SensorED>();
        s->NroIntSensor = 1;
        s->CodLograd = codigo;
        Poe(e, s);
        return Pede(m_Ana, "altera", e).Recusa;
    };
    EXPECT_EQ(recusa(77), "Não existe o logradouro de código 77.");
    EXPECT_EQ(recusa(1000), "Não existe o logradouro de código 1000.");
    EXPECT_EQ(recusa(1999), "Não existe o logradouro de código 1999.");
    EXPECT_EQ(recusa(498001), "Não existe o logradouro de código 498001.");
    EXPECT_EQ(recusa(497001), "");                      // the last municipality's first street
    EXPECT_EQ(recusa(0), "");                           // none
    m_Registro.Sql("UPDATE SENSOR SET CodLograd = 77"); // stored when there was such a street
    EXPECT_EQ(recusa(77), "");
}

TEST_F(ServicosSensores, SensorNumber_MayRepeat)
{
    // A removed sensor's number is given again by the form, and two may end up with the same.
    auto e = SoNumero(Com({{}}));
    Poe(e, SensorDe(1));
    EXPECT_TRUE(Pede(m_Ana, "altera", e).Feita);
}

} // namespace
