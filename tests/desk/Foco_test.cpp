#include "desk/tour/Telas.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Teclado.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

using namespace mesa;

namespace {

// Where the keyboard is on the real windows: the desk over a registry with two equipment of Ana's, A1 with a sensor
// that has a calibration, and A2.
class FocoTeste : public MesaTeste {
  protected:
    FocoTeste()
    {
        const Ref<SessaoServico> ana = registro.Sessao("ana");
        const double documento = GuardaPdf(ana, "certificado");
        const auto sensor = Poe(SensorDe(1), AfericaoDe("111", DataDe(10, 1, 2026), DataDe(10, 1, 2027), documento));
        Inclui(ana, Poe(EquipamentoDe("A1"), sensor));
        Inclui(ana, EquipamentoDe("A2"));
        const auto outro = Poe(SensorDe(1), AfericaoDe("222", DataDe(10, 1, 2026), DataDe(10, 1, 2027)));
        Inclui(ana, Poe(Com(DoTipo(EquipamentoDe("B1"), "A", 2), &EquiptoED::ArquivoLayout, ""), outro));
        mesa.show();
        QApplication::setKeyboardInputInterval(MuitoTempo);
    }
    ~FocoTeste() override { QApplication::setKeyboardInputInterval(intervalo); }

    // With Ana at work.
    void Trabalha(const std::function<void(Teclado &)> &jornada)
    {
        Entra();
        EXPECT_EQ(Teclado::Percorre(jornada), "");
    }
    // The first row of two is current, and the keyboard in it.
    static void AbreLista(Teclado &t)
    {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('L').EsperaLinhas("ztlLista", 2).TabAte("ztlLista/linhas");
        t.Tecla(Qt::Key_Home).EsperaLinha("ztlLista", 1, "A1");
    }
    static void Abre(Teclado &t, const char *comando)
    {
        AbreLista(t);
        t.Tecla(Qt::Key_Menu).EscolheNoMenu(comando).EsperaJanela("frmEquipDetalhes");
    }
    // The page of an equipment.
    static void VaiParaPagina(Teclado &t, int pagina)
    {
        for (int vez = 0; vez < 5; ++vez) {
            t.Ctrl(Qt::Key_PageUp);
        }
        t.EsperaPagina("sstDados", 0);
        for (int vez = 0; vez < 5 && NaTela([&] { return Pagina() != pagina; }); ++vez) {
            t.Ctrl(Qt::Key_PageDown).Feito();
        }
        t.EsperaPagina("sstDados", pagina);
    }
    // The button of that letter is refused with a message, behind which what is typed lands in the field.
    static void Recusa(Teclado &t, char letra, const QString &mensagem, const QString &campo, const QString &digitado,
                       const QString &fica)
    {
        t.Alt(letra).EsperaCaixa(mensagem).Tecla(Qt::Key_Return).Escreve(digitado).EsperaTexto(campo, fica);
        EsperaFocoNaFrente(t, campo);
    }
    // The window in front is active without anybody's help, and the keyboard in that widget of it.
    static void EsperaFocoNaFrente(Teclado &t, const QString &nome)
    {
        t.Espera("the keyboard is in " + nome + " of the active window", [=] {
            const QWidget *widget = Teclado::Acha(nome);
            return widget != nullptr && widget->hasFocus() && QApplication::activeWindow() == widget->window();
        });
    }
    static void ClicaAba(Teclado &t, int pagina)
    {
        NaTela([&] {
            auto *aba = qobject_cast<QTabWidget *>(Teclado::Acha("sstDados"))->tabBar();
            QTest::mouseClick(aba, Qt::LeftButton, {}, aba->tabRect(pagina).center());
        });
        t.EsperaPagina("sstDados", pagina);
    }
    // Clicks twice, in the middle of a row, or at another place of the table.
    static void ClicaDuasVezes(Teclado &t, const QString &lista, int linha, Qt::MouseButton botao = Qt::LeftButton)
    {
        QMetaObject::invokeMethod(
            qApp,
            [=] {
                const auto *tabela = qobject_cast<QTableView *>(Teclado::Acha(lista + "/linhas"));
                const QPoint linhas(tabela->columnWidth(0) / 2, tabela->viewport()->height() - 2);
                const QPoint onde =
                    linha > 0 ? tabela->visualRect(tabela->model()->index(linha - 1, 0)).center() : linhas;
                QTest::mouseClick(tabela->viewport(), botao, {}, onde);
                QTest::mouseDClick(tabela->viewport(), botao, {}, onde);
            },
            Qt::QueuedConnection);
        t.Espera("it is done", [] { return true; });
    }
    // The key as it comes again and again while it is held down.
    static void Segura(Teclado &t, Qt::Key tecla)
    {
        for (int vez = 0; vez < 5; ++vez) {
            QMetaObject::invokeMethod(
                qApp,
                [=] {
                    QWidget *janela = Teclado::Frente()->window();
                    QKeyEvent repetida(QEvent::KeyPress, tecla, Qt::NoModifier, "\r", true);
                    QCoreApplication::sendEvent(janela->windowHandle(), &repetida);
                },
                Qt::QueuedConnection);
        }
        t.Espera("it was held down", [] { return true; });
    }
    static int Janelas(const QString &nome)
    {
        return NaTela([&] {
            const QWidgetList todas = QApplication::topLevelWidgets();
            return static_cast<int>(std::count_if(todas.begin(), todas.end(), [&](const QWidget *janela) {
                return janela->isVisible() && janela->objectName() == nome;
            }));
        });
    }
    // The letter of each command of a list, as its button shows it.
    static std::map<QString, QString> Letras(const QString &lista)
    {
        return NaTela([&] {
            std::map<QString, QString> letras;
            for (const QToolButton *botao : Teclado::Acha(lista)->findChildren<QToolButton *>()) {
                if (botao->isVisible()) {
                    letras[botao->objectName() + botao->text().remove('&')] = Letra(botao->text());
                }
            }
            return letras;
        });
    }
    static QString Letra(const QString &caption)
    {
        const qsizetype marca = caption.indexOf('&');
        return marca < 0 ? QString() : caption.mid(marca + 1, 1).toLower();
    }
    static int Pagina()
    {
        const auto *abas = qobject_cast<QTabWidget *>(Teclado::Acha("sstDados"));
        return abas == nullptr ? -1 : abas->currentIndex();
    }
    static QString NoCombo(const QString &nome, int item)
    {
        return NaTela([&] { return qobject_cast<QComboBox *>(Teclado::Acha(nome))->itemText(item); });
    }

  private:
    // Letters that look for an item belong together, however long a busy machine takes between them.
    static constexpr int MuitoTempo = 600000;
    int intervalo = QApplication::keyboardInputInterval();
};

TEST_F(FocoTeste, RefusalsOfANewEquipment_WhatIsTypedBehindEach_LandsInTheFieldThatTheMessageNames)
{
    Trabalha([](Teclado &t) {
        AbreLista(t);
        t.Alt('N').EsperaJanela("frmEquipDetalhes").TabAte("txtSubCodEquip").Escreve("1").Tecla(Qt::Key_Backspace);
        Recusa(t, 'P', "Informe o código do equipamento!", "txtCodEquip", "N1", "N1");
        Recusa(t, 'P', "Informe a descrição do equipamento!", "txtDescricao", "norte", "norte");
        Recusa(t, 'P', "Informe o tipo de medidor!", "cboTipoMedidor", "f", "Fixo");
        Recusa(t, 'P', "Informe o tipo de equipamento!", "cboTipoEquip", "p", "Pardal");
        Recusa(t, 'P', "Informe a marca/modelo!", "txtModelo", "abc", "abc");
        t.EsperaPagina("sstDados", 0);
        Recusa(t, 'P', "Informe o município!", "cboMunic", "porto alegre", "Porto Alegre");
        t.EsperaPagina("sstDados", 1);
        VaiParaPagina(t, 0); // and opens again with each
        Recusa(t, 'P', "Informe o layout dos arquivos!", "cboArqLayout", "n", "NENHUM");
        VaiParaPagina(t, 0);
        Recusa(t, 'P', "Informe a velocidade permitida!", "txtVelocPerm", "0", "0");
        VaiParaPagina(t, 0);
        t.Alt('P').EsperaCaixa("Informe uma velocidade permitida válida!").Tecla(Qt::Key_Return);
        t.Tecla(Qt::Key_Backspace).Escreve("60").EsperaTexto("txtVelocPerm", "60");
        // The answer to the question of the same click leaves the keyboard at the button.
        t.Alt('P').EsperaCaixa("Confirma a inclusão?").Alt('N');
        EsperaFocoNaFrente(t, "ztCmdAplicar");
        t.Tecla(Qt::Key_Space).EsperaCaixa("Confirma a inclusão?").Alt('S');
        t.Espera("it is stored", [] { return qobject_cast<QTabWidget *>(Teclado::Acha("sstDados"))->isTabEnabled(2); });
        EsperaFocoNaFrente(t, "ztCmdAplicar"); // what the form shows of the record has changed it
        t.Alt('C').EsperaCaixa("Deseja descartá-las?").Alt('S').EsperaJanela("frmLista");
    });
    EXPECT_EQ(registro.Sql("SELECT Descricao FROM EQUIPAMENTO WHERE Codigo = 'N1'"), "norte");
}

TEST_F(FocoTeste, RefusalsOfTheOptions_FromAnotherPage_LandInTheFieldThatTheMessageNames)
{
    Trabalha([](Teclado &t) {
        Abre(t, "Editar");
        VaiParaPagina(t, 4);
        t.TabAte("chkRejeicaoAuto").Tecla(Qt::Key_Space).EsperaTexto("chkRejeicaoAuto", "marcado");
        const QString primeira = NoCombo("cboRejeicao", 0);
        VaiParaPagina(t, 0);
        Recusa(t, 'O', "Informe a rejeição.", "cboRejeicao", primeira.left(1).toLower(), primeira);
        t.EsperaPagina("sstDados", 4);
        t.Alt('C').EsperaCaixa("Deseja descartá-las?").Alt('S').EsperaJanela("frmLista");
    });
}

TEST_F(FocoTeste, RefusalOfTheObservation_FromAnotherPage_LandsInIt)
{
    Inclui(registro.Sessao("ana"), DoTipo(EquipamentoDe("A0"), "F"));
    Trabalha([](Teclado &t) {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('L').EsperaLinhas("ztlLista", 3).TabAte("ztlLista/linhas");
        t.Tecla(Qt::Key_End).EsperaLinha("ztlLista", 3, "A0");
        t.Tecla(Qt::Key_Menu).EscolheNoMenu("Editar").EsperaJanela("frmEquipDetalhes");
        VaiParaPagina(t, 4);
        t.TabAte("chkIncObsNotif").Tecla(Qt::Key_Space).EsperaTexto("chkIncObsNotif", "marcado");
        VaiParaPagina(t, 1);
        Recusa(t, 'O', "Informe a observação.", "txtObsNotif", "Via", "Via");
        t.Alt('C').EsperaCaixa("Deseja descartá-las?").Alt('S').EsperaJanela("frmLista");
    });
}

TEST_F(FocoTeste, RefusalsOfALimit_WhatIsTypedBehindEach_LandsInTheFieldThatTheMessageNames)
{
    Trabalha([](Teclado &t) {
        AbreLista(t);
        t.Tecla(Qt::Key_Menu).EscolheNoMenu("Limites Diferenciados").EsperaJanela("frmLimitesDif");
        t.Alt('N').EsperaJanela("frmLimitesDifDetalhes");
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 1); // each opens page 0
        t.Alt('O').EsperaCaixa("Você deve selecionar no mínimo 1 (um) dia!").Tecla(Qt::Key_Return);
        EsperaFocoNaFrente(t, "ztCmdOK"); // no field is named
        t.EsperaPagina("sstDados", 0).TabAte("chkDia_2").Tecla(Qt::Key_Space);
        Recusa(t, 'O', "Informe a velocidade permitida.", "txtVelocPerm", "40", "40");
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 1);
        Recusa(t, 'O', "Informe a hora inicial.", "ztmHInicial", "2500", "25:00");
        t.Alt('O').EsperaCaixa("Informe uma hora inicial válida.").Tecla(Qt::Key_Return);
        t.Tecla(Qt::Key_Home).Escreve("1200").EsperaTexto("ztmHInicial", "12:00");
        Recusa(t, 'O', "Informe a hora final.", "ztmHFinal", "2460", "24:60");
        t.Alt('O').EsperaCaixa("Informe uma hora final válida.").Tecla(Qt::Key_Return);
        t.Tecla(Qt::Key_Home).Escreve("1100").EsperaTexto("ztmHFinal", "11:00");
        t.Alt('O').EsperaCaixa("Horário final deve ser maior que o horário inicial!").Tecla(Qt::Key_Return);
        t.Tecla(Qt::Key_Home).Escreve("0800").EsperaTexto("ztmHInicial", "08:00");
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 1);
        t.TabAte("chkVelocMin").Tecla(Qt::Key_Space).EsperaTexto("chkVelocMin", "marcado");
        t.Ctrl(Qt::Key_PageUp).EsperaPagina("sstDados", 0);
        Recusa(t, 'O', "Informe a velocidade mínima.", "txtVelocMin", "30", "30");
        t.EsperaPagina("sstDados", 1);
        t.Alt('O').EsperaJanela("frmLimitesDif").EsperaLinhas("ztLista", 1);
    });
    EXPECT_EQ(registro.Sql("SELECT VelocMin FROM LIMITE"), "30");
}

TEST_F(FocoTeste, RefusalOfTheDate_OfASpecificDay_LandsInIt)
{
    Trabalha([](Teclado &t) {
        AbreLista(t);
        t.Tecla(Qt::Key_Menu).EscolheNoMenu("Dias Específicos").EsperaJanela("frmLimitesDif");
        t.Alt('N').EsperaJanela("frmLimitesDifDetalhes");
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 1);
        Recusa(t, 'O', "Informe uma data válida.", "ztdData", "25122026", "25/12/2026");
        Recusa(t, 'O', "Informe a velocidade permitida.", "txtVelocPerm", "40", "40");
        t.Alt('C').EsperaJanela("frmLimitesDif");
    });
}

TEST_F(FocoTeste, RefusalWithoutALockedForm_LandsInTheFieldThatTheMessageNames)
{
    Trabalha([](Teclado &t) {
        AbreLista(t);
        t.TabAte("cboCriterio").Tecla(Qt::Key_Down).EsperaTexto("cboCriterio", "Código");
        Recusa(t, 'L', "Informe o Código do Equipamento!", "txtCodEquip", "A", "A");
        t.TabAte("cboCriterio").Tecla(Qt::Key_Down, Qt::AltModifier);
        t.Espera("the list is open", [] { return QApplication::activePopupWidget() != nullptr; });
        t.Tecla(Qt::Key_End).Tecla(Qt::Key_Return).EsperaTexto("cboCriterio", "Subcódigo");
        EsperaFocoNaFrente(t, "txtCodEquip"); // and Enter was the list's
        t.Tecla(Qt::Key_Backspace);
        Recusa(t, 'L', "Informe o Subcódigo do Equipamento!", "txtCodEquip", "B", "B");
    });
}

TEST_F(FocoTeste, NewForm_WhatIsTypedAtOnce_LandsInItsFirstField)
{
    Trabalha([](Teclado &t) {
        AbreLista(t);
        t.Alt('N').Escreve("N7").EsperaJanela("frmEquipDetalhes").EsperaTexto("txtCodEquip", "N7");
        EsperaFocoNaFrente(t, "txtCodEquip");
        t.Alt('C').EsperaCaixa("Deseja descartá-las?").Alt('S').EsperaJanela("frmLista");
        t.Tecla(Qt::Key_Menu).EscolheNoMenu("Limites Diferenciados").EsperaJanela("frmLimitesDif");
        EsperaFocoNaFrente(t, "ztLista/linhas");
        t.Alt('N').Tecla(Qt::Key_Space).EsperaJanela("frmLimitesDifDetalhes").EsperaTexto("chkDia_1", "marcado");
        t.Alt('C').EsperaJanela("frmLimitesDif");
    });
}

TEST_F(FocoTeste, SearchWindow_OpensInItsFirstCriterion)
{
    Trabalha([](Teclado &t) {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        EsperaFocoNaFrente(t, "ztCliente/cliente");
        t.Ctrl(Qt::Key_3).EsperaJanela("ConsultaAutuacao");
        t.Alt('S').EsperaJanela("frmLista");
        EsperaFocoNaFrente(t, "ztCliente/cliente");
    });
}

TEST_F(FocoTeste, ListOfAPage_WhenThePageOpens_HasTheKeyboardAndItsCommands)
{
    Trabalha([](Teclado &t) {
        Abre(t, "Editar");
        VaiParaPagina(t, 2);
        EsperaFocoNaFrente(t, "ztListaSensor/linhas");
        t.EsperaLinha("ztListaSensor", 1, "Av. Ipiranga, 1200");
        for (const char *comando : {"mnuZTLObjEditar", "mnuZTLObjDetalhes", "mnuZTLObjExcluir"}) {
            t.Espera(comando, [=] { return Teclado::Acha("ztListaSensor/" + QString(comando))->isEnabled(); });
        }
        // The same by the mouse, in the window that this one opens.
        t.Tecla(Qt::Key_Menu).EscolheNoMenu("Detalhes").EsperaJanela("frmEquipSensores");
        ClicaAba(t, 1);
        EsperaFocoNaFrente(t, "ztListaAfericao/linhas");
        t.EsperaLinha("ztListaAfericao", 1, "111");
        t.Espera("its details are offered",
                 [] { return Teclado::Acha("ztListaAfericao/mnuZTLObjDetalhes")->isEnabled(); });
        t.Alt('F').EsperaJanela("frmEquipDetalhes");
        EsperaFocoNaFrente(t, "ztListaSensor/linhas");
    });
}

// Who walks along the strip with the arrow keys goes on walking.
TEST_F(FocoTeste, ArrowsOnTheStripOfPages_LeaveTheKeyboardThere)
{
    Trabalha([](Teclado &t) {
        Abre(t, "Editar");
        t.Tecla(Qt::Key_Tab, Qt::ShiftModifier).Espera("the keyboard is in the strip", [] {
            return qobject_cast<QTabBar *>(QApplication::focusWidget()) != nullptr;
        });
        t.Tecla(Qt::Key_Right).Tecla(Qt::Key_Right).EsperaPagina("sstDados", 2);
        t.Tecla(Qt::Key_Right).EsperaPagina("sstDados", 4);
        t.Tecla(Qt::Key_Left).EsperaPagina("sstDados", 2);
        t.Tecla(Qt::Key_Tab);
        EsperaFocoNaFrente(t, "ztListaSensor/linhas");
        t.Espera("its commands", [] { return Teclado::Acha("ztListaSensor/mnuZTLObjEditar")->isEnabled(); });
    });
}

// Rows

TEST_F(FocoTeste, EnterInACriterion_Searches)
{
    Trabalha([](Teclado &t) {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista").Tecla(Qt::Key_Return).EsperaLinhas("ztlLista", 2);
        EsperaFocoNaFrente(t, "ztCliente/cliente");
        t.TabAte("cboCriterio").Tecla(Qt::Key_Down).EsperaTexto("cboCriterio", "Código").EsperaFoco("txtCodEquip");
        t.Escreve("A2\r").EsperaLinhas("ztlLista", 1);
        EsperaFocoNaFrente(t, "txtCodEquip");
        // With the button itself Enter presses it, once.
        t.TabAte("ztlLista_localizar").Tecla(Qt::Key_Return).EsperaLinhas("ztlLista", 1);
    });
}

TEST_F(FocoTeste, Row_OfTheSearchWindow_OpensItsDetailsByEnterAndByADoubleClick)
{
    Trabalha([](Teclado &t) {
        AbreLista(t);
        t.Tecla(Qt::Key_Return).EsperaJanela("frmEquipDetalhes").EsperaTexto("cmdCancelar", "&Fechar");
        t.EsperaTexto("txtCodEquip", "A1").Tecla(Qt::Key_Escape).EsperaJanela("frmLista");
        EsperaFocoNaFrente(t, "ztlLista/linhas");
        ClicaDuasVezes(t, "ztlLista", 2);
        t.EsperaJanela("frmEquipDetalhes").EsperaTexto("txtCodEquip", "A2").Tecla(Qt::Key_Escape);
        t.EsperaJanela("frmLista").EsperaLinha("ztlLista", 2, "A2");
        ClicaDuasVezes(t, "ztlLista", 0); // below the rows
        ClicaDuasVezes(t, "ztlLista", 1, Qt::RightButton);
        t.EsperaJanela("frmLista");
    });
}

TEST_F(FocoTeste, Row_OfTheSelectionWindow_IsChosenByEnterAndByADoubleClick)
{
    Trabalha([](Teclado &t) {
        t.Ctrl(Qt::Key_3).EsperaJanela("ConsultaAutuacao");
        t.TabAte("data").Tecla(Qt::Key_Home).Escreve("20112026");
        t.Alt('S').EsperaJanela("frmLista").EsperaLinhas("ztlLista", 1);
        t.TabAte("chkInativos").Tecla(Qt::Key_Space).EsperaLinhas("ztlLista", 0);
        t.Tecla(Qt::Key_Space).Tecla(Qt::Key_Return).EsperaLinhas("ztlLista", 1); // searches, and does not press OK
        t.TabAte("ztlLista/linhas").EsperaLinha("ztlLista", 1, "B1").Tecla(Qt::Key_Return);
        t.EsperaJanela("ConsultaAutuacao").EsperaTexto("resultado", "Equipamento selecionado.");
        t.Alt('S').EsperaJanela("frmLista");
        ClicaDuasVezes(t, "ztlLista", 1);
        t.EsperaJanela("ConsultaAutuacao").EsperaTexto("resultado", "Equipamento selecionado.");
        t.Alt('S').EsperaJanela("frmLista").Tecla(Qt::Key_Escape).EsperaJanela("ConsultaAutuacao");
    });
}

TEST_F(FocoTeste, Row_OfAListInAForm_IsEditedWhereItCanBe)
{
    Trabalha([](Teclado &t) {
        Abre(t, "Editar");
        VaiParaPagina(t, 2);
        ClicaDuasVezes(t, "ztListaSensor", 1);
        t.EsperaJanela("frmEquipSensores").EsperaTexto("cmdCancelar", "&Cancelar");
        t.Tecla(Qt::Key_Escape).EsperaJanela("frmEquipDetalhes"); // its cancel button
        t.Alt('C').EsperaJanela("frmLista");
        t.Tecla(Qt::Key_Menu).EscolheNoMenu("Detalhes").EsperaJanela("frmEquipDetalhes");
        VaiParaPagina(t, 2);
        t.Tecla(Qt::Key_Return).EsperaJanela("frmEquipSensores").EsperaTexto("cmdCancelar", "&Fechar");
        t.Tecla(Qt::Key_Escape).EsperaJanela("frmEquipDetalhes").Tecla(Qt::Key_Escape).EsperaJanela("frmLista");
    });
}

TEST_F(FocoTeste, EnterHeldDownOnARow_OpensOneWindow)
{
    Trabalha([](Teclado &t) {
        Abre(t, "Detalhes");
        VaiParaPagina(t, 2);
        t.Tecla(Qt::Key_Return).EsperaJanela("frmEquipSensores");
        Segura(t, Qt::Key_Return);
        t.EsperaJanela("frmEquipSensores");
        EXPECT_EQ(Janelas("frmEquipSensores"), 1);
        t.Tecla(Qt::Key_Escape).EsperaJanela("frmEquipDetalhes");
        Segura(t, Qt::Key_Escape); // goes on closing nothing
        t.EsperaJanela("frmEquipDetalhes");
    });
}

// Keys of lists

TEST_F(FocoTeste, F5_RepeatsTheSearchFromAnywhereInTheWindow)
{
    Trabalha([this](Teclado &t) {
        AbreLista(t);
        NaTela([&] { Inclui(registro.Sessao("ana"), EquipamentoDe("A3")); });
        t.Tecla(Qt::Key_F5).EsperaLinhas("ztlLista", 3);
        t.TabAte("cboTipoAgente");
        NaTela([&] { Inclui(registro.Sessao("ana"), EquipamentoDe("A4")); });
        t.Tecla(Qt::Key_F5).EsperaLinhas("ztlLista", 4);
        EsperaFocoNaFrente(t, "cboTipoAgente");
        // Criteria that have changed since the search count as they are now.
        t.TabAte("chkInativos").Tecla(Qt::Key_Space).EsperaLinhas("ztlLista", 0);
        t.Tecla(Qt::Key_F5).EsperaCaixa("Não foram encontrados registros").Tecla(Qt::Key_Return);
        EsperaFocoNaFrente(t, "chkInativos");
    });
}

TEST_F(FocoTeste, DeleteAndInsert_OnARow_RunTheListsOwnCommandsWithItsQuestions)
{
    Trabalha([](Teclado &t) {
        AbreLista(t);
        t.Tecla(Qt::Key_Delete).EsperaCaixa("Deseja desativar o equipamento A1 ?");
        t.Tecla(Qt::Key_Delete).EsperaCaixa("Deseja desativar o equipamento A1 ?").Tecla(Qt::Key_Escape);
        EsperaFocoNaFrente(t, "ztlLista/linhas");
        t.Tecla(Qt::Key_Insert).EsperaJanela("frmEquipDetalhes").EsperaTexto("cmdCancelar", "&Cancelar");
        t.Alt('C').EsperaJanela("frmLista");
        t.Tecla(Qt::Key_Delete).EsperaCaixa("Deseja desativar").Alt('S').EsperaLinhas("ztlLista", 1);
        // Over rows that are away the same command would bring them back: Delete does not.
        t.TabAte("chkInativos").Tecla(Qt::Key_Space).Alt('L').EsperaLinhas("ztlLista", 1);
        t.TabAte("ztlLista/linhas").EsperaLinha("ztlLista", 1, "A1").Tecla(Qt::Key_Delete);
        EsperaFocoNaFrente(t, "ztlLista/linhas");
        t.TabAte("cboCriterio").Tecla(Qt::Key_Down).EsperaFoco("txtCodEquip");
        t.Escreve("AB").Tecla(Qt::Key_Home).Tecla(Qt::Key_Delete).EsperaTexto("txtCodEquip", "B");
    });
    EXPECT_EQ(registro.Sql("SELECT Ativo FROM EQUIPAMENTO WHERE Codigo = 'A1'"), "2");
}

TEST_F(FocoTeste, KeysOfTheKeypad_InTheRowsAndOnThePages_DoWhatTheOthersDo)
{
    Trabalha([](Teclado &t) {
        AbreLista(t);
        t.Tecla(Qt::Key_End, Qt::KeypadModifier).EsperaLinha("ztlLista", 2, "A2");
        t.Tecla(Qt::Key_Home, Qt::KeypadModifier).EsperaLinha("ztlLista", 1, "A1");
        t.Tecla(Qt::Key_Delete, Qt::KeypadModifier).EsperaCaixa("Deseja desativar o equipamento A1 ?");
        t.Tecla(Qt::Key_Escape).Tecla(Qt::Key_Insert, Qt::KeypadModifier).EsperaJanela("frmEquipDetalhes");
        t.Alt('C').EsperaJanela("frmLista").Tecla(Qt::Key_Return).EsperaJanela("frmEquipDetalhes");
        t.Tecla(Qt::Key_PageDown, Qt::ControlModifier | Qt::KeypadModifier).EsperaPagina("sstDados", 1);
        t.Tecla(Qt::Key_Escape).EsperaJanela("frmLista");
    });
}

TEST_F(FocoTeste, Delete_OnASensor_AsksAndTakesItAway)
{
    Trabalha([](Teclado &t) {
        Abre(t, "Editar");
        VaiParaPagina(t, 2);
        t.Tecla(Qt::Key_Delete).EsperaCaixa("Confirma a exclusão deste sensor?").Tecla(Qt::Key_Escape);
        EsperaFocoNaFrente(t, "ztListaSensor/linhas");
        t.Tecla(Qt::Key_Delete).EsperaCaixa("Confirma a exclusão deste sensor?").Alt('S');
        t.EsperaLinhas("ztListaSensor", 0);
        EsperaFocoNaFrente(t, "ztListaSensor/linhas");
        t.Tecla(Qt::Key_Delete).Tecla(Qt::Key_Return); // nothing is there
        t.Alt('C').EsperaCaixa("Deseja descartá-las?").Alt('S').EsperaJanela("frmLista");
    });
}

TEST_F(FocoTeste, CtrlF_LeadsFromTheRowsToTheCriteria)
{
    Trabalha([](Teclado &t) {
        AbreLista(t);
        t.Ctrl(Qt::Key_F).Espera("the keyboard has left the rows for what looks for them", [] {
            const QWidget *filtro = Teclado::Acha("ztlLista_filtro");
            return (filtro != nullptr ? filtro : Teclado::Acha("ztCliente/cliente"))->hasFocus();
        });
    });
}

// Closing

TEST_F(FocoTeste, CtrlF4AndCtrlW_CloseTheActiveWindow_WhereverTheKeyboardIs)
{
    Trabalha([this](Teclado &t) {
        for (const Qt::Key tecla : {Qt::Key_F4, Qt::Key_W}) {
            AbreLista(t);
            t.Ctrl(tecla).EsperaJanela("Mesa");
            t.Ctrl(Qt::Key_1).EsperaJanela("frmLista").TabAte("cboTipoAgente").Ctrl(tecla).EsperaJanela("Mesa");
            t.Ctrl(Qt::Key_3).EsperaJanela("ConsultaAutuacao").Ctrl(tecla).EsperaJanela("Mesa");
        }
        EXPECT_EQ(NaTela([&] { return mesa.Hospedeiro()->Plataforma()->NroForms(); }), 0);
        t.Ctrl(Qt::Key_W).EsperaJanela("Mesa"); // and not the desk itself
    });
    EXPECT_TRUE(mesa.isVisible());
}

TEST_F(FocoTeste, Esc_ClosesWhatCannotLoseAnything_AndNothingElse)
{
    Trabalha([](Teclado &t) {
        AbreLista(t);
        t.Tecla(Qt::Key_Escape).EsperaJanela("frmLista"); // a document of the desk stays
        t.Alt('N').EsperaJanela("frmEquipDetalhes").Escreve("N1").Tecla(Qt::Key_Escape);
        t.EsperaJanela("frmEquipDetalhes").EsperaTexto("txtCodEquip", "N1");
        t.TabAte("cboTipoMedidor").Tecla(Qt::Key_Down, Qt::AltModifier);
        t.Espera("its list is open", [] { return QApplication::activePopupWidget() != nullptr; });
        t.Tecla(Qt::Key_Escape).Espera("it alone is closed", [] {
            return QApplication::activePopupWidget() == nullptr;
        });
        t.EsperaJanela("frmEquipDetalhes").Alt('C').EsperaCaixa("Deseja descartá-las?").Alt('S');
        t.EsperaJanela("frmLista").Tecla(Qt::Key_Menu).EscolheNoMenu("Limites Diferenciados");
        t.EsperaJanela("frmLimitesDif").Tecla(Qt::Key_Escape).EsperaJanela("frmLista");
        // Details of a calibration, in which another button is Esc's while it is edited.
        t.Tecla(Qt::Key_Return).EsperaJanela("frmEquipDetalhes");
        VaiParaPagina(t, 2);
        t.Tecla(Qt::Key_Return).EsperaJanela("frmEquipSensores");
        ClicaAba(t, 1);
        t.Tecla(Qt::Key_Return).EsperaJanela("frmEquipAfericoes").Tecla(Qt::Key_Escape);
        t.EsperaJanela("frmEquipSensores");
        EsperaFocoNaFrente(t, "ztListaAfericao/linhas");
        t.Tecla(Qt::Key_Escape).EsperaJanela("frmEquipDetalhes");
        EsperaFocoNaFrente(t, "ztListaSensor/linhas");
        t.Tecla(Qt::Key_Escape).EsperaJanela("frmLista");
        EsperaFocoNaFrente(t, "ztlLista/linhas");
    });
}

TEST_F(FocoTeste, LettersOfTheCommands_AreTheSameOverActiveAndInactiveRows_AndNoTwoThingsHaveOne)
{
    Trabalha([](Teclado &t) {
        AbreLista(t);
        const auto ativos = Letras("ztlLista");
        t.Tecla(Qt::Key_Delete).EsperaCaixa("Deseja desativar o equipamento A1 ?").Alt('S').EsperaLinhas("ztlLista", 1);
        t.TabAte("chkInativos").Tecla(Qt::Key_Space).Alt('L').EsperaLinhas("ztlLista", 1);
        t.TabAte("ztlLista/linhas").EsperaLinha("ztlLista", 1, "A1");
        EXPECT_EQ(NaTela([] { return TextoDe(Teclado::Acha("ztlLista/mnuZTLObjReativar")); }), "Reati&var");
        auto inativos = Letras("ztlLista");
        auto reativar = inativos.extract("mnuZTLObjReativarReativar");
        ASSERT_TRUE(reativar);
        reativar.key() = "mnuZTLObjReativarDesativar";
        inativos.insert(std::move(reativar));
        EXPECT_EQ(inativos, ativos);
        EXPECT_GE(ativos.size(), 10U);
        std::map<QString, QString> donos = {{"e", "menu"}, {"j", "menu"}, {"u", "menu"}, {"g", "menu"}, {"m", "menu"}};
        donos.insert({"r", "Mais registros"});
        donos.insert({"l", "Localizar"});
        for (const auto &[botao, letra] : ativos) {
            EXPECT_NE(letra, "") << botao.toStdString();
            EXPECT_TRUE(donos.insert({letra, botao}).second) << letra.toStdString() << " " << botao.toStdString();
        }
        t.Alt('V').EsperaCaixa("Deseja reativar o equipamento A1 ?").Tecla(Qt::Key_Escape).EsperaJanela("frmLista");
    });
}

// Boxes

TEST_F(FocoTeste, Boxes_AtThreeLevels_LeaveTheWindowThatAskedActiveWithTheKeyboardWhereItWas)
{
    Trabalha([](Teclado &t) {
        AbreLista(t);
        t.Alt('V').EsperaCaixa("Deseja desativar").Alt('N');
        EsperaFocoNaFrente(t, "ztlLista/linhas");
        t.Tecla(Qt::Key_Menu).EscolheNoMenu("Editar").EsperaJanela("frmEquipDetalhes");
        VaiParaPagina(t, 2);
        t.Tecla(Qt::Key_Delete).EsperaCaixa("Confirma a exclusão deste sensor?").Alt('N');
        EsperaFocoNaFrente(t, "ztListaSensor/linhas");
        t.Tecla(Qt::Key_Return).EsperaJanela("frmEquipSensores");
        ClicaAba(t, 1);
        EsperaFocoNaFrente(t, "ztListaAfericao/linhas");
        t.Tecla(Qt::Key_Delete).EsperaCaixa("Confirma a exclusão desta aferição?").Alt('N');
        EsperaFocoNaFrente(t, "ztListaAfericao/linhas");
        t.Tecla(Qt::Key_Insert).EsperaJanela("frmEquipAfericoes").TabAte("cmdOK").Tecla(Qt::Key_Return);
        t.EsperaCaixa("Informe o Número INMETRO!").Tecla(Qt::Key_Return);
        EsperaFocoNaFrente(t, "txtNroINMETRO");
        t.TabAte("cmdProcurar").Tecla(Qt::Key_Return).EsperaEscolhaDeArquivo().Tecla(Qt::Key_Escape);
        EsperaFocoNaFrente(t, "cmdProcurar");
        t.Tecla(Qt::Key_F1).EsperaJanela("Ajuda").Tecla(Qt::Key_Escape);
        EsperaFocoNaFrente(t, "cmdProcurar");
        t.Alt('C').EsperaJanela("frmEquipSensores");
        EsperaFocoNaFrente(t, "ztListaAfericao/linhas");
        t.Tecla(Qt::Key_Delete).EsperaCaixa("Confirma a exclusão desta aferição?").Alt('S');
        t.EsperaLinhas("ztListaAfericao", 0);
        EsperaFocoNaFrente(t, "ztListaAfericao/linhas");
        // The question and the form that asked go together.
        t.Alt('C').EsperaCaixa("Deseja descartá-las?").Alt('N');
        EsperaFocoNaFrente(t, "cmdCancelar");
        t.Tecla(Qt::Key_Return).EsperaCaixa("Deseja descartá-las?").Alt('S').EsperaJanela("frmEquipDetalhes");
        EsperaFocoNaFrente(t, "ztListaSensor/linhas");
        t.Alt('C').EsperaJanela("frmLista");
        EsperaFocoNaFrente(t, "ztlLista/linhas");
    });
}

// As the sign-in is: there is no loop around it to come back to, and the one that follows is as deep as its own.
TEST_F(FocoTeste, Keys_AfterABoxOlderThanEveryLoop_Arrive)
{
    Entra();
    {
        QDialog antes(&mesa);
        antes.setModal(true);
        QTimer::singleShot(0, &antes, &QDialog::accept);
        antes.exec();
    }
    EXPECT_EQ(Teclado::Percorre([](Teclado &t) { t.Ctrl(Qt::Key_1).EsperaJanela("frmLista"); }), "");
}

} // namespace
