#include "controls/ztList.h"
#include "desk/host/Lembrancas.h"
#include "desk/windows/RenderLista.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Teclado.h"
#include "tests/support/FormFalso.h"
#include "tests/support/UmControle.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPdfDocument>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QTableView>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace mesa;

namespace {

using Textos = std::vector<std::string>;

// Does it in the window in front as soon as the event loop of that runs.
void Quando(const char *nome, const std::function<void(QWidget &)> &faz)
{
    QTimer::singleShot(0, qApp, [=] {
        QWidget *janela = nullptr;
        for (QWidget *topo : QApplication::topLevelWidgets()) {
            janela = topo->isVisible() && topo->objectName() == nome ? topo : janela;
        }
        if (janela == nullptr) {
            Quando(nome, faz);
        } else {
            faz(*janela);
        }
    });
}

// A list on the screen, with a column that is not for people, in the hands of a person with mouse and keyboard.
class JanelaComLista {
  public:
    explicit JanelaComLista(Ref<ILembrancas> lembrancas = nullptr)
    {
        form->DefineCaption("Equipamentos");
        form->Guarda(lista);
        lista->AlteraPrimeiraColuna(1, std::nullopt, "Código", 1500, 0, "", true);
        lista->AdicionaColuna(2, std::nullopt, "Descrição", 4500, 0, "", true);
        lista->AdicionaColuna(3, std::nullopt, "Município", 2400, 0, "", true);
        lista->AdicionaColuna(4, std::nullopt, "NroInt", 0, 0, "", false);
        janela.setObjectName("ztlLista");
        janela.resize(900, 420);
        render = new RenderLista(
            lista, &janela, [](const std::function<void()> &acao) { acao(); }, [] {}, [] {},
            {[this](const std::string &texto) {
                 perguntas.push_back(texto);
                 return sim;
             },
             {"Ana Souza", std::move(lembrancas), [] { return DataDe(20, 11, 2026, 10, 0, 0); }},
             "frmLista.fotografico"});
        janela.show();
        janela.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&janela));
        render->Atualiza();
        tabela = janela.findChild<QTableView *>("linhas");
        filtro = janela.findChild<QLineEdit *>("ztlLista_filtro");
    }

    // Rows whose codes fall from 9999.
    void Carrega(int quantas)
    {
        TabelaTexto dados(4);
        for (int n = 0; n < quantas; ++n) {
            const std::int32_t numero = dados.AdicionaLinha();
            const int codigo = 9999 - lista->NroItens() - n;
            dados.Celula(1, numero) = std::to_string(codigo);
            dados.Celula(2, numero) = codigo % 10 == 0 ? "Avenida São João" : "Rua " + std::to_string(codigo);
            dados.Celula(3, numero) = "Município " + std::to_string(codigo % 7);
            dados.Celula(4, numero) = std::to_string(numero);
        }
        lista->CarregaItens(dados);
        lista->DefineItemAtual(lista->NroItens());
    }
    // As the module brings further rows, until there are so many.
    void TrazPaginas(int pagina, int ate)
    {
        lista->DefineTemMais(true);
        conexoes.push_back(lista->BotaoClick().liga([this, pagina, ate] {
            ++pedidos;
            Carrega(pagina);
            lista->DefineTemMais(lista->NroItens() < ate);
        }));
    }
    QPoint Titulo(int coluna, int recuo) const
    {
        const QHeaderView *titulos = tabela->horizontalHeader();
        return {titulos->sectionViewportPosition(coluna) + recuo, titulos->height() / 2};
    }
    void ClicaTitulo(int coluna) const
    {
        QTest::mouseClick(tabela->horizontalHeader()->viewport(), Qt::LeftButton, {}, Titulo(coluna, 30));
    }
    void Arrasta(const QPoint &de, const QPoint &para) const
    {
        QWidget *onde = tabela->horizontalHeader()->viewport();
        QTest::mousePress(onde, Qt::LeftButton, {}, de);
        QTest::mouseMove(onde, (de + para) / 2);
        QTest::mouseMove(onde, para);
        QTest::mouseRelease(onde, Qt::LeftButton, {}, para);
        QCoreApplication::processEvents();
    }
    void MenuDoTitulo() const
    {
        QHeaderView *titulos = tabela->horizontalHeader();
        const QPoint onde = Titulo(0, 20);
        QContextMenuEvent pede(QContextMenuEvent::Mouse, onde, titulos->mapToGlobal(onde));
        QApplication::sendEvent(titulos->viewport(), &pede);
        QCoreApplication::processEvents();
    }
    void Alarga(int coluna, int quanto) const
    {
        const QPoint borda = Titulo(coluna, tabela->columnWidth(coluna) - 1);
        Arrasta(borda, borda + QPoint(quanto, 0));
    }
    void Rola(int passos) const
    {
        const QPoint meio = tabela->viewport()->rect().center();
        for (int passo = 0; passo < passos; ++passo) {
            QWheelEvent roda(meio, tabela->viewport()->mapToGlobal(meio), {}, {0, -120}, Qt::NoButton, {},
                             Qt::NoScrollPhase, false);
            QApplication::sendEvent(tabela->viewport(), &roda);
            QCoreApplication::processEvents();
        }
    }
    void Tecla(Qt::Key tecla, Qt::KeyboardModifiers com = {}) const
    {
        QTest::keyClick(tabela, tecla, com);
        QCoreApplication::processEvents();
    }
    Textos Coluna(int coluna) const
    {
        Textos textos;
        for (int linha = 0; linha < tabela->model()->rowCount(); ++linha) {
            textos.push_back(S(tabela->model()->index(linha, coluna).data().toString()));
        }
        return textos;
    }
    // The headings from left to right.
    Textos Titulos() const
    {
        Textos textos;
        const QHeaderView *titulos = tabela->horizontalHeader();
        for (int lugar = 0; lugar < titulos->count(); ++lugar) {
            const int coluna = titulos->logicalIndex(lugar);
            if (!titulos->isSectionHidden(coluna)) {
                textos.push_back(S(tabela->model()->headerData(coluna, Qt::Horizontal).toString()));
            }
        }
        return textos;
    }
    std::string Rodape() const { return S(janela.findChild<QLabel *>("rodape")->text()); }

    Ref<FormFalso> form = FormNaTela();
    Ref<ztList> lista = Feito<ztList>(form, Chamado<AjustesZtList>("ztlLista"));
    QWidget janela;
    RenderLista *render = nullptr;
    QTableView *tabela = nullptr;
    QLineEdit *filtro = nullptr;
    std::vector<Conexao> conexoes;
    Textos perguntas;
    bool sim = true;
    int pedidos = 0;
};

// What is remembered in the file of the user's settings.
class ListasTeste : public testing::Test {
  protected:
    Ref<ILembrancas> Lembra() { return Novo<Lembrancas>(preferencias, "r1", "ana"); }

    QTemporaryDir pasta;
    Preferencias preferencias{pasta.filePath("preferencias.ini").toStdString()};
};

TEST_F(ListasTeste, Search_Again_KeepsTheOrderAndTheWidthsThatThePersonMade)
{
    JanelaComLista janela;
    janela.Carrega(3);
    janela.ClicaTitulo(0);
    janela.Alarga(0, 70);
    const int largura = janela.tabela->columnWidth(0);
    EXPECT_GT(largura, 150);
    EXPECT_EQ(janela.Coluna(0), (Textos{"9997", "9998", "9999"}));
    janela.lista->Limpa(false);
    janela.Carrega(4);
    EXPECT_EQ(janela.Coluna(0), (Textos{"9996", "9997", "9998", "9999"}));
    EXPECT_EQ(janela.tabela->columnWidth(0), largura);
    EXPECT_EQ(janela.tabela->horizontalHeader()->sortIndicatorSection(), 0);
    EXPECT_EQ(janela.lista->ItemAtual(), 4);
    EXPECT_EQ(janela.tabela->currentIndex().row(), 0) << "the last one that was loaded, where it stands";
}

TEST_F(ListasTeste, Rolling_ToTheEnd_BringsFurtherRowsAndThePersonStaysThere)
{
    JanelaComLista janela;
    janela.Carrega(60);
    janela.TrazPaginas(60, 180);
    janela.Tecla(Qt::Key_Home);
    EXPECT_EQ(janela.Rodape(), "60 equipamentos; há mais");
    janela.Rola(1);
    EXPECT_EQ(janela.pedidos, 0) << "not yet at the end";
    QScrollBar *barra = janela.tabela->verticalScrollBar();
    while (janela.pedidos == 0 && barra->value() < barra->maximum()) {
        janela.Rola(1);
    }
    EXPECT_EQ(janela.pedidos, 1);
    EXPECT_EQ(janela.Rodape(), "120 equipamentos; há mais");
    EXPECT_EQ(janela.tabela->currentIndex().row(), 0);
    EXPECT_GT(barra->value(), 30);
    EXPECT_LT(barra->value(), 60) << "the rows that the person sees are the same";
    janela.Tecla(Qt::Key_End);
    EXPECT_EQ(janela.pedidos, 2);
    EXPECT_EQ(janela.tabela->currentIndex().row(), 119);
    EXPECT_EQ(janela.Rodape(), "180 equipamentos");
    EXPECT_FALSE(janela.janela.findChild<QPushButton *>("mais")->isVisible());
    janela.Tecla(Qt::Key_End);
    janela.Rola(5);
    EXPECT_EQ(janela.pedidos, 2);
}

TEST_F(ListasTeste, Rolling_WithTheKeysAndTheBar_BringsRowsAsWell)
{
    JanelaComLista janela;
    janela.Carrega(60);
    janela.TrazPaginas(60, 1000);
    janela.Tecla(Qt::Key_Home);
    for (int vez = 0; vez < 20 && janela.pedidos == 0; ++vez) {
        janela.Tecla(Qt::Key_PageDown);
    }
    EXPECT_EQ(janela.pedidos, 1);
    EXPECT_EQ(janela.tabela->currentIndex().row(), 59);
    QScrollBar *barra = janela.tabela->verticalScrollBar();
    barra->triggerAction(QAbstractSlider::SliderToMaximum);
    QCoreApplication::processEvents();
    EXPECT_EQ(janela.pedidos, 2);
    janela.tabela->scrollToTop(); // which nobody rolled
    janela.tabela->scrollToBottom();
    QCoreApplication::processEvents();
    EXPECT_EQ(janela.pedidos, 2);
}

TEST_F(ListasTeste, Rolling_WhenTheServiceBringsNothing_AsksOnce)
{
    JanelaComLista janela;
    janela.Carrega(60);
    janela.lista->DefineTemMais(true);
    janela.conexoes.push_back(janela.lista->BotaoClick().liga([&] { ++janela.pedidos; }));
    for (int vez = 0; vez < 4; ++vez) {
        janela.Tecla(Qt::Key_End);
    }
    janela.Rola(10);
    EXPECT_EQ(janela.pedidos, 1);
    QTest::mouseClick(janela.janela.findChild<QPushButton *>("mais"), Qt::LeftButton);
    EXPECT_EQ(janela.pedidos, 2);
}

TEST_F(ListasTeste, Heading_OfAListThatHasMore_OffersToLoadTheRest)
{
    JanelaComLista janela;
    janela.Carrega(10);
    janela.TrazPaginas(10, 50);
    janela.sim = false;
    janela.ClicaTitulo(0);
    EXPECT_EQ(janela.perguntas,
              Textos{"Só 10 equipamentos foram carregados, e há mais. Carregar os demais antes de ordenar?"});
    EXPECT_EQ(janela.Rodape(), "10 equipamentos; há mais; ordenados só os carregados");
    janela.lista->Limpa(false);
    janela.Carrega(10);
    janela.lista->DefineTemMais(true);
    janela.sim = true;
    janela.ClicaTitulo(1);
    EXPECT_EQ(janela.Rodape(), "50 equipamentos");
    EXPECT_EQ(janela.Coluna(1).front(), "Avenida São João");
    EXPECT_EQ(janela.pedidos, 4);
}

// The window with the button comes up when half a second has gone, whatever the machine has done until then.
TEST_F(ListasTeste, LoadingTheRest_GivenUpByTheButton_KeepsAndSortsWhatHasCome)
{
    JanelaComLista janela;
    janela.Carrega(10);
    janela.lista->DefineTemMais(true);
    janela.conexoes.push_back(janela.lista->BotaoClick().liga([&] {
        janela.Carrega(1);
        if (auto *espera = janela.janela.findChild<QDialog *>("Andamento")) {
            EXPECT_TRUE(espera->isVisible());
            QTest::mouseClick(espera->findChild<QPushButton *>("cancelar"), Qt::LeftButton);
        }
    }));
    janela.ClicaTitulo(0);
    EXPECT_EQ(janela.janela.findChild<QDialog *>("Andamento"), nullptr);
    EXPECT_GT(janela.lista->NroItens(), 10);
    EXPECT_TRUE(janela.lista->TemMais());
    const Textos codigos = janela.Coluna(0);
    EXPECT_TRUE(std::ranges::is_sorted(codigos, {}, [](const std::string &codigo) { return std::stoi(codigo); }));
    EXPECT_TRUE(janela.Rodape().ends_with("equipamentos; há mais; ordenados só os carregados")) << janela.Rodape();
}

TEST_F(ListasTeste, LoadingTheRest_WhenTheWindowGoes_EndsInPeace)
{
    auto janela = std::make_unique<JanelaComLista>();
    janela->Carrega(10);
    janela->lista->DefineTemMais(true);
    const Ref<ztList> lista = janela->lista;
    const Conexao some = lista->BotaoClick().liga([&] {
        delete std::exchange(janela->render, nullptr);
        janela->form->DefineEnabled(false);
    });
    janela->ClicaTitulo(0);
    EXPECT_EQ(janela->render, nullptr);
    EXPECT_EQ(lista->NroItens(), 10);
}

TEST_F(ListasTeste, Filter_AsItIsTyped_ShowsTheRowsThatHaveTheWords)
{
    JanelaComLista janela;
    janela.Carrega(40);
    janela.filtro->setFocus();
    QTest::keyClicks(janela.filtro, "SAO jo");
    EXPECT_EQ(janela.Coluna(0), (Textos{"9990", "9980", "9970", "9960"}));
    EXPECT_EQ(janela.Rodape(), "4 de 40 equipamentos");
    EXPECT_EQ(janela.lista->NroItens(), 40);
    EXPECT_EQ(janela.lista->ItemAtual(), 40) << "9960, which is seen";
    QTest::keyClicks(janela.filtro, " 9970");
    EXPECT_EQ(janela.Coluna(0), Textos{"9970"});
    EXPECT_EQ(janela.lista->ItemAtual(), -1);
    EXPECT_FALSE(janela.tabela->currentIndex().isValid());
    QTest::keyClick(janela.filtro, Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), janela.tabela);
    EXPECT_EQ(janela.lista->ValorAtual("Código"), "9970");
    janela.filtro->setFocus();
    QTest::keyClick(janela.filtro, Qt::Key_Escape);
    EXPECT_EQ(janela.filtro->text(), "");
    EXPECT_EQ(janela.Rodape(), "40 equipamentos");
    EXPECT_EQ(janela.lista->ValorAtual("Código"), "9970");
    EXPECT_TRUE(janela.tabela->viewport()->rect().intersects(janela.tabela->visualRect(janela.tabela->currentIndex())));
}

TEST_F(ListasTeste, Filter_OverTenThousandRows_AndARefreshThatBringsFewer)
{
    JanelaComLista janela;
    janela.Carrega(9990);
    janela.filtro->setFocus();
    QTest::keyClicks(janela.filtro, "sao joao");
    EXPECT_EQ(janela.Rodape(), "999 de 9.990 equipamentos");
    janela.ClicaTitulo(0);
    EXPECT_EQ(janela.Coluna(0).front(), "10");
    janela.lista->Limpa(false);
    janela.Carrega(12);
    EXPECT_EQ(janela.Coluna(0), Textos{"9990"});
    EXPECT_EQ(janela.lista->ItemAtual(), -1);
    janela.lista->Limpa(false);
    EXPECT_EQ(janela.Rodape(), "");
    EXPECT_TRUE(janela.filtro->isEnabled()) << "its text can be taken away";
    QTest::keyClick(janela.filtro, Qt::Key_Escape);
    EXPECT_FALSE(janela.filtro->isEnabled());
}

TEST_F(ListasTeste, Columns_HiddenMovedAndMadeWider_AreSoInTheNextWindow)
{
    int largura = 0;
    {
        JanelaComLista janela(Lembra());
        janela.Carrega(3);
        janela.ClicaTitulo(0);
        janela.ClicaTitulo(0);
        janela.Alarga(0, 60);
        largura = janela.tabela->columnWidth(0);
        janela.Arrasta(janela.Titulo(2, 20), janela.Titulo(0, 5));
        EXPECT_EQ(janela.Titulos(), (Textos{"Município", "Código", "Descrição"}));
        Quando("menuDoTitulo", [](QWidget &menu) { QTest::keyClick(&menu, Qt::Key_1); });
        janela.MenuDoTitulo();
        EXPECT_EQ(janela.Titulos(), (Textos{"Código", "Descrição"}));
    }
    JanelaComLista outra(Lembra());
    outra.Carrega(3);
    EXPECT_EQ(outra.Titulos(), (Textos{"Código", "Descrição"}));
    EXPECT_EQ(outra.lista->ColunaOrdem(), 1);
    EXPECT_TRUE(outra.lista->OrdemDecrescente());
    EXPECT_EQ(outra.tabela->columnWidth(0), largura);
    outra.filtro->setFocus();
    QTest::keyClicks(outra.filtro, "municipio");
    EXPECT_EQ(outra.Rodape(), "0 de 3 equipamentos") << "a column that is not seen is not looked into";
}

TEST_F(ListasTeste, Columns_WithNonsenseRemembered_AreAsTheListHasThem)
{
    const Ref<ILembrancas> lembrancas = Lembra();
    lembrancas->Lembra("frmLista.fotografico/ztlLista/colunas", "NroInt\t500\nOutra\t-\t-\n\t\t\t\nCódigo\t-7");
    lembrancas->Lembra("frmLista.fotografico/ztlLista/ordem", "NroInt\t-");
    JanelaComLista janela(lembrancas);
    janela.Carrega(2);
    EXPECT_EQ(janela.Titulos(), (Textos{"Código", "Descrição", "Município"}));
    EXPECT_EQ(janela.lista->ColunaOrdem(), 0);
    EXPECT_TRUE(janela.tabela->horizontalHeader()->isSectionHidden(3));
}

TEST_F(ListasTeste, Columns_ByTheKeyboardAlone)
{
    JanelaComLista janela(Lembra());
    janela.Carrega(2);
    janela.tabela->setFocus();
    Quando("menuDaLista", [](QWidget &menu) {
        QAction *colunas = nullptr;
        for (QAction *acao : qobject_cast<QMenu *>(&menu)->actions()) {
            colunas = acao->menu() != nullptr && acao->menu()->objectName() == "menuDasColunas" ? acao : colunas;
        }
        ASSERT_NE(colunas, nullptr);
        const qsizetype marca = colunas->text().indexOf('&');
        ASSERT_GE(marca, 0);
        QTest::keyClick(&menu, colunas->text().at(marca + 1).toLower().toLatin1());
        QTest::keyClick(colunas->menu(), 'o');
    });
    Quando("Colunas", [](QWidget &colunas) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&colunas));
        auto *lista = colunas.findChild<QListWidget *>("colunas");
        EXPECT_EQ(lista->count(), 3);
        EXPECT_TRUE(lista->hasFocus());
        QTest::keyClick(lista, Qt::Key_Space); // "Código" goes
        QTest::keyClick(lista, Qt::Key_Down);
        QTest::keyClick(&colunas, 'b', Qt::AltModifier); // "Descrição" below "Município"
        QTest::keyClick(&colunas, 'c', Qt::AltModifier); // and back
        QTest::keyClick(&colunas, 'g', Qt::AltModifier);
        auto *largura = colunas.findChild<QSpinBox *>("largura");
        EXPECT_TRUE(largura->hasFocus());
        largura->selectAll();
        QTest::keyClicks(largura, "333");
        QTest::keyClick(&colunas, 'o', Qt::AltModifier);
    });
    janela.Tecla(Qt::Key_Menu);
    QCoreApplication::processEvents();
    EXPECT_EQ(janela.Titulos(), (Textos{"Descrição", "Município"}));
    EXPECT_EQ(janela.tabela->columnWidth(1), 333);
}

TEST_F(ListasTeste, LastColumn_CannotBeHidden)
{
    const Ref<ILembrancas> lembrancas = Lembra();
    lembrancas->Lembra("frmLista.fotografico/ztlLista/colunas", "Código\t0\nDescrição\t0\t-\nMunicípio\t0\t-");
    JanelaComLista janela(lembrancas);
    janela.Carrega(2);
    EXPECT_EQ(janela.Titulos(), Textos{"Código"});
    Quando("menuDoTitulo", [](QWidget &menu) {
        EXPECT_FALSE(qobject_cast<QMenu *>(&menu)->actions().front()->isEnabled());
        QTest::keyClick(&menu, Qt::Key_V); // as they were
    });
    janela.MenuDoTitulo();
    EXPECT_EQ(janela.Titulos(), (Textos{"Código", "Descrição", "Município"}));
    EXPECT_EQ(lembrancas->Lembranca("frmLista.fotografico/ztlLista/colunas"), "");
}

TEST_F(ListasTeste, CtrlC_TakesTheCurrentRowAsItIsSeen)
{
    JanelaComLista janela;
    TabelaTexto dados(4);
    for (const char *texto : {"uma\tlinha", "outra \"linha\"\r\nem duas"}) {
        const std::int32_t numero = dados.AdicionaLinha();
        dados.Celula(1, numero) = "0" + std::to_string(numero);
        dados.Celula(2, numero) = texto;
        dados.Celula(3, numero) = "São João";
    }
    janela.lista->CarregaItens(dados);
    janela.tabela->setFocus();
    janela.Tecla(Qt::Key_End);
    janela.Tecla(Qt::Key_C, Qt::ControlModifier);
    const QMimeData *levado = QApplication::clipboard()->mimeData();
    EXPECT_EQ(S(levado->text()),
              "Código\tDescrição\tMunicípio\r\n02\t\"outra \"\"linha\"\"\r\nem duas\"\tSão João\r\n");
    EXPECT_TRUE(levado->html().contains(">02</td>"));
    EXPECT_TRUE(levado->html().contains("outra \"linha\"<br>em duas"));
    janela.filtro->setFocus();
    QTest::keyClicks(janela.filtro, "uma");
    QApplication::clipboard()->setText("antes");
    janela.tabela->selectionModel()->clear();
    janela.Tecla(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(S(QApplication::clipboard()->text()), "antes") << "no row is current";
}

// The text of a page of a document.
std::string Pagina(QPdfDocument &documento, int pagina)
{
    return S(documento.getAllText(pagina).text());
}

TEST_F(ListasTeste, CtrlP_PrintsTheRowsAsTheyAreSeen)
{
    const QString caminho = pasta.filePath("lista.pdf");
    JanelaComLista janela;
    janela.lista->DefineTitulo("Autoridade Estadual de Trânsito [Inativos]");
    janela.Carrega(120);
    janela.ClicaTitulo(0);
    janela.tabela->setFocus();
    const auto imprime = [&](const std::function<void(QPrinter &)> &prepara) {
        Quando("ImprimirLista", [&, caminho](QWidget &janelaDeImprimir) {
            auto &dialogo = dynamic_cast<QPrintDialog &>(janelaDeImprimir);
            dialogo.printer()->setOutputFormat(QPrinter::PdfFormat);
            dialogo.printer()->setOutputFileName(caminho);
            prepara(*dialogo.printer());
            dialogo.QDialog::done(QDialog::Accepted);
        });
        janela.Tecla(Qt::Key_P, Qt::ControlModifier);
    };
    imprime([](QPrinter &) {});
    QPdfDocument documento;
    ASSERT_EQ(documento.load(caminho), QPdfDocument::Error::None);
    ASSERT_GT(documento.pageCount(), 2);
    const int paginas = documento.pageCount();
    std::string tudo;
    for (int pagina = 0; pagina < paginas; ++pagina) {
        const std::string texto = Pagina(documento, pagina);
        EXPECT_NE(texto.find("Equipamentos"), std::string::npos);
        EXPECT_NE(texto.find("Autoridade Estadual de Trânsito [Inativos]"), std::string::npos);
        EXPECT_NE(texto.find("Descrição"), std::string::npos);
        EXPECT_NE(texto.find("Impresso em 20/11/2026 10:00 por Ana Souza"), std::string::npos);
        EXPECT_EQ(texto.find("NroInt"), std::string::npos);
        EXPECT_NE(texto.find("Página " + std::to_string(pagina + 1) + " de " + std::to_string(paginas)),
                  std::string::npos);
        tudo += texto;
    }
    for (int codigo = 9880; codigo <= 9999; ++codigo) {
        EXPECT_NE(tudo.find(std::to_string(codigo)), std::string::npos) << codigo;
    }
    EXPECT_LT(tudo.find("9880"), tudo.find("9999"));
    imprime([](QPrinter &impressora) {
        impressora.setPrintRange(QPrinter::PageRange);
        impressora.setFromTo(2, 2);
    });
    QPdfDocument uma;
    ASSERT_EQ(uma.load(caminho), QPdfDocument::Error::None);
    ASSERT_EQ(uma.pageCount(), 1);
    EXPECT_NE(Pagina(uma, 0).find("Página 2 de " + std::to_string(paginas)), std::string::npos);
}

// The command of the list's menu, once the menu is there.
void EscolheExportar()
{
    Quando("menuDaLista", [](QWidget &menu) {
        const auto acoes = qobject_cast<QMenu *>(&menu)->actions();
        const auto exportar =
            std::ranges::find_if(acoes, [](const QAction *acao) { return acao->objectName() == "exportarLista"; });
        ASSERT_NE(exportar, acoes.end());
        const qsizetype marca = (*exportar)->text().indexOf('&');
        ASSERT_GE(marca, 0);
        QTest::keyClick(&menu, (*exportar)->text().at(marca + 1).toLower().toLatin1());
    });
}

// Reads and closes the box in front, once there is one.
void QuandoAvisa(QString &dito)
{
    QTimer::singleShot(0, qApp, [&dito] {
        if (auto *caixa = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            dito = caixa->text();
            QTest::keyClick(caixa, Qt::Key_Return);
        } else {
            QuandoAvisa(dito);
        }
    });
}

TEST_F(ListasTeste, ExportarLista_WritesTheRowsAsTheyAreSeen)
{
    JanelaComLista janela;
    janela.Carrega(3);
    janela.tabela->setFocus();
    EscolheExportar();
    Quando("EscolhaDeArquivo", [&](QWidget &escolha) {
        auto &dialogo = dynamic_cast<QFileDialog &>(escolha);
        EXPECT_EQ(dialogo.findChild<QLineEdit *>("fileNameEdit")->text(), "Equipamentos");
        EXPECT_EQ(dialogo.defaultSuffix(), "xlsx");
        auto *tipos = dialogo.findChild<QComboBox *>("fileTypeCombo");
        tipos->setFocus();
        QTest::keyClick(tipos, Qt::Key_Down); // from one kind to the next
        EXPECT_EQ(dialogo.defaultSuffix(), "ods");
        QTest::keyClick(tipos, Qt::Key_Down);
        dialogo.setDirectory(pasta.path());
        auto *nome = dialogo.findChild<QLineEdit *>("fileNameEdit");
        nome->setFocus();
        nome->selectAll();
        QTest::keyClicks(nome, "minha");
        QTest::keyClick(nome, Qt::Key_Return);
    });
    janela.Tecla(Qt::Key_Menu);
    QCoreApplication::processEvents();
    QFile gravado(pasta.filePath("minha.csv"));
    ASSERT_TRUE(gravado.open(QIODevice::ReadOnly));
    EXPECT_EQ(gravado.readAll().toStdString(), "\xEF\xBB\xBF"
                                               "Código;Descrição;Município\r\n"
                                               "9999;Rua 9999;Município 3\r\n"
                                               "9998;Rua 9998;Município 2\r\n"
                                               "9997;Rua 9997;Município 1\r\n");
}

TEST_F(ListasTeste, ExportarLista_ToANameOfNoFormat_SaysWhichThereAre)
{
    JanelaComLista janela;
    janela.Carrega(1);
    janela.tabela->setFocus();
    EscolheExportar();
    Quando("EscolhaDeArquivo", [&](QWidget &escolha) {
        auto &dialogo = dynamic_cast<QFileDialog &>(escolha);
        dialogo.setDirectory(pasta.path());
        auto *nome = dialogo.findChild<QLineEdit *>("fileNameEdit");
        nome->setFocus();
        nome->selectAll();
        QTest::keyClicks(nome, "minha.txt");
        QTest::keyClick(nome, Qt::Key_Return);
    });
    QString dito;
    QuandoAvisa(dito);
    janela.Tecla(Qt::Key_Menu);
    QCoreApplication::processEvents();
    EXPECT_EQ(S(dito), "O fim do nome do arquivo diz em que formato ele é gravado: .xlsx, .ods ou .csv.");
    EXPECT_FALSE(QFile::exists(pasta.filePath("minha.txt")));
}

// The desk, with three equipment.
class ListasNaMesaTeste : public MesaTeste {
  protected:
    ListasNaMesaTeste()
    {
        const Ref<SessaoServico> ana = registro.Sessao("ana");
        Inclui(ana, EquipamentoDe("B2"));
        Inclui(ana, EquipamentoDe("A1"));
        Inclui(ana, Com(EquipamentoDe("C3"), &EquiptoED::Descricao, "Zona norte"));
        mesa.show();
    }
    void Trabalha(const std::function<void(Teclado &)> &jornada)
    {
        Entra();
        EXPECT_EQ(Teclado::Percorre(jornada), "");
    }
    static const QTableView *Linhas() { return qobject_cast<QTableView *>(Teclado::Acha("ztlLista/linhas")); }
};

TEST_F(ListasNaMesaTeste, List_SortedAndFiltered_StaysSoAfterASearchAndAnEdit)
{
    Trabalha([](Teclado &t) {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('L').EsperaLinhas("ztlLista", 3).TabAte("ztlLista/linhas");
        t.EsperaTexto("ztlLista/rodape", "3 equipamentos");
        t.Tecla(Qt::Key_Menu).EsperaMenu().Escreve("o1").EsperaLinha("ztlLista", 3, "C3");
        t.Tecla(Qt::Key_Home).EsperaLinha("ztlLista", 1, "A1");
        t.Alt('L').EsperaLinha("ztlLista", 3, "C3");
        t.TabAte("ztlLista/ztlLista_filtro").Escreve("ipiranga").EsperaLinhas("ztlLista", 2);
        t.EsperaTexto("ztlLista/rodape", "2 de 3 equipamentos");
        t.Tecla(Qt::Key_Return).EsperaFoco("linhas").EsperaLinha("ztlLista", 1, "A1");
        t.Alt('D').EsperaJanela("frmEquipDetalhes").EsperaTexto("txtDescricao", "Av. Ipiranga, sentido centro");
        t.TabAte("txtDescricao").Ctrl(Qt::Key_A).Escreve("Praça");
        t.Alt('O').EsperaCaixa("Confirma a alteração").Alt('S').EsperaJanela("frmLista").EsperaLinhas("ztlLista", 1);
        t.TabAte("ztlLista/ztlLista_filtro").Tecla(Qt::Key_Escape).EsperaLinhas("ztlLista", 3);
        t.Espera("still sorted", [] {
            return Linhas() != nullptr && Linhas()->model()->index(0, 0).data().toString() == "A1" &&
                   Linhas()->model()->index(0, 1).data().toString() == "Praça";
        });
        t.Ctrl(Qt::Key_F4).EsperaJanela("Mesa");
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('L').EsperaLinhas("ztlLista", 3);
        t.Espera("sorted in the next window", [] {
            return Linhas() != nullptr && Linhas()->model()->index(0, 0).data().toString() == "A1" &&
                   Linhas()->horizontalHeader()->sortIndicatorSection() == 0;
        });
    });
}

TEST_F(ListasNaMesaTeste, PageOfTheAdministration_IsFilteredAndCopiedAsTheListsAre)
{
    registro.Cadastra("ana");
    registro.Cadastra("bruno");
    mesa.Entra(registro.Sessao("marta"));
    EXPECT_EQ(Teclado::Percorre([](Teclado &t) {
                  const auto vistas = [](int quantas) {
                      return [quantas] {
                          const auto *linhas = qobject_cast<QTableWidget *>(Teclado::Acha("usuarios/linhas"));
                          int vistas = 0;
                          for (int linha = 0; linhas != nullptr && linha < linhas->rowCount(); ++linha) {
                              vistas += linhas->isRowHidden(linha) ? 0 : 1;
                          }
                          return vistas == quantas;
                      };
                  };
                  t.Alt('M').EscolheNoMenu("Usuários").EsperaJanela("Administracao").EsperaLinhas("usuarios", 3);
                  t.TabAte("usuarios/usuarios_filtro").Escreve("BRUN").Espera("one is seen", vistas(1));
                  t.Tecla(Qt::Key_Return).EsperaFoco("usuarios/linhas").Tecla(Qt::Key_Home).Ctrl(Qt::Key_C);
                  t.Espera("he is on the clipboard", [] {
                      const QStringList linhas = QApplication::clipboard()->text().split("\r\n");
                      return linhas.size() == 3 && linhas[0].startsWith("Usuário\t") && linhas[1].startsWith("bruno\t");
                  });
                  t.TabAte("usuarios/usuarios_filtro").Tecla(Qt::Key_Escape).Espera("all are seen", vistas(3));
                  t.Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
              }),
              "");
}

} // namespace
