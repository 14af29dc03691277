#include "host/ConsultaAfericaoED.h"
#include "host/RelatorioAfericaoED.h"
#include "tests/desk/ServicosTeste.h"

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
        m_Registro.Sql("UPDATE AFERICAO SET Versao = Versao + 1, DataVencimento = DataVerificacao WHERE Numero = 'curta' "
                       "AND DataVencimento <> DataVerificacao");
        for (const auto &[dia, vigente] : caso.Vigentes) {
            const auto achada = Vigente(numero, dia);
            EXPECT_EQ(achada->Numero.Valor(), vigente) << caso.Nome << ", " << dia.Valor;
            EXPECT_EQ(achada->NroIntAfericao > 0, !vigente.empty()) << caso.Nome << ", " << dia.Valor;
        }
        Faz(m_Ana, "desativa", SoNumero(numero));
    }
}

TEST_F(ServicosVigencia, DeactivatedRows_DoNotCount)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Dez)}, {AfericaoDe("2", Jan, Dez)}});
    Faz(m_Ana, "altera", Poe(SoNumero(numero), Com(SoSensor(2), &SensorED::Ativo, 2)));
    EXPECT_EQ(NumeroVigente(numero, Jan), 1); // of the sensor that is left

    Faz(m_Ana, "desativa", SoNumero(numero));
    EXPECT_EQ(NumeroVigente(numero, Jan), 0);
    Faz(m_Ana, "reativa", SoNumero(numero));

    Abre(m_Ana, numero);
    Faz(m_Ana, "altera", Poe(SoNumero(numero), Poe(SoSensor(1), Com(SoAfericao(1), &AfericaoED::Ativo, 2))));
    EXPECT_EQ(NumeroVigente(numero, Jan), 0);
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
