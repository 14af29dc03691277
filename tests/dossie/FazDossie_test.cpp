#include "dossie/ArquivoPDF.h"
#include "dossie/Fatos.h"
#include "dossie/FazDossie.h"
#include "dossie/Paginas.h"
#include "host/Falha.h"
#include "services/Calendario.h"
#include "services/Resumo.h"
#include "services/TextoQt.h"
#include "tests/dossie/CenarioDoDossie.h"
#include "tests/dossie/Desmonta.h"
#include "tests/services/DiscoApertado.h"
#include "tests/services/SemPrivilegio.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPdfDocument>
#include <QPdfSelection>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

using namespace dossie;
using namespace mesa;

namespace {

// The pages as a reader opens them.
class Lido {
  public:
    explicit Lido(const QByteArray &octetos) : m_Octetos(octetos)
    {
        m_Onde.setBuffer(&m_Octetos);
        m_Onde.open(QIODevice::ReadOnly);
        m_Pdf.load(&m_Onde);
    }
    QPdfDocument &Pdf() { return m_Pdf; }
    // The text with single blanks.
    std::string Texto()
    {
        QString tudo;
        for (int pagina = 0; pagina < m_Pdf.pageCount(); ++pagina) {
            tudo += m_Pdf.getAllText(pagina).text() + " ";
        }
        return S(tudo.replace(QRegularExpression("\\s+"), " "));
    }
    bool Diz(const std::string &texto) { return Texto().find(texto) != std::string::npos; }
    // The pages as pictures, in the directory of that environment variable.
    void Mostra(const std::string &nome)
    {
        const char *pasta = std::getenv("DOSSIES");
        for (int pagina = 0; pasta != nullptr && pagina < m_Pdf.pageCount(); ++pagina) {
            QImage desenho = m_Pdf.render(pagina, (m_Pdf.pagePointSize(pagina) * 1.6).toSize());
            QImage papel(desenho.size(), QImage::Format_RGB32);
            papel.fill(Qt::white);
            QPainter(&papel).drawImage(0, 0, desenho);
            papel.save(QString("%1/%2-%3.png").arg(pasta, Q(nome)).arg(pagina + 1, 2, 10, QChar('0')));
        }
    }

  private:
    QByteArray m_Octetos;
    QBuffer m_Onde;
    QPdfDocument m_Pdf;
};

class FazDossieTeste : public CenarioDoDossie {};

TEST_F(FazDossieTeste, Faz_WithACalibrationInForce_TellsTheFactsAndAttachesTheOriginal)
{
    const std::int32_t numero = ComCertificado(Certificado(3));
    const QByteArray arquivo = Faz(Pergunta(numero, DataDe(15, 3, 2026), 1430));
    const auto anexos = AnexosDoPdf(arquivo);
    EXPECT_EQ(anexos.size(), 2U);
    EXPECT_EQ(anexos.at("certificado.pdf"), Certificado(3));
    const auto fatos = LeFatos(anexos.at("fatos.json"));
    ASSERT_TRUE(fatos);
    EXPECT_EQ(fatos->Sha256DoCertificado, Resumo(Certificado(3)));
    EXPECT_EQ(fatos->Prova->Vigente.Valor()->Item(1)->Numero.Valor(), "7311");

    Lido lido(arquivo);
    lido.Mostra("em-vigor");
    ASSERT_EQ(lido.Pdf().status(), QPdfDocument::Status::Ready);
    for (const char *texto :
         {"Dossiê do equipamento R-001", "Momento do fato: 15/03/2026, às 14:30",
          "Como o registro o conhece na emissão", "Emitido em 20/11/2026 às 10:00:00 por Ana Souza", "Pardal",
          "Porto Alegre - RS", "Aferição em vigor em 15/03/2026", "7311", "01/01/2026", "31/12/2026",
          "Velocidade do equipamento", "nunca foram desativados", "folha 1 de", "Certificado, página 3 de 3"}) {
        EXPECT_TRUE(lido.Diz(texto)) << texto << "\n" << lido.Texto();
    }
    for (int pagina = 0; pagina < lido.Pdf().pageCount(); ++pagina) {
        EXPECT_NEAR(lido.Pdf().pagePointSize(pagina).width(), 595, 1);
        EXPECT_NEAR(lido.Pdf().pagePointSize(pagina).height(), 842, 1);
    }
    EXPECT_TRUE(arquivo.contains("pdfaid:part=\"3\""));
}

TEST_F(FazDossieTeste, Faz_TheSameFactsAtTheSameMoment_HaveTheSameBytes)
{
    const std::int32_t numero = ComCertificado(Certificado(1));
    const auto pergunta = Pergunta(numero, DataDe(15, 3, 2026));
    const QByteArray um = Faz(pergunta);
    EXPECT_EQ(Faz(pergunta), um);
    m_Registro.PassaSegundos(1);
    EXPECT_NE(Faz(pergunta), um);
}

TEST_F(FazDossieTeste, Faz_WithoutACalibrationInForce_SaysWhyAndAttachesTheFactsAlone)
{
    const std::int32_t numero = ComCertificado(Certificado(1));
    const QByteArray arquivo = Faz(Pergunta(numero, DataDe(1, 3, 2027)));
    Lido lido(arquivo);
    lido.Mostra("sem-vigente");
    EXPECT_TRUE(
        lido.Diz("Nenhuma aferição estava em vigor. Nenhuma aferição ativa, com documento, tem o dia 01/03/2027 "
                 "no seu período."));
    EXPECT_FALSE(lido.Diz("Certificado, página"));
    EXPECT_EQ(AnexosDoPdf(arquivo).size(), 1U);
}

TEST_F(FazDossieTeste, Faz_OfACertificateThatIsDamaged_TellsItAndAttachesNothingInItsPlace)
{
    const std::int32_t numero = ComCertificado(Certificado(1));
    m_Registro.Sql("DROP TRIGGER DOCUMENTO_SEM_UPDATE; UPDATE DOCUMENTO SET Sha256 = upper(Sha256)");
    const QByteArray arquivo = Faz(Pergunta(numero, DataDe(15, 3, 2026)));
    Lido lido(arquivo);
    lido.Mostra("danificado");
    EXPECT_TRUE(
        lido.Diz("NÃO ESTÁ NESTE ARQUIVO. O documento de número 1 está danificado no registro: recupere-o de uma "
                 "cópia de segurança."))
        << lido.Texto();
    EXPECT_EQ(AnexosDoPdf(arquivo).count("certificado.pdf"), 0U);
}

TEST_F(FazDossieTeste, Monta_OfOctetsThatAreNotTheDocuments_TellsItAndAttachesNothingInItsPlace)
{
    const std::int32_t numero = ComCertificado(Certificado(1));
    const auto prova = Prova(Pergunta(numero, DataDe(15, 3, 2026)));
    const QByteArray arquivo = FazDossie::Monta(*prova, Certificado(2), "", {});
    EXPECT_TRUE(Lido(arquivo).Diz("O documento guardado não é o que o histórico diz que foi guardado."));
    EXPECT_EQ(AnexosDoPdf(arquivo).size(), 1U);
}

// A document that nobody can draw is still the document.
TEST_F(FazDossieTeste, Monta_OfADocumentThatCannotBeDrawn_AttachesIt)
{
    const std::int32_t numero = ComCertificado(Certificado(1));
    const auto prova = Prova(Pergunta(numero, DataDe(15, 3, 2026)));
    const QByteArray estranho = "não é um PDF";
    prova->Sha256DoDocumento = Resumo(estranho);
    const QByteArray arquivo = FazDossie::Monta(*prova, estranho, "", {});
    EXPECT_EQ(AnexosDoPdf(arquivo).at("certificado.pdf"), estranho);
    EXPECT_TRUE(Lido(arquivo).Diz("não podem ser desenhadas"));
}

TEST_F(FazDossieTeste, Faz_LongTextsAndManyLimits_StandWholeWithinThePages)
{
    const std::string longa(400, 'W');
    const std::int32_t numero = ComCertificado(Certificado(1));
    const auto prova = Prova(Pergunta(numero, DataDe(24, 11, 2026)));
    EquiptoED &equipto = *prova->Equipamento.Valor()->Item(1);
    equipto.Descricao = "Avenida <b>não é negrito</b> & \"aspas\" ção ÁÉÍÓÚ — " + longa;
    equipto.SubCodigo = std::string(20, 'M');
    equipto.Sensores.Valor()->Item(1)->LocalInfr = "Rua " + longa.substr(0, 80);
    ListaDe<LimiteProvadoED> limites = Novo<Colecao<Ref<LimiteProvadoED>>>();
    for (int n = 0; n < 200; ++n) {
        auto limite = Novo<LimiteProvadoED>();
        limite->Ordem = n + 1;
        limite->Especie = 4;
        limite->HoraInicio = n / 20 * 100 + n % 20;
        limite->HoraFim = n / 20 * 100 + n % 20 + 1;
        limite->VelocPerm = static_cast<std::int16_t>(n + 300);
        limite->Nota = n % 7 == 0 ? "excluído em 25/11/2026 às 09:00:00, depois do momento" : "";
        limites->Add(limite);
    }
    prova->Limites = limites;
    Lido lido(FazDossie::Monta(*prova, {}, "", {}));
    lido.Mostra("longo");
    EXPECT_GE(lido.Pdf().pageCount(), 6);
    const std::string texto = lido.Texto();
    for (int n = 0; n < 200; ++n) {
        EXPECT_NE(texto.find(" " + CStr(n + 300) + " km/h"), std::string::npos) << n;
    }
    const QString semBrancos = Q(texto).remove(' ');
    EXPECT_TRUE(semBrancos.contains("<b>nãoénegrito</b>&\"aspas\"çãoÁÉÍÓÚ—" + Q(longa)));
    EXPECT_TRUE(semBrancos.contains("Rua" + Q(longa.substr(0, 80))));
    // The head of a table is on each of its pages.
    int cabecas = 0;
    for (int pagina = 0; pagina < lido.Pdf().pageCount(); ++pagina) {
        const QPdfSelection daPagina = lido.Pdf().getAllText(pagina);
        cabecas += daPagina.text().contains("Permitida") && daPagina.text().contains("Observação") ? 1 : 0;
    }
    EXPECT_GE(cabecas, 3);
}

TEST_F(FazDossieTeste, Faz_WithoutTheRight_IsRefusedAsElsewhere)
{
    const std::int32_t numero = ComCertificado(Certificado(1));
    std::string recusa;
    EXPECT_FALSE(FazDossie(m_Registro.Sessao("carla")).Faz(Pergunta(numero, DataDe(15, 3, 2026)), {}, recusa));
    EXPECT_EQ(recusa, "Carla Dias não tem permissão para consultar equipamentos.");
}

TEST_F(FazDossieTeste, Faz_GivenUpOnTheWay_MakesNothing)
{
    const std::int32_t numero = ComCertificado(Certificado(3));
    for (int ate = 0; ate < 5; ++ate) {
        int vezes = 0;
        std::string recusa;
        EXPECT_FALSE(FazDossie(m_Ana).Faz(
            Pergunta(numero, DataDe(15, 3, 2026)), [&](double, const std::string &) { return vezes++ < ate; }, recusa));
        EXPECT_EQ(recusa, "O dossiê foi cancelado: nada foi gravado.");
    }
}

TEST_F(FazDossieTeste, Grava_WhereNobodyMayWriteOrTheDiskIsFull_SaysSoAndLeavesWhatWasThere)
{
    QTemporaryDir pasta;
    const std::string caminho = S(pasta.filePath("dossiê.pdf"));
    const QByteArray grande(2000000, 'x');
    const auto falha = [&] {
        try {
            FazDossie::Grava(grande, caminho);
        } catch (const Falha &f) {
            return f.Descricao;
        }
        return std::string("done");
    };
    FazDossie::Grava("o que havia", caminho);
    {
        const DiscoApertado cheio(100000);
        EXPECT_TRUE(falha().starts_with("O dossiê não pôde ser gravado em " + caminho + ": ")) << falha();
    }
    {
        QFile::setPermissions(pasta.path(), QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
        const SemPrivilegio sem;
        EXPECT_TRUE(falha().starts_with("O dossiê não pôde ser gravado em " + caminho + ": ")) << falha();
    }
    QFile::setPermissions(pasta.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QFile arquivo(Q(caminho));
    ASSERT_TRUE(arquivo.open(QIODevice::ReadOnly));
    EXPECT_EQ(arquivo.readAll(), "o que havia");
    EXPECT_EQ(QDir(pasta.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    EXPECT_EQ(falha(), "done");
}

TEST(NomeDoDossie, NomeSugerido_OfAnyCode_IsAFileName)
{
    EXPECT_EQ(FazDossie::NomeSugerido("R-001", DataDe(15, 3, 2026)), "dossie-R-001-20260315.pdf");
    EXPECT_EQ(FazDossie::NomeSugerido("../a b", DataDe(1, 1, 2026)), "dossie----a-b-20260101.pdf");
}

} // namespace
