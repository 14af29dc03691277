#include "controls/ztCombo.h"
#include "controls/ztData.h"
#include "desk/tour/Telas.h"
#include "desk/windows/Calendario.h"
#include "desk/windows/Combo.h"
#include "desk/windows/PainelDaFicha.h"
#include "equipment/frmEquipDetalhes.h"
#include "limits/frmLimitesDifDetalhes.h"
#include "sensors/frmEquipAfericoes.h"
#include "sensors/frmEquipSensores.h"
#include "tests/desk/FormCarregado.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Teclado.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QCalendarWidget>
#include <QClipboard>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <memory>

using namespace mesa;

namespace {

// What is said at a field now.
QString DicaEm(const QWidget &janela)
{
    const auto *dica = janela.findChild<QLabel *>("dica");
    return dica != nullptr && dica->isVisible() ? dica->text() : QString();
}

// The controls of the forms under a person's mouse and keyboard.
class ControlesTeste : public MesaTeste {
  protected:
    ControlesTeste()
    {
        const Ref<SessaoServico> ana = registro.Sessao("ana");
        Inclui(ana, EquipamentoDe("A1"));
        registro.IncluiRua("Rua Bento Gonçalves", "Centro", "90010020");
        Entra();
    }
    ~ControlesTeste() override
    {
        for (auto &[janela, form] : m_Abertas) {
            janela.reset();
            mesa.Hospedeiro()->Plataforma()->Descarrega(form);
        }
    }

    JanelaForm &Mostra(const Ref<IForm> &form)
    {
        PedidosDaJanela pedidos;
        pedidos.NaBorda = [](const std::function<void()> &acao) { acao(); };
        pedidos.Fecha = pedidos.Ajuda = pedidos.Redimensionou = [] {};
        auto janela = std::make_unique<JanelaForm>(form,
                                                   AoRedorDoForm{pedidos,
                                                                 [] { return std::vector<ClienteOferecido>{}; },
                                                                 mesa.Hospedeiro()->Logradouros,
                                                                 Novo<MemoriaDeEnderecos>(),
                                                                 nullptr,
                                                                 {},
                                                                 "",
                                                                 "",
                                                                 Agora()},
                                                   &mesa);
        form->DefineVisible(true);
        janela->setWindowFlags(Qt::Dialog);
        janela->show();
        janela->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(janela.get()));
        m_Abertas.emplace_back(std::move(janela), form);
        return *m_Abertas.back().first;
    }
    template <class C> static Ref<C> Controle(const JanelaForm &janela, const std::string &nome)
    {
        for (const Ref<IControle> &controle : janela.Form()->Controles()) {
            if (controle->Nome() == nome) {
                return ComoTipo<C>(controle);
            }
        }
        throw Falha(NumeroFalha::ErroInterno);
    }
    static QLineEdit &Linha(const QWidget &janela, const char *nome) { return *janela.findChild<QLineEdit *>(nome); }
    // With the keyboard in it, which the page that it is on has been opened for.
    static QLineEdit &Vai(QLineEdit &linha)
    {
        linha.setFocus();
        EXPECT_TRUE(linha.hasFocus());
        return linha;
    }
    static void Percorre(const std::function<void(Teclado &)> &jornada) { EXPECT_EQ(Teclado::Percorre(jornada), ""); }
    static void Roda(QWidget &onde, int passos = -1)
    {
        const QPointF meio = onde.rect().center();
        QWheelEvent roda(meio, onde.mapToGlobal(meio), {}, {0, 120 * passos}, Qt::NoButton, Qt::NoModifier,
                         Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&roda); // of the window system, or it would go no further
        qApp->notify(&onde, &roda);
    }
    static void AbreLista(Teclado &t)
    {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('L').EsperaLinhas("ztlLista", 1);
    }
    static void AbreSensorNovo(Teclado &t)
    {
        AbreLista(t);
        t.TabAte("ztlLista/linhas").Tecla(Qt::Key_Home);
        t.Alt('D').EsperaJanela("frmEquipDetalhes");
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 1);
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 2);
        t.Alt('N').EsperaJanela("frmEquipSensores");
    }
    static Teclado &EsperaDica(Teclado &t, const QString &texto)
    {
        return t.Espera("it says \"" + texto + "\"", [=] { return DicaEm(*Teclado::Frente()->window()) == texto; });
    }

  private:
    std::vector<std::pair<std::unique_ptr<JanelaForm>, Ref<IForm>>> m_Abertas;
};

TEST_F(ControlesTeste, Combo_AWordTyped_ChoosesTheItemOfThatWord)
{
    Percorre([](Teclado &t) {
        AbreLista(t);
        t.TabAte("cboTipoEquipto").Escreve("pardal").EsperaTexto("cboTipoEquipto", "Pardal");
        EsperaDica(t, "Procurando: pardal");
        t.Descansa().Escreve("radar fotografico").EsperaTexto("cboTipoEquipto", "Radar Fotográfico");
        t.Escreve("x");
        EsperaDica(t, "Nenhum item começa com \"radar fotograficox\".");
        t.EsperaTexto("cboTipoEquipto", "Radar Fotográfico");
        t.Tecla(Qt::Key_Backspace).Tecla(Qt::Key_Tab);
        EsperaDica(t, "");
        t.Alt('N').EsperaJanela("frmEquipDetalhes");
        t.TabAte("cboTipoMedidor").Escreve("fixo").EsperaTexto("cboTipoMedidor", "Fixo");
        t.TabAte("cboTipoEquip").Escreve("PARDAL").EsperaTexto("cboTipoEquip", "Pardal");
        t.Alt('C').EsperaCaixa("Deseja descartá-las?");
        t.Alt('S').EsperaJanela("frmLista");
    });
}

TEST_F(ControlesTeste, Combo_WithItsListOpen_FindsTheWordAndChoosesItWithEnterAlone)
{
    Percorre([](Teclado &t) {
        AbreSensorNovo(t);
        t.TabAte("ztEndereco1/municipio").Tecla(Qt::Key_Home);
        const QString antes = NaTela([] { return TextoDe(Teclado::Acha("ztEndereco1/municipio")); });
        t.Tecla(Qt::Key_F4).Espera("the list is open", [] { return QApplication::activePopupWidget() != nullptr; });
        t.Escreve("porto alegre");
        t.Espera("nothing is chosen on the way",
                 [=] { return TextoDe(Teclado::Acha("ztEndereco1/municipio")) == antes; });
        t.Tecla(Qt::Key_Return).EsperaTexto("ztEndereco1/municipio", "Porto Alegre");
        t.Tecla(Qt::Key_Escape);
    });
}

TEST_F(ControlesTeste, Combo_WithItsListOpen_ClosesItWithEscAndChoosesNothing)
{
    QWidget janela;
    auto *combo = new Combo(&janela);
    combo->addItems({"Lombada", "Pardal Móvel", "Pardal"});
    janela.show();
    janela.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&janela));
    combo->setFocus();
    for (const auto tecla : {Qt::Key_Escape, Qt::Key_F4}) {
        QTest::keyClick(combo, Qt::Key_Space);
        ASSERT_TRUE(combo->view()->isVisible());
        QTest::keyClicks(combo->view(), "pardal");
        EXPECT_EQ(combo->view()->currentIndex().row(), 2);
        EXPECT_EQ(DicaEm(janela), "Procurando: pardal");
        QTest::keyClicks(combo->view(), "q");
        EXPECT_EQ(combo->view()->currentIndex().row(), 2);
        QTest::keyClick(combo->view(), tecla);
        EXPECT_FALSE(combo->view()->isVisible());
        EXPECT_EQ(combo->currentText(), "Lombada");
        EXPECT_EQ(DicaEm(janela), "");
    }
}

TEST_F(ControlesTeste, Municipality_TypedWithItsBlankAndItsCapitals_IsThatOne)
{
    Percorre([](Teclado &t) {
        AbreSensorNovo(t);
        t.TabAte("ztEndereco1/municipio").Escreve("Porto").Tecla(Qt::Key_Space);
        t.Tecla(Qt::Key_Shift, Qt::ShiftModifier); // on its way to the capital
        t.Escreve("Alegre").EsperaTexto("ztEndereco1/municipio", "Porto Alegre");
        t.Espera("no list is open", [] { return QApplication::activePopupWidget() == nullptr; });
        t.Escreve("qq");
        EsperaDica(t, "Nenhum item começa com \"Porto Alegreq\".");
        t.EsperaTexto("ztEndereco1/municipio", "Porto Alegre");
        t.Descansa().Tecla(Qt::Key_Space); // begins no word
        t.Espera("the list is open", [] { return QApplication::activePopupWidget() != nullptr; });
        const auto fechada = [] { return QApplication::activePopupWidget() == nullptr; };
        t.Tecla(Qt::Key_Down).Tecla(Qt::Key_Escape).Espera("it is closed", fechada).EsperaJanela("frmEquipSensores");
        t.Tecla(Qt::Key_F4).Tecla(Qt::Key_Down).Tecla(Qt::Key_F4).Espera("it is closed", fechada);
        t.EsperaTexto("ztEndereco1/municipio", "Porto Alegre");
        t.Tecla(Qt::Key_F4).Tecla(Qt::Key_Down).Tecla(Qt::Key_Return).Espera("it is closed", fechada);
        t.Espera("the next one is chosen",
                 [] { return TextoDe(Teclado::Acha("ztEndereco1/municipio")) != "Porto Alegre"; });
        t.EsperaJanela("frmEquipSensores"); // and the keys did nothing else
    });
}

TEST_F(ControlesTeste, Street_ThatThereIsNot_IsToldAndWhatWasTypedStays)
{
    Percorre([](Teclado &t) {
        AbreSensorNovo(t);
        t.TabAte("ztEndereco1/municipio").Escreve("porto alegre");
        t.TabAte("ztEndereco1/via").Escreve("rua que falta");
        EsperaDica(t, "Nenhum logradouro encontrado em Porto Alegre.");
        t.TabAte("ztEndereco1/numero").Escreve("12x");
        EsperaDica(t, "Só algarismos.");
        t.EsperaTexto("ztEndereco1/via", "rua que falta").EsperaTexto("ztEndereco1/numero", "12");
        t.EsperaTexto("ztEndereco1/atual", "Nenhum logradouro encontrado em Porto Alegre.");
        t.Tecla(Qt::Key_Tab, Qt::ShiftModifier).Ctrl(Qt::Key_A).Escreve("bento");
        EsperaDica(t, "");
        t.EsperaTexto("ztEndereco1/atual", "O endereço digitado ainda não foi usado.");
    });
}

TEST_F(ControlesTeste, Combo_ALetterOfSeveralKeys_CountsAsOne)
{
    QWidget janela;
    auto *combo = new Combo(&janela);
    combo->addItems({"Estático", "Móvel", "Único"});
    combo->setCurrentIndex(-1);
    janela.show();
    janela.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&janela));
    combo->setFocus();
    QInputMethodEvent preedicao("´", {});
    QApplication::sendEvent(combo, &preedicao);
    EXPECT_EQ(combo->currentText(), "");
    QInputMethodEvent letra;
    letra.setCommitString("Ú");
    QApplication::sendEvent(combo, &letra);
    EXPECT_EQ(combo->currentText(), "Único");
}

TEST_F(ControlesTeste, Combo_WithItsListOpen_TakesALetterOfSeveralKeysAsTheOthers)
{
    QWidget janela;
    auto *combo = new Combo(&janela);
    combo->addItems({"Santos", "Sertão", "São Paulo", "Ábaco"});
    janela.show();
    janela.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&janela));
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_F4);
    ASSERT_TRUE(combo->view()->isVisible());
    QTest::keyClicks(combo->view(), "s");
    QInputMethodEvent letra;
    letra.setCommitString("ã");
    QApplication::sendEvent(combo->view(), &letra);
    QTest::keyClicks(combo->view(), "o");
    EXPECT_EQ(combo->view()->currentIndex().row(), 2);
    EXPECT_EQ(DicaEm(janela), "Procurando: são");
    QTest::keyClick(combo->view(), Qt::Key_Return);
    EXPECT_EQ(combo->currentText(), "São Paulo");
}

TEST_F(ControlesTeste, Combo_WhoseChoiceLeadsToAField_KeepsTheRestOfItsWordOutOfTheField)
{
    Percorre([](Teclado &t) {
        AbreLista(t);
        t.TabAte("cboCriterio").Escreve("codigo").EsperaTexto("cboCriterio", "Código").EsperaFoco("txtCodEquip");
        t.EsperaTexto("txtCodEquip", "").Escreve("o1").EsperaTexto("txtCodEquip", "o1");
        t.Tecla(Qt::Key_Tab, Qt::ShiftModifier).EsperaFoco("cboCriterio").Descansa();
        t.Escreve("Sub").EsperaTexto("cboCriterio", "Subcódigo").EsperaFoco("txtCodEquip").Descansa();
        t.Escreve("c2").EsperaTexto("txtCodEquip", "o1c2"); // behind a pause it is another word
        t.Tecla(Qt::Key_Tab, Qt::ShiftModifier).Escreve("c").EsperaTexto("cboCriterio", "Código");
        t.EsperaFoco("txtCodEquip").Tecla(Qt::Key_End).Escreve("o").EsperaTexto("txtCodEquip", "o1c2o");
        t.Ctrl(Qt::Key_A).Escreve("A1\r").EsperaLinha("ztlLista", 1, "A1");
    });
}

TEST_F(ControlesTeste, Combo_WhoseChoiceLeadsToAField_TakesTheAccentOfItsWordToo)
{
    Percorre([](Teclado &t) {
        AbreLista(t);
        t.TabAte("cboCriterio").Escreve("c").EsperaFoco("txtCodEquip");
        NaTela([] {
            for (const QString &letra : {QString("ó"), QString("ç")}) {
                QInputMethodEvent composta;
                composta.setCommitString(letra);
                QApplication::sendEvent(QApplication::focusWidget(), &composta);
                EXPECT_EQ(TextoDe(QApplication::focusWidget()), letra == "ó" ? "" : letra); // the word has ended
            }
        });
        t.Escreve("d").EsperaTexto("txtCodEquip", "çd");
    });
}

TEST_F(ControlesTeste, LargerText_MakesRoomInTheRowsOfAListAndInTheNumberOfAnAddress)
{
    const auto com = [&](JanelaForm &janela, double vezes) {
        QFont letra = QApplication::font();
        letra.setPointSizeF(letra.pointSizeF() * vezes);
        janela.setFont(letra);
        for (const auto *tabela : janela.findChildren<QTableView *>("linhas")) {
            EXPECT_GE(tabela->verticalHeader()->defaultSectionSize(), tabela->fontMetrics().height());
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        const auto *numero = janela.findChild<QLineEdit *>("numero");
        EXPECT_GE(numero->width(), numero->fontMetrics().horizontalAdvance("888888") + 4);
    };
    JanelaForm &janela = Mostra(Carrega<frmEquipSensores>());
    EXPECT_FALSE(janela.findChildren<QTableView *>("linhas").isEmpty());
    for (const double vezes : {1.0, 2.0, 3.0}) {
        com(janela, vezes);
    }
}

TEST_F(ControlesTeste, Wheel_OverCombosAndStripsOfTabs_ChangesNothing)
{
    EXPECT_TRUE(mesa.Modulo()->ClickMenu("mnuModVOREquiptos"));
    auto *lista = mesa.findChild<JanelaForm *>("frmLista");
    for (const char *nome : {"cboTipoAgente", "cboTipoEquipto", "cboCriterio", "cliente"}) {
        auto *combo = lista->findChild<QComboBox *>(nome);
        ASSERT_NE(combo, nullptr) << nome;
        const int antes = combo->currentIndex();
        for (const bool comTeclado : {false, true}) {
            if (comTeclado) {
                combo->setFocus();
            }
            Roda(*combo);
            EXPECT_EQ(combo->currentIndex(), antes) << nome;
            Roda(*combo, 1);
            EXPECT_EQ(combo->currentIndex(), antes) << nome;
        }
    }
    auto *abas = Mostra(Carrega<frmEquipDetalhes>()).findChild<QTabBar *>();
    Roda(*abas);
    EXPECT_EQ(abas->currentIndex(), 0);
}

TEST_F(ControlesTeste, Wheel_OverWhatItDoesNotChange_ScrollsThePageBelow)
{
    QScrollArea pagina;
    auto *alto = new QWidget;
    alto->setMinimumSize(200, 3000);
    auto *combo = new Combo(alto);
    combo->addItems({"um", "dois", "três"});
    auto *dia = new CampoDeDia(QDate(2026, 2, 1), alto);
    dia->move(0, 100);
    auto *numero = new QSpinBox(alto);
    numero->move(0, 200);
    pagina.setWidget(alto);
    pagina.resize(300, 300);
    pagina.show();
    combo->DefineSomenteLeitura(true);
    for (const bool fixo : {true, false}) {
        combo->DefineSomenteLeitura(fixo);
        for (QWidget *widget :
             {static_cast<QWidget *>(combo), static_cast<QWidget *>(dia), static_cast<QWidget *>(numero)}) {
            pagina.verticalScrollBar()->setValue(0);
            Roda(*widget);
            EXPECT_GT(pagina.verticalScrollBar()->value(), 0) << widget->metaObject()->className();
        }
    }
    EXPECT_EQ(combo->currentText(), "um");
    EXPECT_EQ(dia->date(), QDate(2026, 2, 1));
    EXPECT_EQ(numero->value(), 0);
    combo->showPopup();
    EXPECT_TRUE(combo->view()->isVisible());
}

TEST_F(ControlesTeste, Date_TypedWhereverTheMousePutTheCursor_WithSeparatorsByHand)
{
    JanelaForm &janela = Mostra(Carrega<frmEquipAfericoes>());
    QLineEdit &data = Linha(janela, "txtDtVerifINMETRO");
    for (const int x : {2, data.width() / 4, data.width() / 2, data.width() - data.textMargins().right() - 8}) {
        Vai(Linha(janela, "txtNroINMETRO"));
        data.clear();
        Controle<ztData>(janela, "txtDtVerifINMETRO")->DefineText("");
        QTest::mouseClick(&data, Qt::LeftButton, {}, {x, data.height() / 2});
        QTest::keyClicks(&data, "1/2/26");
        EXPECT_EQ(data.text(), "01/02/26  ") << x;
        QTest::keyClick(&data, Qt::Key_Tab);
        EXPECT_EQ(data.text(), "01/02/2026") << x;
    }
    Vai(data).selectAll();
    QTest::keyClicks(&data, "3");
    EXPECT_EQ(data.text(), "3 /  /    ");
    EXPECT_EQ(data.cursorPosition(), 1);
    QTest::keyClicks(&data, "0032024");
    data.setCursorPosition(0);
    QTest::keyClick(&data, Qt::Key_1);
    EXPECT_EQ(data.text(), "10/03/2024");
    QTest::keyClick(&data, Qt::Key_Backspace);
    EXPECT_EQ(data.text(), " 0/03/2024");
    for (const char *colado : {"01/02/2026", "1-2-2026", "2026-02-01"}) {
        QGuiApplication::clipboard()->setText(colado);
        data.setCursorPosition(10);
        QTest::keyClick(&data, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(data.text(), "01/02/2026") << colado;
        data.selectAll();
        QTest::keyClick(&data, Qt::Key_Delete);
        EXPECT_EQ(data.text(), "  /  /    ");
    }
}

TEST_F(ControlesTeste, Hour_TypedWhereverTheCursorIs_WithItsColonByHand)
{
    JanelaForm &janela = Mostra(Carrega<frmLimitesDifDetalhes>());
    QLineEdit &hora = Linha(janela, "ztmHInicial");
    Vai(hora).setCursorPosition(5);
    QTest::keyClicks(&hora, "8:30");
    EXPECT_EQ(hora.text(), "08:30");
    QTest::keyClicks(&hora, "1");
    EXPECT_EQ(DicaEm(janela), "O campo já está completo.");
}

// The calendar that is open; null for none.
QWidget *CalendarioAberto()
{
    QWidget *aberto = QApplication::activePopupWidget();
    return aberto != nullptr && aberto->objectName() == "calendario" ? aberto : nullptr;
}

TEST_F(ControlesTeste, Calendar_OfADate_OpensByKeyAndByMouseAndTheDayIsTypedInTheField)
{
    JanelaForm &janela = Mostra(Carrega<frmEquipAfericoes>());
    QLineEdit &data = Linha(janela, "txtDtVerifINMETRO");
    const auto controle = Controle<ztData>(janela, "txtDtVerifINMETRO");
    controle->DefineText("10/01/2026");
    Vai(data);
    for (const bool comF4 : {true, false}) {
        QTest::keyClick(&data, comF4 ? Qt::Key_F4 : Qt::Key_Down, comF4 ? Qt::NoModifier : Qt::AltModifier);
        ASSERT_NE(CalendarioAberto(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        EXPECT_EQ(CalendarioAberto(), nullptr);
        EXPECT_EQ(data.text(), "10/01/2026");
        EXPECT_TRUE(data.hasFocus());
    }
    QTest::keyClick(&data, Qt::Key_F4);
    auto *meses = CalendarioAberto()->findChild<QCalendarWidget *>();
    EXPECT_EQ(meses->selectedDate(), QDate(2026, 1, 10));
    EXPECT_EQ(meses->findChild<QToolButton *>("qt_calendar_monthbutton")->text(), "janeiro");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(CalendarioAberto(), nullptr);
    EXPECT_EQ(controle->Text(), "11/01/2026");
    EXPECT_EQ(data.text(), "11/01/2026");
    EXPECT_TRUE(data.hasFocus());
    auto *botao = data.findChild<QToolButton *>("abreCalendario");
    EXPECT_FALSE(botao->accessibleName().isEmpty());
    QTest::mouseClick(botao, Qt::LeftButton);
    EXPECT_NE(CalendarioAberto(), nullptr);
    CalendarioAberto()->close();
}

TEST_F(ControlesTeste, Calendar_OfAnEmptyDate_BeginsWithTheDayOfTheRegistry)
{
    registro.Relogio = DataDe(3, 2, 2031, 9, 0, 0);
    JanelaForm &janela = Mostra(Carrega<frmEquipAfericoes>());
    Controle<ztData>(janela, "txtDtVerifINMETRO")->DefineText("");
    QTest::keyClick(&Vai(Linha(janela, "txtDtVerifINMETRO")), Qt::Key_F4);
    ASSERT_NE(CalendarioAberto(), nullptr);
    const auto *meses = CalendarioAberto()->findChild<QCalendarWidget *>();
    EXPECT_EQ(meses->selectedDate(), QDate(2031, 2, 3));
    EXPECT_EQ(meses->yearShown(), 2031);
    EXPECT_EQ(meses->monthShown(), 2);
    CalendarioAberto()->close();
}

TEST_F(ControlesTeste, Calendar_OfADateThatIsLocked_IsNotOffered)
{
    JanelaForm &janela = Mostra(Carrega<frmEquipAfericoes>());
    QLineEdit &data = Linha(janela, "txtDtVerifINMETRO");
    const auto controle = Controle<ztData>(janela, "txtDtVerifINMETRO");
    auto *botao = data.findChild<QToolButton *>("abreCalendario");
    EXPECT_TRUE(botao->isVisible());
    controle->DefineReadOnly(true);
    EXPECT_FALSE(botao->isVisible());
    QTest::keyClick(&Vai(data), Qt::Key_F4);
    EXPECT_EQ(CalendarioAberto(), nullptr);
    controle->DefineReadOnly(false);
    controle->DefineEnabled(false);
    EXPECT_FALSE(botao->isEnabled());
}

TEST_F(ControlesTeste, Calendar_OfTheInfractionDate_OpensByKey)
{
    Percorre([](Teclado &t) {
        t.Ctrl(Qt::Key_3).EsperaJanela("ConsultaAutuacao");
        t.TabAte("data").Tecla(Qt::Key_F4);
        t.Espera("the calendar is open", [] { return CalendarioAberto() != nullptr; });
        t.Tecla(Qt::Key_Home).Tecla(Qt::Key_Return); // the first day of the month
        t.Espera("the first of the month", [] {
            auto *data = qobject_cast<QDateEdit *>(Teclado::Acha("data"));
            return CalendarioAberto() == nullptr && data != nullptr && data->date().day() == 1 && data->hasFocus();
        });
    });
}

TEST_F(ControlesTeste, RefusedCharacters_AreToldAtTheFieldAsAnAlert)
{
    Percorre([](Teclado &t) {
        AbreLista(t);
        t.Alt('N').EsperaJanela("frmEquipDetalhes");
        t.TabAte("txtCodEquip").Escreve("aç").EsperaTexto("txtCodEquip", "A");
        EsperaDica(t, "Caractere não aceito: ç");
        t.Espera("it is an alert", [] {
            const auto *dica = Teclado::Frente()->window()->findChild<QLabel *>("dica");
            const auto *acessivel = QAccessible::queryAccessibleInterface(const_cast<QLabel *>(dica));
            return acessivel->role() == QAccessible::AlertMessage && acessivel->text(QAccessible::Name) == dica->text();
        });
        t.Escreve("b").EsperaTexto("txtCodEquip", "AB");
        EsperaDica(t, "");
        NaTela([] { QGuiApplication::clipboard()->setText(QString(100000, 'x')); });
        t.Ctrl(Qt::Key_V).EsperaTexto("txtCodEquip", "AB" + QString(18, 'X'));
        EsperaDica(t, "Até 20 caracteres.");
        t.Tecla(Qt::Key_Tab);
        EsperaDica(t, "");
    });
}

TEST_F(ControlesTeste, Combo_ThatIsReadOnly_LooksLikeAReadOnlyTextAndStopsTab)
{
    JanelaForm &janela = Mostra(Carrega<frmEquipAfericoes>());
    auto *combo = janela.findChild<Combo *>("cboTipo");
    const auto controle = Controle<ztCombo>(janela, "cboTipo");
    controle->Limpa();
    controle->AdicionaItem("Aferição do INMETRO|1");
    controle->AdicionaItem("Declaração de Conformidade|2");
    controle->DefineValor("1");
    controle->DefineComboSomenteLeitura(true);
    auto *texto = combo->findChild<QLineEdit *>("fixo");
    ASSERT_TRUE(texto->isVisible());
    EXPECT_EQ(texto->geometry(), combo->rect());
    EXPECT_EQ(texto->text(), "Aferição do INMETRO");
    EXPECT_TRUE(texto->isReadOnly());
    QLineEdit fixa;
    DefineSomenteLeitura(fixa, true);
    EXPECT_EQ(texto->palette().color(QPalette::Base), fixa.palette().color(QPalette::Base));
    EXPECT_EQ(texto->palette().color(QPalette::Text), fixa.palette().color(QPalette::Text));
    combo->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(combo->hasFocus());
    for (const auto tecla : {Qt::Key_Down, Qt::Key_End, Qt::Key_F4, Qt::Key_Space, Qt::Key_D}) {
        QTest::keyClick(combo, tecla);
        EXPECT_EQ(combo->currentIndex(), 0);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    }
    QTest::keyClick(combo, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(texto->selectedText(), "Aferição do INMETRO");
    QTest::keyClick(combo, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "Aferição do INMETRO");
    QTest::mouseClick(texto, Qt::LeftButton);
    EXPECT_TRUE(combo->hasFocus());
    const QAccessibleInterface *acessivel = QAccessible::queryAccessibleInterface(combo);
    EXPECT_EQ(acessivel->text(QAccessible::Description), "Somente leitura");
    QTest::keyClick(combo, Qt::Key_Tab);
    EXPECT_FALSE(combo->hasFocus());
    controle->DefineValor("2"); // the module can
    EXPECT_EQ(texto->text(), "Declaração de Conformidade");
    controle->DefineComboSomenteLeitura(false);
    EXPECT_FALSE(texto->isVisible());
    EXPECT_TRUE(combo->accessibleDescription().isEmpty());
}

TEST_F(ControlesTeste, Combos_OfTheDeskItself_FindWholeWordsAndSayWhatTheyDoNotFind)
{
    Ficha ficha;
    ficha.Campos.push_back({.Nome = "escolha",
                            .Rotulo = "&Escolha:",
                            .Especie = EspecieDoCampo::Escolha,
                            .Opcoes = {{"1", "Pardal Móvel"}, {"2", "Pardal"}, {"3", "Água"}}});
    ficha.Campos.push_back({.Nome = "procura",
                            .Rotulo = "&Procura:",
                            .Especie = EspecieDoCampo::Procura,
                            .Opcoes = {{"1", "Porto Alegre - RS"}, {"2", "Portão - RS"}}});
    ficha.Campos.push_back({.Nome = "numero", .Rotulo = "&Número:", .Especie = EspecieDoCampo::Inteiro, .Maximo = 3});
    PainelDaFicha painel(ficha, nullptr);
    painel.show();
    painel.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&painel));
    auto *escolha = painel.findChild<QComboBox *>("escolha");
    escolha->setFocus();
    QTest::keyClicks(escolha, "pardal");
    painel.Recolhe();
    EXPECT_EQ(ficha.Campo("escolha").Valor, "2");
    auto *procura = painel.findChild<QComboBox *>("procura");
    procura->setFocus();
    QTest::keyClicks(procura, "Atlantida");
    QTest::keyClick(procura, Qt::Key_Tab);
    EXPECT_EQ(DicaEm(painel), "Nenhum item é \"Atlantida\".");
    EXPECT_EQ(procura->currentText(), "Atlantida");
    QLineEdit &numero = Vai(Linha(painel, "numero"));
    QTest::keyClicks(&numero, "1a");
    EXPECT_EQ(DicaEm(painel), "Só algarismos, até 2147483647.");
    QTest::keyClicks(&numero, "234");
    EXPECT_EQ(DicaEm(painel), "Até 3 caracteres.");
    EXPECT_EQ(numero.text(), "123");
}

} // namespace
