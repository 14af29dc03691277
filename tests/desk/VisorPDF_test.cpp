#include "desk/tour/Telas.h"
#include "desk/windows/ImpressaoDePDF.h"
#include "desk/windows/PaginasPDF.h"
#include "desk/windows/TelaDeAndamento.h"
#include "desk/windows/VisorPDF.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/PdfDeTeste.h"
#include "tests/desk/Teclado.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPdfDocument>
#include <QPrintDialog>
#include <QPrinter>
#include <QRadioButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QTest>

using namespace mesa;

namespace {

const QStringList CincoPaginas = {"Primeira folha", "Segunda folha", "Terceira folha com palavra rara", "Quarta folha",
                                  "Quinta folha"};

class VisorTeste : public MesaTeste {
  protected:
    VisorTeste()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        Entra();
    }
    // In front of a document that the desk has opened.
    void Percorre(const QString &caminho, const std::function<void(Teclado &)> &jornada)
    {
        const auto mostra = [this, caminho] {
            const Ref<IDocumentoPDF> documento = mesa.Hospedeiro()->CriaDocumentoPDF();
            documento->DefineArquivoPDF(caminho.toStdString());
            documento->Mostra(true);
        };
        QMetaObject::invokeMethod(&mesa, mostra, Qt::QueuedConnection);
        EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                      t.EsperaJanela("VisorPDF").EsperaFoco("paginas");
                      jornada(t);
                  }),
                  "");
    }
    QString Cinco() const { return FazPdfDePaginas(pasta.filePath("cinco.pdf"), CincoPaginas); }

    static const PaginasPDF &Paginas() { return *dynamic_cast<PaginasPDF *>(Teclado::Acha("paginas")); }
    static double Largura()
    {
        return NaTela([] { return Paginas().Disposicao().Lugar(0).width(); });
    }
    static std::string Copiado()
    {
        return NaTela([] { return QApplication::clipboard()->text().simplified().toStdString(); });
    }
    static void Retrata(const QString &nome)
    {
        NaTela([&] {
            QDir().mkpath(PASTA_DOS_RETRATOS);
            Teclado::Frente()->grab().save(QString(PASTA_DOS_RETRATOS) + "/visor-" + nome + ".png");
        });
    }
};

TEST_F(VisorTeste, Bigger_AfterTheFitToWidth_IsBiggerThanWhatIsSeen)
{
    Percorre(Cinco(), [](Teclado &t) {
        for (const char *ajuste : {"L", "T"}) {
            const auto qual = *ajuste == 'L' ? AjusteDaPagina::Largura : AjusteDaPagina::PaginaInteira;
            t.Alt(*ajuste).Espera("fitted", [=] { return Paginas().Disposicao().Ajuste() == qual; });
            const double antes = Largura();
            t.Alt('U').Espera("a quarter bigger",
                              [=] { return qAbs(Paginas().Disposicao().Lugar(0).width() - 1.25 * antes) < 3; });
            t.Alt('D').Espera("as it was", [=] { return qAbs(Paginas().Disposicao().Lugar(0).width() - antes) < 3; });
            t.Ctrl(Qt::Key_Plus).Espera("bigger", [=] {
                return Paginas().Disposicao().Lugar(0).width() > antes * 1.2;
            });
            t.Ctrl(Qt::Key_Minus);
        }
        t.Espera("told in the bar", [] {
            return TextoDe(Teclado::Acha("zoom")) == QString("%1 %").arg(qRound(Paginas().Disposicao().Zoom() * 100));
        });
        Retrata("inteira");
    });
}

TEST_F(VisorTeste, Document_OpensAtItsBeginning_AndStaysThereWhateverTheWindowsSize)
{
    Percorre(Cinco(), [](Teclado &t) {
        const auto noComeco = [] { return Paginas().verticalScrollBar()->value() == 0; };
        t.Espera("at the beginning", noComeco);
        for (const QSize &tamanho : {QSize(500, 300), QSize(1000, 700)}) {
            NaTela([&] { Teclado::Frente()->window()->resize(tamanho); });
            t.Espera("still at the beginning", noComeco);
        }
        t.Tecla(Qt::Key_Down).Espera("further down", [=] { return !noComeco(); });
    });
}

TEST_F(VisorTeste, WholePage_IsSeenWhole)
{
    Percorre(Cinco(), [](Teclado &t) {
        t.Alt('T').Espera("whole", [] {
            const PaginasPDF &paginas = Paginas();
            return paginas.Disposicao().Lugar(0).height() <= paginas.viewport()->height() &&
                   paginas.Disposicao().Lugar(0).width() <= paginas.viewport()->width();
        });
        t.Tecla(Qt::Key_PageDown).EsperaTexto("pagina", "2 de 5");
        t.Tecla(Qt::Key_PageDown).EsperaTexto("pagina", "3 de 5");
        t.Tecla(Qt::Key_PageUp).EsperaTexto("pagina", "2 de 5");
    });
}

TEST_F(VisorTeste, PageNumber_IsTold_AndLeadsToAPage)
{
    Percorre(Cinco(), [](Teclado &t) {
        t.EsperaTexto("pagina", "1 de 5");
        t.Ctrl(Qt::Key_End).EsperaTexto("pagina", "5 de 5");
        t.Ctrl(Qt::Key_Home).EsperaTexto("pagina", "1 de 5");
        t.Alt('G').EsperaFoco("pagina").Ctrl(Qt::Key_A).Escreve("4\r").EsperaTexto("pagina", "4 de 5");
        t.Espera("the fourth page is at the top", [] {
            return Paginas().verticalScrollBar()->value() ==
                   qRound(Paginas().Disposicao().Lugar(3).top() - DisposicaoDePaginas::Margem);
        });
        t.Tecla(Qt::Key_Down).EsperaTexto("pagina", "3 de 5");
        t.Ctrl(Qt::Key_A).Escreve("99\r").EsperaTexto("pagina", "3 de 5");
        t.TabAte("paginas").Tecla(Qt::Key_PageDown);
        t.Espera("further down",
                 [] { return Paginas().verticalScrollBar()->value() > Paginas().Disposicao().Lugar(2).top(); });
    });
}

// The pixels of the page on which something is found differ where it is, and nowhere else.
TEST_F(VisorTeste, FoundWords_AreMarked_TheCurrentOneStronger)
{
    const QString caminho = FazPdfDePaginas(pasta.filePath("achados.pdf"), {"alfa beta alfa", "gama", "alfa"});
    Percorre(caminho, [](Teclado &t) {
        const auto cores = [] {
            return NaTela([] {
                // Drawn anew at each look, until the drawing of the page is there.
                const QImage imagem = Teclado::Acha("paginas")->grab().toImage();
                std::map<QRgb, int> quantas;
                for (int y = 0; y < imagem.height(); ++y) {
                    for (int x = 0; x < imagem.width(); ++x) {
                        ++quantas[imagem.pixel(x, y)];
                    }
                }
                return quantas;
            });
        };
        const auto misturada = [](int alfa) {
            const QColor cor = Teclado::Acha("paginas")->palette().color(QPalette::Highlight);
            const auto com = [alfa](int parte) { return (parte * alfa + 255 * (255 - alfa)) / 255; };
            return QColor(com(cor.red()), com(cor.green()), com(cor.blue()));
        };
        const auto tem = [=](int alfa) {
            const QColor procurada = NaTela([=] { return misturada(alfa); });
            int quantas = 0;
            for (const auto &[cor, vezes] : cores()) {
                const QColor vista(cor);
                if (qAbs(vista.red() - procurada.red()) < 3 && qAbs(vista.green() - procurada.green()) < 3 &&
                    qAbs(vista.blue() - procurada.blue()) < 3) {
                    quantas += vezes;
                }
            }
            return quantas > 100;
        };
        EXPECT_FALSE(tem(70));
        EXPECT_FALSE(tem(150));
        t.Ctrl(Qt::Key_F).EsperaFoco("procurado").Escreve("alfa\r").EsperaTexto("achados", "1 de 3");
        EXPECT_TRUE(tem(70)) << "the other one of the page";
        EXPECT_TRUE(tem(150)) << "the current one";
        Retrata("achado");
        t.Tecla(Qt::Key_F3).Tecla(Qt::Key_F3).EsperaTexto("achados", "3 de 3").EsperaTexto("pagina", "3 de 3");
        t.Tecla(Qt::Key_F3).EsperaTexto("achados", "1 de 3").EsperaTexto("pagina", "1 de 3");
        t.Tecla(Qt::Key_F3, Qt::ShiftModifier).EsperaTexto("achados", "3 de 3");
        t.Ctrl(Qt::Key_A).Tecla(Qt::Key_Delete).EsperaTexto("achados", "");
        EXPECT_FALSE(tem(150));
    });
}

TEST_F(VisorTeste, Search_BeginsAtThePageThatIsLookedAt)
{
    Percorre(Cinco(), [](Teclado &t) {
        t.Ctrl(Qt::Key_End).EsperaTexto("pagina", "5 de 5");
        t.Ctrl(Qt::Key_F).Escreve("folha\r").EsperaTexto("achados", "5 de 5");
        t.Ctrl(Qt::Key_A).Escreve("rara\r").EsperaTexto("achados", "1 de 1").EsperaTexto("pagina", "3 de 5");
        t.Ctrl(Qt::Key_A).Escreve("nada disso\r").EsperaTexto("achados", "Não encontrado");
    });
}

TEST_F(VisorTeste, Text_IsCopied_OfThePageOrAll)
{
    Percorre(Cinco(), [](Teclado &t) {
        t.Ctrl(Qt::Key_C).EsperaTexto("achados", "Página 1 copiada");
        EXPECT_EQ(Copiado(), "Primeira folha");
        t.Ctrl(Qt::Key_A).Ctrl(Qt::Key_C).EsperaTexto("achados", "Texto copiado");
        EXPECT_EQ(Copiado(), "Primeira folha Segunda folha Terceira folha com palavra rara Quarta folha Quinta folha");
    });
}

TEST_F(VisorTeste, Text_ChosenWithTheMouse_IsCopied)
{
    Percorre(Cinco(), [](Teclado &t) {
        NaTela([] {
            auto *paginas = dynamic_cast<PaginasPDF *>(Teclado::Acha("paginas"));
            // From the left margin to the right one, over the one line of the page.
            const QRectF lugar = paginas->Disposicao().Lugar(0).translated(0, -paginas->verticalScrollBar()->value());
            const QPoint de = lugar.topLeft().toPoint() + QPoint(4, qRound(lugar.height() / 48)); // at any scale
            const QPoint ate(static_cast<int>(lugar.right()) - 4, de.y());
            QTest::mousePress(paginas->viewport(), Qt::LeftButton, {}, de);
            QMouseEvent move(QEvent::MouseMove, ate, paginas->viewport()->mapToGlobal(ate), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(paginas->viewport(), &move);
            QTest::mouseRelease(paginas->viewport(), Qt::LeftButton, {}, ate);
        });
        Retrata("escolha");
        t.Alt('C').EsperaTexto("achados", "Texto copiado");
        EXPECT_EQ(Copiado(), "Primeira folha");
    });
}

TEST_F(VisorTeste, PageWithoutText_SaysSo)
{
    QApplication::clipboard()->setText("antes");
    Percorre(FazPdfDePaginas(pasta.filePath("vazia.pdf"), {""}), [](Teclado &t) {
        t.Ctrl(Qt::Key_C).EsperaTexto("achados", "Página sem texto");
        EXPECT_EQ(Copiado(), "antes");
    });
}

TEST_F(VisorTeste, Turned_PageLiesOnItsSide)
{
    Percorre(Cinco(), [](Teclado &t) {
        t.Alt('R').Espera("on its side", [] {
            const QRectF lugar = Paginas().Disposicao().Lugar(0);
            return lugar.width() > lugar.height();
        });
        t.Ctrl(Qt::Key_F).Escreve("primeira\r").EsperaTexto("achados", "1 de 1");
        Retrata("girada");
    });
}

TEST_F(VisorTeste, FiveHundredPages_OpenAtOnce_AndTheLastIsReached)
{
    QStringList textos;
    for (int n = 1; n <= 500; ++n) {
        textos << QString("Folha %1").arg(n);
    }
    Percorre(FazPdfDePaginas(pasta.filePath("muitas.pdf"), textos), [](Teclado &t) {
        t.EsperaTexto("pagina", "1 de 500").Ctrl(Qt::Key_End).EsperaTexto("pagina", "500 de 500");
        t.Ctrl(Qt::Key_F).Escreve("folha 500\r").EsperaTexto("achados", "1 de 1");
    });
}

// The dialog, as a person leaves it: the pages from 2 to 3, into a file.
TEST_F(VisorTeste, Print_OfPagesFromTo_PrintsThoseAlone)
{
    const QString destino = pasta.filePath("impresso.pdf");
    Percorre(Cinco(), [&](Teclado &t) {
        t.Ctrl(Qt::Key_P).Espera("the print dialog", [] {
            return qobject_cast<QPrintDialog *>(QApplication::activeModalWidget()) != nullptr;
        });
        NaTela([&] {
            auto *dialogo = qobject_cast<QPrintDialog *>(QApplication::activeModalWidget());
            dialogo->printer()->setOutputFormat(QPrinter::PdfFormat);
            dialogo->printer()->setResolution(72); // which pages come is asked here: no need of all the dots of paper
            dialogo->findChild<QLineEdit *>("filename")->setText(destino);
            auto *faixa = dialogo->findChild<QRadioButton *>("printRange");
            ASSERT_NE(faixa, nullptr);
            QTest::mouseClick(faixa, Qt::LeftButton, {}, {8, faixa->height() / 2});
            dialogo->findChild<QSpinBox *>("from")->setValue(2);
            dialogo->findChild<QSpinBox *>("to")->setValue(3);
            dialogo->grab().save(QString(PASTA_DOS_RETRATOS) + "/visor-imprimir.png");
        });
        t.Tecla(Qt::Key_Return).EsperaJanela("VisorPDF");
        t.Espera("printed", [&] { return QFile::exists(destino) && !TelaDeAndamento::EmCurso(); });
    });
    QPdfDocument impresso;
    ASSERT_EQ(impresso.load(destino), QPdfDocument::Error::None);
    EXPECT_EQ(impresso.pageCount(), 2);
}

// What the dialog leaves in the printer, page for page.
class ImpressaoDePDFTeste : public testing::Test {
  protected:
    ImpressaoDePDFTeste()
    {
        impressora.setOutputFormat(QPrinter::PdfFormat);
        impressora.setOutputFileName(destino);
        impressora.setResolution(150);
    }
    Impressao Imprime(
        const Segue &segue = [](double, const std::string &) { return true; }, int atual = 0)
    {
        QPdfDocument documento;
        EXPECT_EQ(documento.load(origem), QPdfDocument::Error::None);
        return ImprimePDF(documento, atual, impressora, segue);
    }
    // Where there is ink on a printed page, as parts of its width and height; empty without any.
    QRectF Tinta(int pagina)
    {
        QPdfDocument impresso;
        EXPECT_EQ(impresso.load(destino), QPdfDocument::Error::None);
        const QSize tamanho = impresso.pagePointSize(pagina).toSize();
        const QImage imagem = impresso.render(pagina, tamanho);
        QRect tinta;
        for (int y = 0; y < imagem.height(); ++y) {
            for (int x = 0; x < imagem.width(); ++x) {
                const QColor cor = imagem.pixelColor(x, y);
                if (cor.alpha() > 128 && cor.lightness() < 128) {
                    tinta |= QRect(x, y, 1, 1);
                }
            }
        }
        return {tinta.left() / double(tamanho.width()), tinta.top() / double(tamanho.height()),
                tinta.width() / double(tamanho.width()), tinta.height() / double(tamanho.height())};
    }
    int Impressas()
    {
        QPdfDocument impresso;
        EXPECT_EQ(impresso.load(destino), QPdfDocument::Error::None);
        return impresso.pageCount();
    }
    // A page with a frame all around, up to 10 points from its edges.
    void Emoldurada(const QSizeF &pontos)
    {
        QPdfWriter escrita(origem);
        escrita.setPageSize(QPageSize(pontos, QPageSize::Point));
        escrita.setPageMargins(QMarginsF());
        escrita.setResolution(72);
        QPainter pincel(&escrita);
        pincel.setPen(QPen(Qt::black, 4));
        pincel.drawRect(QRectF(QPointF(10, 10), pontos - QSizeF(20, 20)));
    }

    QTemporaryDir pasta;
    QString origem = pasta.filePath("origem.pdf");
    QString destino = pasta.filePath("destino.pdf");
    QPrinter impressora{QPrinter::HighResolution};
};

TEST_F(ImpressaoDePDFTeste, CurrentPage_IsThatOneAlone)
{
    FazPdfDePaginas(origem, CincoPaginas);
    impressora.setPrintRange(QPrinter::CurrentPage);
    EXPECT_EQ(Imprime([](double, const std::string &) { return true; }, 3), Impressao::Feita);
    EXPECT_EQ(Impressas(), 1);
}

TEST_F(ImpressaoDePDFTeste, RangesAndOrder_AreAsToldToThePrinter)
{
    // Told apart by where the ink ends.
    FazPdfDePaginas(origem, {"a", "a\na", "a\na\na", "a\na\na\na"});
    impressora.setPrintRange(QPrinter::PageRange);
    impressora.setPageRanges(QPageRanges::fromString("1,3-4"));
    impressora.setPageOrder(QPrinter::LastPageFirst);
    EXPECT_EQ(Imprime(), Impressao::Feita);
    ASSERT_EQ(Impressas(), 3);
    EXPECT_GT(Tinta(0).bottom(), Tinta(1).bottom());
    EXPECT_GT(Tinta(1).bottom(), Tinta(2).bottom() * 1.5);
}

TEST_F(ImpressaoDePDFTeste, Page_IsInTheMiddleAndNotCut)
{
    struct Caso {
        QSizeF Pagina;
        bool Reduzida;
    };
    // The sheet is A4, standing: as large as it, larger, smaller, and lying.
    for (const auto &[pagina, reduzida] :
         {Caso{{595, 842}, true}, Caso{{1190, 1684}, true}, Caso{{298, 420}, false}, Caso{{842, 595}, true}}) {
        Emoldurada(pagina);
        EXPECT_EQ(Imprime(), Impressao::Feita);
        const QRectF tinta = Tinta(0);
        const std::string qual = std::to_string(pagina.width());
        EXPECT_GT(tinta.left(), 0.01) << qual;
        EXPECT_GT(tinta.top(), 0.01) << qual;
        EXPECT_NEAR(tinta.center().x(), 0.5, 0.01) << qual;
        EXPECT_NEAR(tinta.center().y(), 0.5, 0.01) << qual;
        if (reduzida) {
            EXPECT_GT(tinta.height(), 0.85) << qual;
        } else {
            EXPECT_NEAR(tinta.height(), 400.0 / 842, 0.02) << qual;
        }
    }
}

// Drawn in strips, it is what it is drawn at once.
TEST_F(ImpressaoDePDFTeste, Strips_JoinWithoutAGap)
{
    Emoldurada({595, 842});
    impressora.setResolution(600);
    EXPECT_EQ(Imprime(), Impressao::Feita);
    QPdfDocument impresso;
    ASSERT_EQ(impresso.load(destino), QPdfDocument::Error::None);
    const QImage imagem = impresso.render(0, {1190, 1684});
    // Down the left side of the frame there is ink in every row.
    const QRectF tinta = Tinta(0);
    const int x = qRound((tinta.left() + 2.0 / 595) * 1190);
    for (int y = qRound(tinta.top() * 1684) + 8; y < qRound(tinta.bottom() * 1684) - 8; ++y) {
        EXPECT_LT(imagem.pixelColor(x, y).lightness(), 128) << y;
    }
}

TEST_F(ImpressaoDePDFTeste, GivenUp_AtEveryStep_PrintsNoMore)
{
    FazPdfDePaginas(origem, {"a", "b", "c"});
    for (int passo = 0; passo < 3; ++passo) {
        int passos = 0;
        EXPECT_EQ(Imprime([&](double, const std::string &) { return passos++ < passo; }), Impressao::Cancelada);
        EXPECT_EQ(passos, passo + 1);
        EXPECT_FALSE(QFile::exists(destino));
    }
}

TEST_F(ImpressaoDePDFTeste, PrinterThatFails_IsToldSo)
{
    FazPdfDePaginas(origem, {"a"});
    impressora.setOutputFileName(pasta.filePath("nenhuma/pasta/assim.pdf"));
    EXPECT_EQ(Imprime(), Impressao::Falhou);
}

TEST_F(ImpressaoDePDFTeste, RangeWithoutAPage_PrintsNothing)
{
    FazPdfDePaginas(origem, {"a"});
    impressora.setPrintRange(QPrinter::PageRange);
    impressora.setPageRanges(QPageRanges::fromString("7"));
    EXPECT_EQ(Imprime(), Impressao::Falhou);
    EXPECT_FALSE(QFile::exists(destino));
}

TEST(VisorSozinho, WhatIsNoPdfWithPages_IsNotOpened)
{
    const QTemporaryDir pasta;
    const auto abre = [&](const QByteArray &bytes) {
        const QString caminho = pasta.filePath("a.pdf");
        QFile arquivo(caminho);
        EXPECT_TRUE(arquivo.open(QIODevice::WriteOnly));
        arquivo.write(bytes);
        arquivo.close();
        return VisorPDF(nullptr).Abre(caminho);
    };
    EXPECT_FALSE(abre(""));
    EXPECT_FALSE(abre("texto"));
    EXPECT_FALSE(abre("%PDF-1.4\nnada"));
    EXPECT_FALSE(
        abre("%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n2 0 obj<</Type/Pages/Kids[]/Count 0>>endobj\n"
             "trailer<</Root 1 0 R>>\n%%EOF\n"));
    // Under a password.
    const Bytes inteiro = Pdf("protegido", 600);
    QByteArray cifrado(reinterpret_cast<const char *>(inteiro.data()), static_cast<qsizetype>(inteiro.size()));
    const QByteArray chave(64, '4');
    cifrado.replace("/Root 1 0 R", "/Root 1 0 R /ID [<00> <00>] /Encrypt << /Filter /Standard /V 1 /R 2 /P -4 /O <" +
                                       chave + "> /U <" + chave + "> >>");
    EXPECT_FALSE(abre(cifrado));
    EXPECT_FALSE(VisorPDF(nullptr).Abre(pasta.filePath("nenhum.pdf")));
    EXPECT_FALSE(VisorPDF(nullptr).Abre(pasta.path()));
}

// The window of a work, in front of a person who has a keyboard.
class AndamentoNaTelaTeste : public MesaTeste {
  protected:
    AndamentoNaTelaTeste() { Entra(); }
};

TEST_F(AndamentoNaTelaTeste, Work_TakesNoKeyForTheWindowsBehind_AndIsGivenUpByEsc)
{
    bool continuou = true;
    EXPECT_FALSE(TelaDeAndamento::EmCurso());
    const auto trabalha = [&] {
        TelaDeAndamento tela(&mesa);
        std::chrono::milliseconds agora{0};
        Andamento andamento(tela, "A réplica está sendo renovada.", true,
                            [&] { return agora += std::chrono::milliseconds(100); });
        while (andamento.Anda(0.5, "Equipamento 17")) {
        }
        continuou = TelaDeAndamento::EmCurso();
    };
    QDir().mkpath(PASTA_DOS_RETRATOS);
    QMetaObject::invokeMethod(&mesa, trabalha, Qt::QueuedConnection);
    EXPECT_EQ(Teclado::Percorre([](Teclado &t) {
                  t.EsperaJanela("Andamento").EsperaTexto("parte", "Equipamento 17");
                  NaTela([] { Teclado::Frente()->grab().save(QString(PASTA_DOS_RETRATOS) + "/andamento.png"); });
                  t.Ctrl(Qt::Key_1).Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
              }),
              "");
    EXPECT_TRUE(continuou);
    EXPECT_FALSE(TelaDeAndamento::EmCurso());
    EXPECT_EQ(mesa.findChild<QWidget *>("frmLista"), nullptr);
}

} // namespace
