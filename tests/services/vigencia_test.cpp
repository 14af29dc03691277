#include "host/ConsultaAfericaoED.h"
#include "host/Conversoes.h"
#include "host/RelatorioAfericaoED.h"
#include "tests/services/ServicosTeste.h"

#include <QByteArray>

#include <string>
#include <utility>
#include <vector>

using namespace mesa;

namespace {

class ServicosVigencia : public ServicosDeAfericoes {
  protected:
    static Ref<ConsultaAfericaoED> Pedido(std::int32_t equipamento, Data dia)
    {
        return Com(Com(Novo<ConsultaAfericaoED>(), &ConsultaAfericaoED::TipoConsulta, 1),
                   &ConsultaAfericaoED::NroIntEquip, equipamento, &ConsultaAfericaoED::DtInfracao, dia);
    }
    Ref<AfericaoED> Vigente(std::int32_t equipamento, Data dia)
    {
        return Faz(m_Ana, "consultaSimplesAfericaoVigente", Pedido(equipamento, dia)).Como<AfericaoED>();
    }
    double NumeroVigente(std::int32_t equipamento, Data dia) { return Vigente(equipamento, dia)->NroIntAfericao; }
    // The calibrations in force on those days of November 2026, by their numbers.
    std::string DiasDeNovembro(std::int32_t equipamento, const std::vector<std::int32_t> &dias)
    {
        std::string numeros;
        for (const std::int32_t dia : dias) {
            numeros += (numeros.empty() ? "" : " ") + CStr(NumeroVigente(equipamento, DataDe(dia, 11, 2026)));
        }
        return numeros;
    }
    // On that day of November 2026.
    void Em(std::int32_t dia, std::int32_t hora, const std::string &metodo, std::int32_t equipamento)
    {
        m_Registro.Relogio = DataDe(dia, 11, 2026, hora, 59, 59);
        Faz(m_Ana, metodo, SoNumero(equipamento));
    }
    void AtivaSensor(std::int32_t dia, std::int32_t equipamento, std::int32_t sensor, std::uint8_t ativo)
    {
        m_Registro.Relogio = DataDe(dia, 11, 2026);
        Faz(m_Ana, "altera", Poe(SoNumero(equipamento), Com(SoSensor(sensor), &SensorED::Ativo, ativo)));
    }
    // As a calibration of an earlier time.
    void TiraDocumento(const std::string &numero)
    {
        m_Registro.Sql("UPDATE AFERICAO SET Versao = Versao + 1, NroIntImgCertif = NULL WHERE Numero = '" + numero +
                       "' AND NroIntImgCertif IS NOT NULL");
    }
    static Ref<RelatorioAfericaoED> Certificado(std::int32_t afericao, const std::string &codigo)
    {
        return Com(Com(Novo<RelatorioAfericaoED>(), &RelatorioAfericaoED::TxtIdent, "AIT 123"),
                   &RelatorioAfericaoED::CodOat, afericao, &RelatorioAfericaoED::Serie, codigo);
    }
    static std::string RecusaDoCertificado(const Ref<SessaoServico> &sessao, std::int32_t afericao,
                                           const std::string &codigo)
    {
        return RecusaDe(sessao, "consultaRelatorioRVOR011", Certificado(afericao, codigo), "RelatorioRN");
    }
};

TEST_F(ServicosVigencia, Answer_IsTheWholeCalibration)
{
    EXPECT_EQ(Vigente(ComSensores({{AfericaoDe("1", Jan, Jun)}}), Jun)->Texto(),
              "AfericaoED{NroIntAfericao=1, Numero=\"1\", Marca=\"987\", DataVerificacao=01/01/2026, "
              "DataVencimento=30/06/2026, Ativo=1, NroIntImgCertif=1, TipoAfer=1, PortDimel=\"\"}");
}

TEST_F(ServicosVigencia, InForce_IsTheOneOfTheDay)
{
    struct Caso {
        const char *Nome;
        std::vector<std::vector<Ref<AfericaoED>>> Sensores;
        std::vector<std::pair<Data, std::string>> Vigentes; // by its number, or none
    };
    const std::vector<Caso> casos = {
        {"both ends count",
         {{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}},
         {{DataDe(31, 12, 2025), ""}, {Jan, "1"}, {Jun, "1"}, {Jul, "2"}, {Dez, "2"}, {DataDe(1, 1, 2027), ""}}},
        {"the time of day does not",
         {{AfericaoDe("1", Jan, Jun)}},
         {{DataDe(30, 6, 2026, 23, 59, 59), "1"}, {DataDe(31, 12, 2025, 23, 59, 59), ""}}},
        {"no date", {{AfericaoDe("1", Jan, Jun)}}, {{Data{}, ""}, {Data{0.5}, ""}, {Data{1e12}, ""}}},
        {"without a document", {{AfericaoDe("sem", Jan, Jun)}}, {{Jan, ""}}},
        {"a gap", {{AfericaoDe("1", Jan, Jan.MaisDias(1)), AfericaoDe("2", Jul, Dez)}}, {{Jun, ""}}},
        {"no guess between two", {{AfericaoDe("1", Jan, Dez)}, {AfericaoDe("2", Jul, Dez)}}, {{Jun, "1"}, {Jul, ""}}},
        {"two of which one has no document",
         {{AfericaoDe("sem", Jan, Dez)}, {AfericaoDe("2", Jan, Dez)}},
         {{Jun, "2"}}},
        {"one day",
         {{AfericaoDe("curta", Jun, Jul)}},
         {{DataDe(29, 6, 2026, 23, 59, 59), ""},
          {Jun, "curta"},
          {DataDe(30, 6, 2026, 23, 59, 59), "curta"},
          {Jul, ""}}},
    };
    for (const Caso &caso : casos) {
        const std::int32_t numero = ComSensores(caso.Sensores);
        TiraDocumento("sem");
        m_Registro.Sql(
            "UPDATE AFERICAO SET Versao = Versao + 1, DataVencimento = DataVerificacao WHERE Numero = 'curta' "
            "AND DataVencimento <> DataVerificacao");
        for (const auto &[dia, vigente] : caso.Vigentes) {
            const auto achada = Vigente(numero, dia);
            EXPECT_EQ(achada->Numero.Valor(), vigente) << caso.Nome << ", " << dia.Valor;
            EXPECT_EQ(achada->NroIntAfericao > 0, !vigente.empty()) << caso.Nome << ", " << dia.Valor;
        }
        Faz(m_Ana, "desativa", SoNumero(numero));
    }
}

TEST_F(ServicosVigencia, DeactivatedEquipment_AnswersForTheDaysOnWhichItWasActive)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Dez)}});
    Em(20, 23, "desativa", numero);
    EXPECT_EQ(DiasDeNovembro(numero, {1, 19, 20}), "1 1 1");
    EXPECT_EQ(DiasDeNovembro(numero, {21, 22, 30}), "0 0 0");
    EXPECT_EQ(NumeroVigente(numero, Jan), 1); // before it was registered
    Em(24, 0, "reativa", numero);
    EXPECT_EQ(DiasDeNovembro(numero, {20, 21, 23, 24, 25, 30}), "1 0 0 1 1 1");
    Em(26, 12, "desativa", numero);
    Em(26, 13, "reativa", numero); // the same day
    Em(27, 12, "desativa", numero);
    Em(28, 12, "reativa", numero); // the next day
    EXPECT_EQ(DiasDeNovembro(numero, {20, 21, 23, 24, 25, 26, 27, 28, 29}), "1 0 0 1 1 1 1 1 1");
    Em(29, 12, "desativa", numero);
    EXPECT_EQ(DiasDeNovembro(numero, {20, 21, 23, 24, 28, 29, 30}), "1 0 0 1 1 1 0");
    EXPECT_EQ(NumeroVigente(numero, DataDe(31, 12, 2025)), 0); // the period is still its own
}

TEST_F(ServicosVigencia, DeactivatedSensor_AnswersForTheDaysOnWhichItWasActive)
{
    const std::int32_t numero = ComSensores({{}, {AfericaoDe("1", Jan, Dez)}});
    AtivaSensor(22, numero, 2, 2);
    EXPECT_EQ(DiasDeNovembro(numero, {1, 20, 21, 22, 23, 30}), "1 1 1 1 0 0");
    AtivaSensor(25, numero, 2, 1);
    EXPECT_EQ(DiasDeNovembro(numero, {1, 20, 22, 23, 24, 25, 30}), "1 1 1 0 0 1 1");
    Em(26, 12, "desativa", numero);
    EXPECT_EQ(DiasDeNovembro(numero, {1, 22, 23, 24, 25, 26, 27}), "1 1 0 0 1 1 0");
}

TEST_F(ServicosVigencia, WithdrawnCalibration_IsInForceOnNoDay)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Dez)}});
    m_Registro.Relogio = DataDe(25, 11, 2026);
    Faz(m_Ana, "altera", Poe(SoNumero(numero), Poe(SoSensor(1), Com(SoAfericao(1), &AfericaoED::Ativo, 2))));
    EXPECT_EQ(DiasDeNovembro(numero, {1, 20, 24, 25, 26}), "0 0 0 0 0");
    Faz(m_Ana, "altera", Poe(SoNumero(numero), Poe(SoSensor(1), Com(SoAfericao(1), &AfericaoED::Ativo, 1))));
    EXPECT_EQ(DiasDeNovembro(numero, {1, 20, 24, 25, 26}), "1 1 1 1 1"); // it was right after all
}

TEST_F(ServicosVigencia, ReplacedSensor_AnswersForItsDaysAndTheNewOneForItsOwn)
{
    const std::int32_t numero = ComSensores({{}, {AfericaoDe("1", Jan, Dez)}});
    m_Registro.Relogio = DataDe(24, 11, 2026);
    Faz(m_Ana, "altera",
        Documenta(m_Ana, Poe(Poe(SoNumero(numero), Com(SoSensor(2), &SensorED::Ativo, 2)),
                             Poe(SensorDe(2), AfericaoDe("2", Jan, Dez)))));
    // On the day itself there is no telling which is meant; before any was known, it was the first.
    EXPECT_EQ(DiasDeNovembro(numero, {19, 20, 23, 24, 25}), "1 1 1 0 2");
}

TEST_F(ServicosVigencia, SensorRegisteredLater_DoesNotDisturbTheDaysOfTheOtherOne)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Dez)}});
    m_Registro.Relogio = DataDe(24, 11, 2026);
    Faz(m_Ana, "altera", Documenta(m_Ana, Poe(SoNumero(numero), Poe(SensorDe(2), AfericaoDe("2", Jan, Dez)))));
    EXPECT_EQ(DiasDeNovembro(numero, {19, 20, 23, 24, 25}), "1 1 1 0 0");
}

TEST_F(ServicosVigencia, SensorRegisteredAsInactive_CountsFromItsReactivation)
{
    const std::int32_t numero = ComSensores({{}});
    Faz(m_Ana, "altera",
        Documenta(m_Ana, Poe(SoNumero(numero), Poe(Com(SensorDe(2), &SensorED::Ativo, 2), AfericaoDe("2", Jan, Dez)))));
    EXPECT_EQ(DiasDeNovembro(numero, {1, 20, 25}), "0 0 0");
    AtivaSensor(24, numero, 2, 1);
    EXPECT_EQ(DiasDeNovembro(numero, {1, 20, 23, 24, 25}), "0 0 0 1 1");
}

TEST_F(ServicosVigencia, DeactivatedRows_GiveWayToThoseThatAreLeft)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Dez)}, {AfericaoDe("2", Jan, Dez)}});
    Faz(m_Ana, "altera", Poe(SoNumero(numero), Com(SoSensor(2), &SensorED::Ativo, 2)));
    EXPECT_EQ(NumeroVigente(numero, Jan), 1); // of the sensor that is left
    EXPECT_EQ(NumeroVigente(numero, Dez), 1);
    EXPECT_EQ(NumeroVigente(numero, DataDe(20, 11, 2026)), 0); // on which both were active

    Faz(m_Ana, "desativa", SoNumero(numero));
    EXPECT_EQ(NumeroVigente(numero, Jan), 1);
    EXPECT_EQ(NumeroVigente(numero, Dez), 0);
    Faz(m_Ana, "reativa", SoNumero(numero));

    Abre(m_Ana, numero);
    Faz(m_Ana, "altera", Poe(SoNumero(numero), Poe(SoSensor(1), Com(SoAfericao(1), &AfericaoED::Ativo, 2))));
    EXPECT_EQ(NumeroVigente(numero, Jan), 2); // nothing else claims the day
    EXPECT_EQ(NumeroVigente(numero, Dez), 0);
}

TEST_F(ServicosVigencia, ClockThatWentBack_LeavesTheDaysOnWhichItWasActive)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Dez)}});
    Em(24, 12, "desativa", numero);
    Em(27, 12, "reativa", numero);
    Em(22, 12, "desativa", numero); // five days back
    EXPECT_EQ(DiasDeNovembro(numero, {20, 24, 25, 26, 27, 28}), "1 1 0 0 1 0");
    Em(23, 12, "reativa", numero);
    EXPECT_EQ(DiasDeNovembro(numero, {20, 24, 25, 27, 28}), "1 1 1 1 1");
}

TEST_F(ServicosVigencia, RowsThatCameInPastTheServices_AreNotInForce)
{
    const std::int32_t numero = ComSensores({{}});
    const std::string documento = CStr(GuardaPdf(m_Ana, "certificado"));
    m_Registro.Sql(
        "INSERT INTO SENSOR VALUES (9, 1, 2, 0, 0, 0, '', '', '', 1, ''); INSERT INTO AFERICAO VALUES (9, 9, "
        "'1', '2', 20260101, 20261231, 1, " +
        documento + ", 1, '', 1)");
    EXPECT_EQ(DiasDeNovembro(numero, {1, 20, 25}), "0 0 0");
    // Nor does a state that it does not know count.
    const std::int32_t outro = Inclui(m_Ana, Poe(EquipamentoDe("R-9"), Poe(SensorDe(1), AfericaoDe("3", Jan, Dez))));
    m_Registro.Sql("UPDATE EQUIPAMENTO SET Ativo = 2; UPDATE SENSOR SET Ativo = 2");
    EXPECT_EQ(DiasDeNovembro(outro, {1, 20, 25}), "10 10 10");
}

TEST_F(ServicosVigencia, Certificate_IsTheDocumentAsBase64)
{
    ComSensores({{AfericaoDe("1", Jan, Jun)}});
    const auto resposta =
        Faz(m_Ana, "consultaRelatorioRVOR011", Certificado(1, "r-001"), "RelatorioRN").Como<RelatorioAfericaoED>();
    EXPECT_EQ(resposta->CodOat.Valor(), 1);
    EXPECT_EQ(resposta->Serie.Valor(), "r-001");
    EXPECT_EQ(resposta->TxtIdent.Valor(), "AIT 123");
    const QByteArray conteudo = QByteArray::fromBase64(QByteArray::fromStdString(resposta->Documento));
    EXPECT_EQ(Bytes(conteudo.begin(), conteudo.end()), Pdf("certificado"));
}

TEST_F(ServicosVigencia, Certificate_WhoseDocumentIsDamaged_IsRefused)
{
    ComSensores({{AfericaoDe("1", Jan, Jun)}});
    m_Registro.Sql("DROP TRIGGER DOCUMENTO_SEM_UPDATE; UPDATE DOCUMENTO SET Sha256 = upper(Sha256)");
    EXPECT_EQ(RecusaDoCertificado(m_Ana, 1, "R-001"),
              "O documento de número 1 está danificado no registro: recupere-o de uma cópia de segurança.");
}

TEST_F(ServicosVigencia, Certificate_WithWrongKeys_IsRefused)
{
    ComSensores({{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}});
    TiraDocumento("2");
    EXPECT_EQ(RecusaDoCertificado(m_Ana, 1, "R-002"), "A aferição de número 1 é do equipamento R-001, e não de R-002.");
    EXPECT_EQ(RecusaDoCertificado(m_Ana, 2, "R-001"), "A aferição de número 2 não tem documento.");
    EXPECT_EQ(RecusaDe(m_Ana, "consultaRelatorioRVOR011", Certificado(1, "R-001")),
              "O serviço EquiptoRN não tem a operação \"consultaRelatorioRVOR011\".");
}

} // namespace
