#include "tests/desk/RegistroDeTeste.h"

#include "host/ConsultaAfericaoED.h"
#include "host/RelatorioAfericaoED.h"

#include <QByteArray>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace mesa;

namespace {

const Data Jan = DataDe(1, 1, 2026);
const Data Jun = DataDe(30, 6, 2026);
const Data Jul = DataDe(1, 7, 2026);
const Data Dez = DataDe(31, 12, 2026);

class ServicosVigencia : public testing::Test {
  protected:
    std::int32_t Com(const std::vector<std::vector<Ref<AfericaoED>>> &sensores)
    {
        return IncluiComSensores(m_Ana, sensores);
    }
    Ref<AfericaoED> Vigente(std::int32_t equipamento, Data dia)
    {
        auto pedido = Novo<ConsultaAfericaoED>();
        pedido->NroIntEquip = equipamento;
        pedido->DtInfracao = dia;
        pedido->TipoConsulta = std::int16_t{1};
        const Retorno retorno = Pede(m_Ana, "consultaSimplesAfericaoVigente", pedido);
        EXPECT_TRUE(retorno.Feita) << retorno.Recusa;
        return retorno.Como<AfericaoED>();
    }
    double NumeroVigente(std::int32_t equipamento, Data dia) { return Vigente(equipamento, dia)->NroIntAfericao; }
    static Ref<RelatorioAfericaoED> Pedido(std::int32_t afericao, const std::string &codigo)
    {
        auto pedido = Novo<RelatorioAfericaoED>();
        pedido->CodOat = afericao;
        pedido->Serie = codigo;
        pedido->TxtIdent = "AIT 123";
        return pedido;
    }
    Retorno Certificado(std::int32_t afericao, const std::string &codigo)
    {
        return Pede(m_Ana, "consultaRelatorioRVOR011", Pedido(afericao, codigo), "RelatorioRN");
    }

    RegistroDeTeste m_Registro;
    Ref<SessaoServico> m_Ana = m_Registro.Sessao("ana");
    double m_Documento = GuardaPdf(m_Ana, "certificado");
};

TEST_F(ServicosVigencia, Period_CountsBothEnds)
{
    const std::int32_t numero = Com({{AfericaoDe("1", Jan, Jun, m_Documento), AfericaoDe("2", Jul, Dez, m_Documento)}});
    EXPECT_EQ(NumeroVigente(numero, DataDe(31, 12, 2025)), 0);
    EXPECT_EQ(NumeroVigente(numero, Jan), 1);
    EXPECT_EQ(NumeroVigente(numero, Jun), 1);
    EXPECT_EQ(NumeroVigente(numero, Jul), 2);
    EXPECT_EQ(NumeroVigente(numero, Dez), 2);
    EXPECT_EQ(NumeroVigente(numero, DataDe(1, 1, 2027)), 0);
    EXPECT_EQ(Vigente(numero, Jun)->Texto(),
              "AfericaoED{NroIntAfericao=1, Numero=\"1\", Marca=\"987\", DataVerificacao=01/01/2026, "
              "DataVencimento=30/06/2026, Ativo=1, NroIntImgCertif=1, TipoAfer=1, PortDimel=\"\"}");
}

TEST_F(ServicosVigencia, TimeOfDay_DoesNotCount)
{
    const std::int32_t numero = Com({{AfericaoDe("1", Jan, Jun, m_Documento)}});
    EXPECT_EQ(NumeroVigente(numero, DataDe(30, 6, 2026, 23, 59, 59)), 1);
    EXPECT_EQ(NumeroVigente(numero, DataDe(31, 12, 2025, 23, 59, 59)), 0);
}

TEST_F(ServicosVigencia, NoDate_NoCalibration)
{
    const std::int32_t numero = Com({{AfericaoDe("1", Jan, Jun, m_Documento)}});
    EXPECT_EQ(NumeroVigente(numero, Data{}), 0);
    EXPECT_EQ(NumeroVigente(numero, Data{0.5}), 0);
    EXPECT_EQ(NumeroVigente(numero, Data{1e12}), 0);
}

TEST_F(ServicosVigencia, WithoutDocument_IsNotInForce)
{
    EXPECT_EQ(NumeroVigente(Com({{AfericaoDe("1", Jan, Jun)}}), Jan), 0);
}

TEST_F(ServicosVigencia, Gap_HasNone)
{
    EXPECT_EQ(
        NumeroVigente(Com({{AfericaoDe("1", Jan, Jan, m_Documento), AfericaoDe("2", Jul, Dez, m_Documento)}}), Jun), 0);
}

TEST_F(ServicosVigencia, TwoSensorsInForce_NoGuessBetweenThem)
{
    const std::int32_t numero =
        Com({{AfericaoDe("1", Jan, Dez, m_Documento)}, {AfericaoDe("2", Jul, Dez, m_Documento)}});
    EXPECT_EQ(NumeroVigente(numero, Jun), 1); // one alone
    EXPECT_EQ(NumeroVigente(numero, Jul), 0);
}

TEST_F(ServicosVigencia, TwoSensorsOfWhichOneHasNoDocument_TheOtherIsInForce)
{
    EXPECT_EQ(NumeroVigente(Com({{AfericaoDe("1", Jan, Dez)}, {AfericaoDe("2", Jan, Dez, m_Documento)}}), Jun), 2);
}

TEST_F(ServicosVigencia, OneDay_IsInForceOnThatDayAlone)
{
    const std::int32_t numero = Com({{AfericaoDe("1", Jun, Jun, m_Documento)}});
    EXPECT_EQ(NumeroVigente(numero, DataDe(29, 6, 2026, 23, 59, 59)), 0);
    EXPECT_EQ(NumeroVigente(numero, Jun), 1);
    EXPECT_EQ(NumeroVigente(numero, DataDe(30, 6, 2026, 23, 59, 59)), 1);
    EXPECT_EQ(NumeroVigente(numero, Jul), 0);
}

TEST_F(ServicosVigencia, DeactivatedRows_DoNotCount)
{
    const std::int32_t numero =
        Com({{AfericaoDe("1", Jan, Dez, m_Documento)}, {AfericaoDe("2", Jan, Dez, m_Documento)}});
    auto e = SoNumero(numero);
    auto s = Novo<SensorED>();
    s->NroIntSensor = 1;
    s->Ativo = std::uint8_t{2};
    Poe(e, s);
    ASSERT_TRUE(Pede(m_Ana, "altera", e).Feita);
    EXPECT_EQ(NumeroVigente(numero, Jan), 2); // of the sensor that is left

    ASSERT_TRUE(Pede(m_Ana, "desativa", SoNumero(numero)).Feita);
    EXPECT_EQ(NumeroVigente(numero, Jan), 0);
    ASSERT_TRUE(Pede(m_Ana, "reativa", SoNumero(numero)).Feita);

    Abre(m_Ana, numero);
    e = SoNumero(numero);
    s = Novo<SensorED>();
    s->NroIntSensor = 2;
    auto a = Novo<AfericaoED>();
    a->NroIntAfericao = 2;
    a->Ativo = std::uint8_t{2};
    Poe(s, a);
    Poe(e, s);
    ASSERT_TRUE(Pede(m_Ana, "altera", e).Feita);
    EXPECT_EQ(NumeroVigente(numero, Jan), 0);
}

TEST_F(ServicosVigencia, OfAnUnknownEquipment_IsRefused)
{
    auto pedido = Novo<ConsultaAfericaoED>();
    pedido->NroIntEquip = 9;
    pedido->DtInfracao = Jan;
    EXPECT_EQ(Pede(m_Ana, "consultaSimplesAfericaoVigente", pedido).Recusa,
              "O cliente DETRAN/RS não tem equipamento de número interno 9.");
    EXPECT_EQ(Pede(m_Registro.Sessao("carla"), "consultaSimplesAfericaoVigente", pedido).Recusa,
              "Carla Dias não tem permissão para consultar aferições.");
}

TEST_F(ServicosVigencia, Certificate_IsTheDocumentAsBase64)
{
    Com({{AfericaoDe("1", Jan, Jun, m_Documento)}});
    const Retorno retorno = Certificado(1, "r-001");
    ASSERT_TRUE(retorno.Feita) << retorno.Recusa;
    const auto resposta = retorno.Como<RelatorioAfericaoED>();
    EXPECT_EQ(resposta->CodOat.Valor(), 1);
    EXPECT_EQ(resposta->Serie.Valor(), "r-001");
    EXPECT_EQ(resposta->TxtIdent.Valor(), "AIT 123");
    const QByteArray conteudo = QByteArray::fromBase64(QByteArray::fromStdString(resposta->Documento));
    EXPECT_EQ(Bytes(conteudo.begin(), conteudo.end()), Pdf("certificado"));
}

TEST_F(ServicosVigencia, Certificate_WhoseDocumentIsDamaged_IsRefused)
{
    Com({{AfericaoDe("1", Jan, Jun, m_Documento)}});
    m_Registro.Sql("DROP TRIGGER DOCUMENTO_SEM_UPDATE; UPDATE DOCUMENTO SET Sha256 = upper(Sha256)");
    const Retorno retorno = Certificado(1, "R-001");
    EXPECT_FALSE(retorno.Feita);
    EXPECT_TRUE(retorno.Resposta.EhVazio());
    EXPECT_EQ(retorno.Recusa,
              "O documento de número 1 está danificado no registro: recupere-o de uma cópia de segurança.");
}

TEST_F(ServicosVigencia, Certificate_WithWrongKeys_IsRefused)
{
    Com({{AfericaoDe("1", Jan, Jun, m_Documento), AfericaoDe("2", Jul, Dez)}});
    EXPECT_EQ(Certificado(1, "R-002").Recusa, "A aferição de número 1 é do equipamento R-001, e não de R-002.");
    EXPECT_EQ(Certificado(9, "R-001").Recusa, "O cliente DETRAN/RS não tem aferição ativa de número 9.");
    EXPECT_EQ(Certificado(2, "R-001").Recusa, "A aferição de número 2 não tem documento.");
    EXPECT_EQ(Pede(m_Registro.Sessao("elisa"), "consultaRelatorioRVOR011", Pedido(1, "R-001"), "RelatorioRN").Recusa,
              "O cliente EPTC não tem aferição ativa de número 1.");
    EXPECT_EQ(Pede(m_Registro.Sessao("carla"), "consultaRelatorioRVOR011", Pedido(1, "R-001"), "RelatorioRN").Recusa,
              "Carla Dias não tem permissão para imprimir certificados.");
    EXPECT_EQ(Pede(m_Ana, "consultaRelatorioRVOR011", Pedido(1, "R-001")).Recusa,
              "O serviço EquiptoRN não tem a operação \"consultaRelatorioRVOR011\".");
}

} // namespace
