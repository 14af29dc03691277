#include "desk/host/Lembrancas.h"
#include "desk/host/NomesDeDocumentos.h"
#include "desk/host/PastaDeArquivos.h"
#include "desk/tour/Telas.h"
#include "equipment/clsEquipto.h"
#include "sensors/clsAfericao.h"
#include "sensors/clsListaAfericoes.h"
#include "sensors/clsListaSensores.h"
#include "sensors/clsSensor.h"
#include "sensors/frmEquipAfericoes.h"
#include "shell/ModGeral.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/PdfDeTeste.h"
#include "tests/desk/Teclado.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>

using namespace mesa;

namespace {

using Afericoes = std::vector<AfericaoComDocumento>;

TEST(NomeDoDocumento, OfOneCalibration_TellsCertificateAndEquipment)
{
    EXPECT_EQ(NomeDoDocumento({{"R-1", "123/26", 1}}), "Certificado 123/26 - R-1");
    EXPECT_EQ(NomeDoDocumento({{"R-1", "9", 2}}), "Declaração 9 - R-1");
    EXPECT_EQ(NomeDoDocumento({{"R-1", "", 1}}), "Certificado - R-1");
}

TEST(NomeDoDocumento, OfSeveral_TellsNothingThatIsNotOfAll)
{
    EXPECT_EQ(NomeDoDocumento(Afericoes{}), "");
    EXPECT_EQ(NomeDoDocumento({{"R-1", "123", 1}, {"R-2", "123", 1}}), "Certificado 123");
    EXPECT_EQ(NomeDoDocumento({{"R-1", "123", 1}, {"R-1", "124", 1}}), "");
    EXPECT_EQ(NomeDoDocumento({{"R-1", "123", 1}, {"R-1", "123", 2}}), "");
}

TEST(NomeDeArquivo, HasNothingThatAFileSystemRefuses)
{
    EXPECT_EQ(NomeDeArquivo("Certificado 123/26 - R:1", ".pdf"), "Certificado 123-26 - R-1.pdf");
    EXPECT_EQ(NomeDeArquivo("a\\b*c?d\"e<f>g|h\ni", ".pdf"), "a-b-c-d-e-f-g-h-i.pdf");
    EXPECT_EQ(NomeDeArquivo("laudo.PDF", ".pdf"), "laudo.PDF");
    EXPECT_EQ(NomeDeArquivo("Declaração ç", ".pdf"), "Declaração ç.pdf");
}

TEST(PastaDeArquivos, IsTheLastOne_OfThatUseAndUser_WhileItIsThere)
{
    const QTemporaryDir pasta;
    const std::filesystem::path onde = pasta.path().toStdString();
    Preferencias preferencias((onde / "preferencias.ini").string());
    const Ref<Lembrancas> ana = Novo<Lembrancas>(preferencias, "r1", "ana");
    const PastaDeArquivos documentos(ana, "documentos");
    EXPECT_EQ(documentos.Pasta("/senao"), "/senao");
    std::filesystem::create_directory(onde / "cópias");
    documentos.Lembra(onde / "cópias");
    EXPECT_EQ(PastaDeArquivos(ana, "documentos").Pasta("/senao"), onde / "cópias");
    EXPECT_EQ(PastaDeArquivos(ana, "tabelas").Pasta("/senao"), "/senao");
    EXPECT_EQ(PastaDeArquivos(Novo<Lembrancas>(preferencias, "r1", "bia"), "documentos").Pasta("/senao"), "/senao");
    std::filesystem::remove(onde / "cópias");
    EXPECT_EQ(documentos.Pasta("/senao"), "/senao");
    for (const char *semSentido : {"nada", "../..", "\n", "/dev/null/x"}) {
        ana->Lembra("arquivos/documentos/pasta", semSentido);
        EXPECT_EQ(documentos.Pasta("/senao"), "/senao") << semSentido;
    }
    const PastaDeArquivos deNinguem(nullptr, "documentos");
    deNinguem.Lembra(onde);
    EXPECT_EQ(deNinguem.Pasta("/senao"), "/senao");
}

// The real form of a calibration, in front of Ana.
class ArquivosTeste : public MesaTeste {
  protected:
    ArquivosTeste()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        ana = registro.Sessao("ana");
        numero = Inclui(ana, Poe(EquipamentoDe("A1"), Com(SensorDe(1), &SensorED::LocalInfr, "Av. Ipiranga, 1200")));
        Entra();
    }
    // An inclusion, from which the person comes back by Cancelar.
    void NaAfericao(const std::function<void(Teclado &)> &jornada)
    {
        const auto abre = [this] {
            auto equipto = Novo<clsEquipto>();
            ASSERT_TRUE(equipto->Carrega(numero));
            const Ref<clsSensor> sensor = equipto->ListaSensores()->Add(2, "Av. Ipiranga, 1300");
            const auto afericao = sensor->ListaAfericoes()->Add("", "", Data{}, Data{}, 0);
            FormCompartilhado<frmEquipAfericoes>()->CarregaInclusao(afericao);
            equipto->Finaliza();
        };
        QMetaObject::invokeMethod(&mesa, abre, Qt::QueuedConnection);
        EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                      t.EsperaJanela("frmEquipAfericoes");
                      jornada(t);
                      t.EsperaJanela("frmEquipAfericoes").TabAte("cmdCancelar").Tecla(Qt::Key_Space);
                      t.EsperaJanela("Mesa");
                  }),
                  "");
    }
    static QList<QUrl> Urls(const QStringList &caminhos)
    {
        QList<QUrl> urls;
        for (const QString &caminho : caminhos) {
            urls << QUrl::fromLocalFile(caminho);
        }
        return urls;
    }
    // Drags over the widget as the window system does, and lets fall what is not refused there. Whether it was taken.
    static bool Solta(const QString &nome, const QList<QUrl> &urls)
    {
        return NaTela([&] { return SoltaSobre(Teclado::Acha(nome), urls); });
    }
    // The same in the windows' thread.
    static bool SoltaSobre(QWidget *sobre, const QList<QUrl> &urls)
    {
        QMimeData dados;
        dados.setUrls(urls);
        dados.setText("file:///um/caminho");
        // The window system looks for who takes it, from the widget under the pointer outwards.
        for (; sobre != nullptr; sobre = sobre->parentWidget()) {
            if (sobre->acceptDrops()) {
                const QPoint onde = sobre->rect().center();
                QDragEnterEvent entra(onde, Qt::CopyAction | Qt::MoveAction, &dados, Qt::LeftButton, Qt::NoModifier);
                QApplication::sendEvent(sobre, &entra);
                if (!entra.isAccepted()) {
                    return false;
                }
                QDragMoveEvent passa(onde, Qt::CopyAction | Qt::MoveAction, &dados, Qt::LeftButton, Qt::NoModifier);
                QApplication::sendEvent(sobre, &passa);
                QDropEvent solta(onde, Qt::CopyAction | Qt::MoveAction, &dados, Qt::LeftButton, Qt::NoModifier);
                QApplication::sendEvent(sobre, &solta);
                return solta.isAccepted() && solta.dropAction() == Qt::CopyAction;
            }
            if (sobre->isWindow()) {
                return false;
            }
        }
        return false;
    }
    QString Pdf(const QString &nome) const { return FazPdfDePaginas(pasta.filePath(nome), {"Certificado"}); }
    QString DeTamanho(const QString &nome, qint64 tamanho) const
    {
        const QString caminho = Pdf(nome);
        QFile arquivo(caminho);
        EXPECT_TRUE(arquivo.resize(tamanho));
        return caminho;
    }

    Ref<SessaoServico> ana;
    std::int32_t numero = 0;
};

TEST_F(ArquivosTeste, Dropped_Pdf_IsShownAndChosen_AndCanBeSent)
{
    const QString caminho = Pdf("certidão.PDF");
    for (const char *sobre : {"txtNroINMETRO", "fraDocumento"}) {
        NaAfericao([&](Teclado &t) {
            EXPECT_TRUE(Solta(sobre, Urls({caminho})));
            t.EsperaJanela("VisorPDF");
            EXPECT_EQ(NaTela([] { return Teclado::Frente()->windowTitle().toStdString(); }), "certidão.PDF");
            t.Tecla(Qt::Key_Escape).EsperaTexto("lblMsgCert", "Arquivo " + caminho).EsperaTexto("txtNroINMETRO", "");
            t.Alt('U').EsperaTexto("lblMsgCert", "Upload Concluido!");
        });
    }
    EXPECT_EQ(registro.Sql("SELECT COUNT(*) FROM DOCUMENTO"), "2");
}

TEST_F(ArquivosTeste, Dropped_FileOfTooManyBytes_IsRefusedByTheForm)
{
    const QString cinco = DeTamanho("cinco.pdf", 5242880);
    const QString mais = DeTamanho("mais.pdf", 5242881);
    NaAfericao([&](Teclado &t) {
        EXPECT_TRUE(Solta("txtNroINMETRO", Urls({mais})));
        t.EsperaCaixa("Arquivo '" + mais + "' ultrapassa tamanho máximo (5 Mb).").Tecla(Qt::Key_Return);
        t.EsperaTexto("lblMsgCert", "Aguardando...");
        EXPECT_TRUE(Solta("txtNroINMETRO", Urls({cinco})));
        t.EsperaJanela("VisorPDF").Tecla(Qt::Key_Escape).EsperaTexto("lblMsgCert", "Arquivo " + cinco);
    });
}

TEST_F(ArquivosTeste, Dropped_WhatIsNoPdf_IsRefusedWithAWord)
{
    const QString texto = pasta.filePath("nota.txt");
    const QString falso = pasta.filePath("falso.pdf");
    const QString diretorio = pasta.filePath("pasta.pdf");
    ASSERT_TRUE(QDir().mkdir(diretorio));
    for (const QString &nome : {texto, falso}) {
        QFile arquivo(nome);
        ASSERT_TRUE(arquivo.open(QIODevice::WriteOnly));
        arquivo.write("texto");
    }
    NaAfericao([&](Teclado &t) {
        const auto recusa = [&](const QStringList &soltos, const QString &frase) {
            EXPECT_TRUE(Solta("txtNroINMETRO", Urls(soltos)));
            t.EsperaCaixa(frase).Tecla(Qt::Key_Return).EsperaJanela("frmEquipAfericoes");
        };
        recusa({texto}, "'nota.txt' não é um documento PDF.");
        recusa({diretorio}, "'pasta.pdf' é uma pasta: solte o arquivo que está nela.");
        recusa({texto, falso}, "Solte um arquivo só: foram soltos 2.");
        recusa({falso}, "O arquivo '" + falso + "' não é um documento PDF que possa ser aberto.");
        recusa({pasta.filePath("nenhum.pdf")}, "");
        EXPECT_FALSE(NaTela([] { return Teclado::Acha("cmdUpload")->isEnabled(); }));
    });
}

TEST_F(ArquivosTeste, Dropped_FileThatGoesBeforeItIsLookedAt_IsAFaultOfTheForm)
{
    const QString caminho = Pdf("some.pdf");
    NaAfericao([&](Teclado &t) {
        NaTela([&] {
            EXPECT_TRUE(SoltaSobre(Teclado::Frente(), Urls({caminho})));
            QFile::remove(caminho);
        });
        t.EsperaCaixa("").Tecla(Qt::Key_Return).EsperaTexto("lblMsgCert", "Aguardando...");
        // Procurar asks for a file again; given up, it is the one before, which is still gone.
        t.Alt('P').EsperaEscolhaDeArquivo().Tecla(Qt::Key_Escape).EsperaCaixa("Arquivo não encontrado");
        t.Tecla(Qt::Key_Return).EsperaTexto("lblMsgCert", "Aguardando...");
    });
}

TEST_F(ArquivosTeste, Dragged_FromElsewhere_IsRefusedByTheCursor)
{
    NaAfericao([&](Teclado &) {
        EXPECT_FALSE(Solta("txtNroINMETRO", {QUrl("https://exemplo.org/a.pdf")}));
        EXPECT_FALSE(Solta("txtNroINMETRO", {}));
    });
}

TEST_F(ArquivosTeste, Dragged_OntoAFormThatShowsDetails_IsRefusedByTheCursor)
{
    const QString caminho = Pdf("a.pdf");
    auto equipto = Novo<clsEquipto>();
    ASSERT_TRUE(equipto->Carrega(numero));
    const auto afericao = equipto->ListaSensores()->Item(1)->ListaAfericoes()->Add("1", "2", Data{}, Data{}, 0);
    const auto abre = [&] { Novo<frmEquipAfericoes>()->CarregaDetalhes(afericao); };
    QMetaObject::invokeMethod(&mesa, abre, Qt::QueuedConnection);
    EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                  t.EsperaJanela("frmEquipAfericoes");
                  EXPECT_FALSE(Solta("txtNroINMETRO", Urls({caminho})));
              }),
              "");
    equipto->Finaliza();
}

TEST_F(ArquivosTeste, Dragged_OntoAnotherForm_IsRefusedByTheCursor)
{
    const QString caminho = Pdf("a.pdf");
    EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                  t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
                  EXPECT_FALSE(Solta("ztlLista", Urls({caminho})));
                  for (const QLineEdit *campo :
                       NaTela([] { return Teclado::Acha("frmLista")->findChildren<QLineEdit *>(); })) {
                      EXPECT_FALSE(campo->acceptDrops());
                  }
              }),
              "");
}

TEST_F(ArquivosTeste, FileDialog_OffersTheFolderAndTheFileOfTheLastTime_AndAddsTheExtension)
{
    const QString caminho = Pdf("laudo.pdf");
    const auto pastaOferecida = [] {
        return NaTela(
            [] { return qobject_cast<QFileDialog *>(QApplication::activeModalWidget())->directory().canonicalPath(); });
    };
    NaAfericao([&](Teclado &t) {
        t.Alt('P').EsperaEscolhaDeArquivo();
        t.Escreve(pasta.filePath("laudo") + "\r").EsperaJanela("VisorPDF");
        t.Tecla(Qt::Key_Escape).EsperaTexto("lblMsgCert", "Arquivo " + caminho);
        t.Alt('P').EsperaEscolhaDeArquivo();
        EXPECT_EQ(NaTela([] { return dynamic_cast<QLineEdit *>(Teclado::Acha("fileNameEdit"))->text(); }), "laudo.pdf");
        EXPECT_EQ(pastaOferecida(), QDir(pasta.path()).canonicalPath());
        EXPECT_EQ(NaTela([] { return Teclado::Acha("lookInCombo")->toolTip(); }), pasta.path()); // however long it is
        t.Tecla(Qt::Key_Escape).EsperaJanela("VisorPDF").Tecla(Qt::Key_Escape);
        t.EsperaTexto("lblMsgCert", "Arquivo " + caminho);
    });
    mesa.Sai();
    Entra(); // another day
    NaAfericao([&](Teclado &t) {
        t.Alt('P').EsperaEscolhaDeArquivo();
        EXPECT_EQ(NaTela([] { return dynamic_cast<QLineEdit *>(Teclado::Acha("fileNameEdit"))->text(); }), "");
        EXPECT_EQ(pastaOferecida(), QDir(pasta.path()).canonicalPath());
        t.Tecla(Qt::Key_Escape).EsperaTexto("lblMsgCert", "Sem Arquivo!");
    });
}

// The certificate of a calibration that was stored: its own name in the title, and where it is saved.
TEST_F(ArquivosTeste, StoredDocument_HasItsOwnName)
{
    const double documento = GuardaPdf(ana, "certificado");
    const auto afericao =
        Com(AfericaoDe("777", DataDe(10, 1, 2026), DataDe(10, 1, 2027), documento), &AfericaoED::Marca, "12345678");
    Inclui(ana, Poe(EquipamentoDe("B2"), Poe(SensorDe(1), afericao)));
    const QDir destino(pasta.path());
    const auto confere = [&](Teclado &t) {
        t.EsperaJanela("VisorPDF");
        EXPECT_EQ(NaTela([] { return Teclado::Frente()->windowTitle().toStdString(); }), "Certificado 12345678 - B2");
        t.Ctrl(Qt::Key_S).EsperaEscolhaDeArquivo();
        EXPECT_EQ(NaTela([] { return dynamic_cast<QLineEdit *>(Teclado::Acha("fileNameEdit"))->text().toStdString(); }),
                  "Certificado 12345678 - B2.pdf");
        t.Ctrl(Qt::Key_A).Escreve(destino.filePath("salvo") + "\r").EsperaJanela("VisorPDF");
        t.Espera("saved with the extension", [&] { return QFile::exists(destino.filePath("salvo.pdf")); });
        EXPECT_TRUE(QFile::remove(destino.filePath("salvo.pdf")));
        t.Tecla(Qt::Key_Escape);
    };
    const Ref<HostMesa> host = mesa.Hospedeiro();
    // As the form of the calibration shows it.
    const auto visualiza = [&] {
        Bytes bytes;
        ASSERT_TRUE(host->CriaDadosVor()->RecebeDocumento(documento, bytes, true));
        const std::string caminho = host->Plataforma()->CaminhoModulo() + "\\VORTemp.pdf";
        host->Plataforma()->GravaArquivo(caminho, bytes);
        const Ref<IDocumentoPDF> mostrado = host->CriaDocumentoPDF();
        mostrado->DefineArquivoPDF(caminho);
        EXPECT_TRUE(mostrado->Mostra(true));
    };
    QMetaObject::invokeMethod(&mesa, visualiza, Qt::QueuedConnection);
    EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                  confere(t);
                  t.EsperaJanela("Mesa");
              }),
              "");
}

TEST_F(ArquivosTeste, DocumentOfNoCalibration_IsCalledByItsNumber)
{
    const double documento = GuardaPdf(ana, "solto");
    NomesDeDocumentos nomes([this] { return ana; }, "C:\\modulo", "C:\\temp\\");
    nomes.Recebeu(documento);
    EXPECT_EQ(nomes.NomeDe("C:\\modulo\\VORTemp.pdf"), "Documento " + std::to_string(static_cast<int>(documento)));
    EXPECT_EQ(nomes.NomeDe("C:\\temp\\~VORAFER99-A1.pdf"), "Certificado da aferição 99");
    EXPECT_EQ(nomes.NomeDe("C:\\outra\\VORTemp.pdf"), "");
    EXPECT_EQ(nomes.NomeDe("C:\\temp\\relatorio.pdf"), "");
}

} // namespace
