#include "desk/windows/JanelaDoManual.h"

#include "desk/windows/InicioQt.h"
#include "desk/windows/TextoDoManual.h"
#include "services/TextoQt.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Teclado.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QTextBlock>
#include <QTimer>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <map>

using namespace mesa;

namespace {

// What is remembered for as long as the test lasts.
class LembrancasDeTeste : public ILembrancas {
  public:
    std::string_view NomeTipo() const override { return "LembrancasDeTeste"; }
    std::string Lembranca(const std::string &chave) const override
    {
        const auto achada = Textos.find(chave);
        return achada == Textos.end() ? "" : achada->second;
    }
    void Lembra(const std::string &chave, const std::string &texto) override { Textos[chave] = texto; }
    void Esquece(const std::string &) override { Textos.clear(); }

    std::map<std::string, std::string> Textos;
};

QString Longo(int secoes)
{
    QString texto("# Manual\n\n![Uma figura larga](larga.png)\n\n");
    for (int n = 1; n <= secoes; ++n) {
        texto += QString("## Parte %1\n\n").arg(n);
        for (int linha = 0; linha < 30; ++linha) {
            texto += QString("Linha %1 da parte %2, a aferição.\n\n").arg(linha).arg(n);
        }
    }
    return texto;
}

class JanelaDoManualTeste : public testing::Test {
  protected:
    JanelaDoManualTeste()
    {
        QImage larga(1600, 300, QImage::Format_RGB32);
        larga.fill(Qt::darkBlue);
        EXPECT_TRUE(larga.save(pasta.filePath("larga.png")));
    }
    std::unique_ptr<JanelaDoManual> Abre(const QString &texto)
    {
        auto janela = std::make_unique<JanelaDoManual>(texto, pasta.path(), lembrancas, nullptr);
        janela->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(janela.get()));
        return janela;
    }
    template <class W> static W &Parte(const QWidget &janela, const char *nome) { return *janela.findChild<W *>(nome); }
    static QTextBrowser &Texto(const QWidget &janela) { return Parte<QTextBrowser>(janela, "texto"); }
    static std::string Secao(const QWidget &janela)
    {
        return S(Parte<QTreeWidget>(janela, "conteudo").currentItem()->text(0));
    }
    static std::string Contagem(const QWidget &janela) { return S(Parte<QLabel>(janela, "contagem").text()); }
    // The line at the top of what is seen.
    static std::string EmCima(const QWidget &janela)
    {
        QTextBrowser &texto = Texto(janela);
        return S(texto.document()->findBlock(static_cast<TextoDoManual &>(texto).EmCima()).text());
    }
    static void Procura(QWidget &janela, const QString &texto)
    {
        QTest::keyClick(&janela, Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(&Parte<QLineEdit>(janela, "procurado"), texto);
    }

    QTemporaryDir pasta;
    Ref<LembrancasDeTeste> lembrancas = Novo<LembrancasDeTeste>();
};

TEST_F(JanelaDoManualTeste, Picture_IsNeverWiderThanTheTextWhateverTheWindowsSize)
{
    const auto janela = Abre(Longo(2));
    QTextBrowser &texto = Texto(*janela);
    for (const int largura : {700, 1300, 420, 900}) {
        janela->resize(largura, 600);
        QApplication::processEvents();
        EXPECT_EQ(texto.horizontalScrollBar()->maximum(), 0) << largura;
        // Where it is drawn, by its own colour.
        texto.verticalScrollBar()->setValue(0);
        const QImage vista = texto.viewport()->grab().toImage();
        int azuis = 0;
        for (int y = 0; y < vista.height(); ++y) {
            int nesta = 0;
            for (int x = 0; x < vista.width(); ++x) {
                nesta += vista.pixelColor(x, y) == QColor(Qt::darkBlue) ? 1 : 0;
            }
            azuis = std::max(azuis, nesta);
        }
        const int cabe = texto.viewport()->width() - static_cast<int>(2 * texto.document()->documentMargin());
        EXPECT_NEAR(azuis, std::min(1600, cabe), 2) << largura;
    }
}

TEST_F(JanelaDoManualTeste, PictureThatIsNotThere_IsTold)
{
    const auto janela = Abre("# Manual\n\n![A entrada](nada.png)\n\nTexto.\n");
    QTextBrowser &texto = Texto(*janela);
    const QTextBlock bloco = texto.document()->findBlockByNumber(1);
    EXPECT_GT(texto.document()->documentLayout()->blockBoundingRect(bloco).height(),
              1.5 * QFontMetricsF(texto.font()).height());
    EXPECT_FALSE(janela->grab().isNull());
}

TEST_F(JanelaDoManualTeste, Contents_LeadToTheirPartAndFollowTheText)
{
    const auto janela = Abre(Longo(5));
    auto &conteudo = Parte<QTreeWidget>(*janela, "conteudo");
    EXPECT_EQ(Secao(*janela), "Manual");
    conteudo.setFocus();
    QTest::keyClick(&conteudo, Qt::Key_Down);
    QTest::keyClick(&conteudo, Qt::Key_Down);
    EXPECT_EQ(Secao(*janela), "Parte 2");
    EXPECT_EQ(EmCima(*janela), "Parte 2");
    // The last one cannot be brought to the top, and is still where the person went.
    QTest::keyClick(&conteudo, Qt::Key_End);
    EXPECT_EQ(Secao(*janela), "Parte 5");
    Texto(*janela).setFocus();
    QTest::keyClick(&Texto(*janela), Qt::Key_Home);
    EXPECT_EQ(Secao(*janela), "Manual");
}

TEST_F(JanelaDoManualTeste, WayBackAndForth_ByKeys)
{
    const auto janela = Abre(Longo(5));
    auto &conteudo = Parte<QTreeWidget>(*janela, "conteudo");
    EXPECT_FALSE(Parte<QPushButton>(*janela, "voltar").isEnabled());
    conteudo.setFocus();
    QTest::keyClick(&conteudo, Qt::Key_Down);
    QTest::keyClick(&conteudo, Qt::Key_Down);
    QTest::keyClick(janela.get(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(EmCima(*janela), "Parte 1");
    QTest::keyClick(janela.get(), Qt::Key_Left, Qt::AltModifier);
    QTest::keyClick(janela.get(), Qt::Key_Left, Qt::AltModifier); // there is no further one
    EXPECT_EQ(Secao(*janela), "Manual");
    QTest::keyClick(janela.get(), Qt::Key_Right, Qt::AltModifier);
    QTest::keyClick(janela.get(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(EmCima(*janela), "Parte 2");
    EXPECT_FALSE(Parte<QPushButton>(*janela, "avancar").isEnabled());
}

TEST_F(JanelaDoManualTeste, Search_MarksCountsAndWalks)
{
    const auto janela = Abre(Longo(3));
    Procura(*janela, "AFERICAO");
    EXPECT_EQ(Contagem(*janela), "1 de 90");
    EXPECT_EQ(S(Texto(*janela).textCursor().selectedText()), "aferição");
    EXPECT_EQ(Texto(*janela).extraSelections().size(), 90);
    auto &resultados = Parte<QListWidget>(*janela, "resultados");
    EXPECT_EQ(resultados.count(), 90);
    EXPECT_EQ(S(resultados.item(0)->text()),
              "Parte 1: Manual Parte 1 Linha 0 da parte 1, a aferição. Linha 1 da parte 1, a aferição. Linha 2");
    QTest::keyClick(janela.get(), Qt::Key_F3);
    EXPECT_EQ(Contagem(*janela), "2 de 90");
    QTest::keyClick(&Parte<QLineEdit>(*janela, "procurado"), Qt::Key_Return);
    EXPECT_EQ(Contagem(*janela), "3 de 90");
    EXPECT_TRUE(janela->isVisible());
    for (int n = 0; n < 3; ++n) {
        QTest::keyClick(janela.get(), Qt::Key_F3, Qt::ShiftModifier);
    }
    EXPECT_EQ(Contagem(*janela), "90 de 90");
    EXPECT_EQ(Secao(*janela), "Parte 3");
    resultados.setCurrentRow(40);
    EXPECT_EQ(Contagem(*janela), "41 de 90");
    EXPECT_EQ(Secao(*janela), "Parte 2");
}

TEST_F(JanelaDoManualTeste, Search_OfWhatIsNotThere_SaysSo)
{
    const auto janela = Abre(Longo(1));
    Procura(*janela, "(.*)[");
    EXPECT_EQ(Contagem(*janela), "Não encontrado");
    EXPECT_FALSE(Parte<QPushButton>(*janela, "proximo").isEnabled());
    QTest::keyClick(janela.get(), Qt::Key_F3);
    EXPECT_TRUE(Texto(*janela).extraSelections().isEmpty());
    QTest::keyClick(janela.get(), Qt::Key_Escape);
    EXPECT_EQ(Contagem(*janela), "");
    Procura(*janela, "   ");
    EXPECT_EQ(Contagem(*janela), "");
}

TEST_F(JanelaDoManualTeste, Search_WithThousandsOfFinds_ReachesThemAllAndShowsTheFirst)
{
    const auto janela = Abre(Longo(60)); // 1800 lines
    Procura(*janela, "afericao");
    EXPECT_EQ(Contagem(*janela), "1 de 1800");
    EXPECT_EQ(Parte<QListWidget>(*janela, "resultados").count(), 1000);
    QTest::keyClick(janela.get(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(Contagem(*janela), "1800 de 1800");
    EXPECT_EQ(Secao(*janela), "Parte 60");
}

TEST_F(JanelaDoManualTeste, Escape_EndsTheSearchBeforeTheWindow)
{
    const auto janela = Abre(Longo(1));
    Procura(*janela, "linha");
    EXPECT_EQ(Parte<QTabWidget>(*janela, "painel").currentIndex(), 1);
    QTest::keyClick(janela.get(), Qt::Key_Escape);
    EXPECT_TRUE(janela->isVisible());
    EXPECT_TRUE(Texto(*janela).extraSelections().isEmpty());
    EXPECT_FALSE(Texto(*janela).textCursor().hasSelection());
    EXPECT_EQ(Parte<QTabWidget>(*janela, "painel").currentIndex(), 0);
    QTest::keyClick(janela.get(), Qt::Key_Escape);
    EXPECT_FALSE(janela->isVisible());
}

TEST_F(JanelaDoManualTeste, PlaceAndLetters_AreThoseOfTheLastTime)
{
    qreal letra = 0;
    {
        const auto janela = Abre(Longo(5));
        const qreal antes = Texto(*janela).font().pointSizeF();
        QTest::keyClick(janela.get(), Qt::Key_Plus, Qt::ControlModifier);
        letra = Texto(*janela).font().pointSizeF();
        EXPECT_GT(letra, antes);
        auto &conteudo = Parte<QTreeWidget>(*janela, "conteudo");
        conteudo.setFocus();
        for (int n = 0; n < 3; ++n) {
            QTest::keyClick(&conteudo, Qt::Key_Down);
        }
        EXPECT_EQ(EmCima(*janela), "Parte 3");
        janela->resize(500, 700); // narrower, and the place stays
        QApplication::processEvents();
        EXPECT_EQ(EmCima(*janela), "Parte 3");
    }
    const auto janela = Abre(Longo(5));
    EXPECT_EQ(EmCima(*janela), "Parte 3");
    EXPECT_EQ(Secao(*janela), "Parte 3");
    EXPECT_DOUBLE_EQ(Texto(*janela).font().pointSizeF(), letra);
    // A manual in which that part is no more begins at its beginning.
    EXPECT_EQ(EmCima(*Abre("# Outro\n\nTexto.\n")), "Outro");
}

TEST_F(JanelaDoManualTeste, EverythingOnIt_HasANameAndAPlaceInTheOrderOfTab)
{
    const auto janela = Abre(Longo(2));
    Procura(*janela, "linha");
    QStringList volta;
    QWidget *primeiro = QApplication::focusWidget();
    do {
        QWidget *este = QApplication::focusWidget();
        ASSERT_NE(este, nullptr);
        volta << este->objectName();
        QTest::keyClick(este, Qt::Key_Tab);
    } while (QApplication::focusWidget() != primeiro && volta.size() < 30);
    for (const char *nome : {"fechar", "procurado", "anterior", "proximo", "resultados", "texto", "aumentar"}) {
        EXPECT_TRUE(volta.contains(nome)) << nome << " in " << S(volta.join(' '));
    }
}

// F1 in the desk's own windows, and in the forms.
class AjudaTeste : public MesaTeste {
  protected:
    AjudaTeste()
    {
        const Ref<SessaoServico> ana = registro.Sessao("ana");
        Inclui(ana, Poe(EquipamentoDe("A1"), ComAfericao(ana)));
        mesa.show();
    }
    static Ref<SensorED> ComAfericao(const Ref<SessaoServico> &sessao)
    {
        const double documento = GuardaPdf(sessao, "certificado");
        return Poe(SensorDe(1), AfericaoDe("111", DataDe(10, 1, 2026), DataDe(10, 1, 2027), documento));
    }
    static void Percorre(const std::function<void(Teclado &)> &jornada) { EXPECT_EQ(Teclado::Percorre(jornada), ""); }
    // F1 here shows that part, and Esc leads back.
    static void Ajuda(Teclado &t, const QString &secao, const QString &volta)
    {
        t.Tecla(Qt::Key_F1);
        EsperaSecao(t, secao);
        t.Tecla(Qt::Key_Escape).EsperaJanela(volta);
    }
    static void EsperaSecao(Teclado &t, const QString &secao)
    {
        t.EsperaJanela("Ajuda").Espera("the manual at " + secao, [secao] {
            const auto *conteudo = Teclado::Frente()->findChild<QTreeWidget *>("conteudo");
            return conteudo != nullptr && conteudo->currentItem() != nullptr &&
                   conteudo->currentItem()->text(0) == secao;
        });
    }
};

TEST_F(AjudaTeste, EachPageOfTheForms_LeadsToItsPartOfTheManual)
{
    Entra();
    Percorre([](Teclado &t) {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        Ajuda(t, "Pesquisar", "frmLista");
        t.Alt('L').EsperaLinhas("ztlLista", 1).TabAte("ztlLista/linhas");
        t.Tecla(Qt::Key_Home).EsperaLinha("ztlLista", 1, "A1");
        t.Tecla(Qt::Key_Menu).EscolheNoMenu("Editar").EsperaJanela("frmEquipDetalhes");
        Ajuda(t, "Página Equipamento", "frmEquipDetalhes");
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 1);
        Ajuda(t, "Página Dados", "frmEquipDetalhes");
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 2);
        Ajuda(t, "Sensores", "frmEquipDetalhes");
        t.TabAte("ztListaSensor/linhas").Tecla(Qt::Key_Home);
        t.Tecla(Qt::Key_Menu).EscolheNoMenu("Editar").EsperaJanela("frmEquipSensores");
        Ajuda(t, "Dados do sensor", "frmEquipSensores");
        t.TabAte("cmdAjuda").Tecla(Qt::Key_Space);
        EsperaSecao(t, "Dados do sensor");
        t.Tecla(Qt::Key_Escape).EsperaJanela("frmEquipSensores");
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 1);
        Ajuda(t, "Aferições do sensor", "frmEquipSensores");
        t.TabAte("ztListaAfericao/linhas").EsperaLinha("ztListaAfericao", 1, "111");
        t.Alt('N').EsperaJanela("frmEquipAfericoes");
        Ajuda(t, "Dados da aferição", "frmEquipAfericoes");
        t.Alt('C').EsperaJanela("frmEquipSensores");
        t.Alt('C').EsperaJanela("frmEquipDetalhes");
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 4);
        Ajuda(t, "Página Opções", "frmEquipDetalhes");
        t.Alt('C').EsperaJanela("frmLista");
        t.Tecla(Qt::Key_Menu).EscolheNoMenu("Limites Diferenciados").EsperaJanela("frmLimitesDif");
        Ajuda(t, "Limites, dias e horários", "frmLimitesDif");
        t.Alt('N').EsperaJanela("frmLimitesDifDetalhes");
        Ajuda(t, "Limites, dias e horários", "frmLimitesDifDetalhes");
        t.Alt('C').EsperaJanela("frmLimitesDif");
        t.Alt('F').EsperaJanela("frmLista");
    });
}

TEST_F(AjudaTeste, WindowsOfTheDesk_LeadToTheirPartOfTheManual)
{
    Entra();
    Percorre([](Teclado &t) {
        t.Tecla(Qt::Key_F1);
        EsperaSecao(t, "Manual do operador"); // nothing is in front, and nothing was read
        t.Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
        t.Ctrl(Qt::Key_3).EsperaJanela("ConsultaAutuacao");
        Ajuda(t, "Consulta para autuação", "ConsultaAutuacao");
        t.Alt('E').EscolheNoMenu("Trocar minha senha").EsperaJanela("MinhaSenha");
        Ajuda(t, "A sua senha", "MinhaSenha");
        t.Tecla(Qt::Key_Escape).EsperaJanela("ConsultaAutuacao");
        t.Alt('E').EscolheNoMenu("Preferências").EsperaJanela("Preferencias");
        Ajuda(t, "Preferências", "Preferencias");
        t.Tecla(Qt::Key_Escape).EsperaJanela("ConsultaAutuacao");
        t.Ctrl(Qt::Key_F4).EsperaJanela("Mesa");
        t.Tecla(Qt::Key_F1);
        EsperaSecao(t, "Preferências"); // where it was read last
        t.Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
    });
}

TEST_F(AjudaTeste, Administration_EachPageLeadsToItsPart)
{
    mesa.show();
    mesa.Entra(registro.Sessao("marta"));
    Percorre([](Teclado &t) {
        t.Alt('M').EscolheNoMenu("Usuários").EsperaJanela("Administracao");
        const QStringList secoes{"Pessoas e direitos", "Clientes e setores", "Entradas recusadas", "Logradouros",
                                 "Layouts"};
        for (int pagina = 0; pagina < secoes.size(); ++pagina) {
            t.EsperaPagina("paginas", pagina);
            Ajuda(t, secoes[pagina], "Administracao");
            t.Tecla(Qt::Key_Tab, Qt::ControlModifier);
        }
        t.Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
    });
}

TEST_F(AjudaTeste, SignIn_LeadsToItsPart)
{
    QMetaObject::invokeMethod(
        &mesa, [this] { mesa.PedeEntrada(); }, Qt::QueuedConnection);
    Percorre([](Teclado &t) {
        t.EsperaJanela("Entrada");
        Ajuda(t, "Entrar", "Entrada");
        t.Tecla(Qt::Key_Escape).Espera("the sign-in is gone", [] {
            return QApplication::activeModalWidget() == nullptr;
        });
    });
}

TEST_F(AjudaTeste, FirstStart_LeadsToItsPart)
{
    InicioQt inicio;
    OpcaoDoInicio resposta = OpcaoDoInicio::Novo;
    QTimer::singleShot(0, [&] { resposta = inicio.Comeca(); });
    Percorre([](Teclado &t) {
        t.EsperaJanela("PrimeiroInicio");
        Ajuda(t, "Primeiro início", "PrimeiroInicio");
        t.Tecla(Qt::Key_Escape).Espera("the question is gone", [] {
            return QApplication::activeModalWidget() == nullptr;
        });
    });
    EXPECT_EQ(resposta, OpcaoDoInicio::Sair);
}

// It can be read and searched in front of a modal window, which goes on to be used, and goes with it.
TEST_F(AjudaTeste, Manual_BelongsToTheWindowItWasAskedFrom)
{
    Entra();
    Percorre([](Teclado &t) {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('L').EsperaLinhas("ztlLista", 1).TabAte("ztlLista/linhas");
        t.Tecla(Qt::Key_Home).EsperaLinha("ztlLista", 1, "A1");
        t.Tecla(Qt::Key_Menu).EscolheNoMenu("Editar").EsperaJanela("frmEquipDetalhes");
        t.Tecla(Qt::Key_F1);
        EsperaSecao(t, "Página Equipamento");
        t.Ctrl(Qt::Key_F).EsperaFoco("procurado").Escreve("geometria");
        t.EsperaTexto("contagem", "Não encontrado");
        t.Espera("the form beside is used", [] {
            auto *form = dynamic_cast<JanelaForm *>(QApplication::activeModalWidget());
            form->activateWindow();
            return form->isActiveWindow();
        });
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 1);
        t.Tecla(Qt::Key_F1);
        EsperaSecao(t, "Página Dados"); // the same one
        t.Espera("one manual",
                 [] { return Teclado::Frente()->parentWidget()->findChildren<QDialog *>("Ajuda").size() == 1; });
        t.Espera("the form is closed", [] {
            auto *form = dynamic_cast<JanelaForm *>(QApplication::activeModalWidget());
            form->activateWindow();
            return form->isActiveWindow();
        });
        t.Alt('C').EsperaJanela("frmLista");
        t.Espera("it went with it", [] {
            for (const QWidget *janela : QApplication::topLevelWidgets()) {
                if (janela->objectName() == "Ajuda" && janela->isVisible()) {
                    return false;
                }
            }
            return true;
        });
    });
}

} // namespace
