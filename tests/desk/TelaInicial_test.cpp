#include "desk/windows/TelaInicial.h"

#include "desk/host/Lembrancas.h"
#include "desk/tour/Telas.h"
#include "desk/windows/AreaDeTrabalho.h"
#include "desk/windows/LugarDasJanelas.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Retrato.h"
#include "tests/desk/Teclado.h"
#include "tests/desk/TelasDeTeste.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QScreen>
#include <QTabBar>
#include <QTest>
#include <QTreeWidget>
#include <QWindow>

#include <gtest/gtest.h>

using namespace mesa;

namespace {

class TelaInicialTeste : public MesaTeste {
  protected:
    TelaInicialTeste()
    {
        for (const char *codigo : {"R-001", "R-002"}) {
            Inclui(registro.Sessao("ana"), EquipamentoDe(codigo));
        }
    }
    static void Percorre(const std::function<void(Teclado &)> &jornada) { EXPECT_EQ(Teclado::Percorre(jornada), ""); }
    TelaInicial *Inicio() { return mesa.findChild<TelaInicial *>("Inicio"); }
    std::string Recentes()
    {
        QStringList codigos;
        const auto *lista = Inicio()->findChild<QTreeWidget *>("recentes");
        for (int n = 0; n < lista->topLevelItemCount(); ++n) {
            codigos << lista->topLevelItem(n)->text(0);
        }
        return codigos.join(" ").toStdString();
    }
    // The list of photo work, with both equipments in it.
    static void AbreLista(Teclado &t)
    {
        t.EsperaJanela("Mesa").Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('L').EsperaLinhas("ztlLista", 2).TabAte("ztlLista/linhas");
    }
    void EntraDeNovo(const QString &usuario)
    {
        mesa.Sai();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        mesa.Entra(registro.Sessao(S(usuario)));
    }
};

TEST_F(TelaInicialTeste, AfterSignIn_ByKeys_OpensTheListsAndWhatWasOpenedLately)
{
    Entra();
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").EsperaFoco("estado1").TabAte("inicio_mnuModVOREquiptos");
        NaTela([&] { Fotografa(mesa, "inicio-vazio"); });
        t.Tecla(Qt::Key_Space).EsperaJanela("frmLista");
        t.Alt('L').EsperaLinhas("ztlLista", 2).TabAte("ztlLista/linhas").EsperaLinha("ztlLista", 2, "R-002");
        t.Alt('T').EsperaJanela("frmEquipDetalhes"); // Detalhes
        t.Tecla(Qt::Key_Escape).EsperaJanela("frmLista");
        t.Alt('F').EsperaJanela("Mesa");
        t.Espera("the page is there again", [&] { return Inicio()->isVisible() && Recentes() == "R-002"; });
        NaTela([&] { Fotografa(mesa, "inicio"); });
        t.TabAte("recentes").Tecla(Qt::Key_Return).EsperaJanela("frmEquipDetalhes").EsperaTexto("txtCodEquip", "R-002");
        t.Alt('F').EsperaJanela("frmLista").EsperaLinhas("ztlLista", 1).EsperaLinha("ztlLista", 1, "R-002");
        t.Espera("the window's keyboard is in the rows",
                 [&] { return mesa.focusWidget() != nullptr && mesa.focusWidget()->objectName() == "linhas"; });
    });
}

TEST_F(TelaInicialTeste, BesideOpenWindows_StandsOnATabOfItsOwn)
{
    Entra();
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Ctrl(Qt::Key_0).EsperaJanela("Inicio");
        t.Ctrl(Qt::Key_Tab).EsperaJanela("frmLista");
        t.Ctrl(Qt::Key_0).EsperaJanela("Inicio");
        t.Espera("there is one", [&] { return mesa.findChild<QMdiArea *>()->subWindowList().size() == 2; });
        t.Alt('J').EscolheNoMenu("Fechar todas").EsperaJanela("Mesa");
        t.Espera("the page is there", [&] { return Inicio()->isVisible(); });
    });
}

TEST_F(TelaInicialTeste, UserWithoutRights_ReadsWhyThereIsNothing)
{
    mesa.show();
    mesa.Entra(registro.Sessao("carla"));
    QApplication::processEvents();
    auto *impedimento = Inicio()->findChild<QLabel *>("impedimento");
    EXPECT_TRUE(impedimento->isVisible());
    EXPECT_NE(impedimento->text().indexOf("administrador do registro"), -1);
    EXPECT_FALSE(Inicio()->findChild<QTreeWidget *>("recentes")->isVisible());
    Fotografa(mesa, "inicio-sem-direito");
}

TEST_F(TelaInicialTeste, AnotherUser_HasRecentEquipmentOfTheirOwn)
{
    Entra();
    mesa.Hospedeiro()->ViuEquipamento(1);
    EntraDeNovo("bia");
    EXPECT_EQ(Recentes(), "");
    EntraDeNovo("ana");
    EXPECT_EQ(Recentes(), "R-001");
    mesa.Sai();
    EXPECT_FALSE(Inicio()->isVisible());
}

TEST_F(TelaInicialTeste, Criteria_AreThereAgainAndNothingIsSearched)
{
    Entra();
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.TabAte("cboCriterio").DesceAte("Código").TabAte("txtCodEquip").Escreve("R");
        t.TabAte("chkInativos").Tecla(Qt::Key_Space);
        t.Alt('F').EsperaJanela("Mesa");
        t.Ctrl(Qt::Key_2).EsperaJanela("frmLista").EsperaTexto("cboCriterio", "Todos"); // of the other list
        t.Alt('F').EsperaJanela("Mesa");
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista").EsperaTexto("cboCriterio", "Código");
        t.EsperaTexto("txtCodEquip", "R").EsperaTexto("chkInativos", "marcado").EsperaLinhas("ztlLista", 0);
        t.Alt('B').EsperaTexto("cboCriterio", "Todos").EsperaTexto("chkInativos", "desmarcado");
        NaTela([&] { Fotografa(mesa, "lista-limpa"); });
        t.Alt('F').EsperaJanela("Mesa");
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista").EsperaTexto("cboCriterio", "Todos");
        t.TabAte("cboCriterio").DesceAte("Código").EsperaTexto("txtCodEquip", "");
    });
}

TEST_F(TelaInicialTeste, Criteria_OfAnotherUser_AreTheirOwn)
{
    Entra();
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.TabAte("chkInativos").Tecla(Qt::Key_Space).EsperaTexto("chkInativos", "marcado");
    });
    EntraDeNovo("bia");
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").Ctrl(Qt::Key_1).EsperaJanela("frmLista").EsperaTexto("chkInativos", "desmarcado");
    });
    EntraDeNovo("ana");
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").Ctrl(Qt::Key_1).EsperaJanela("frmLista").EsperaTexto("chkInativos", "marcado");
    });
}

TEST_F(TelaInicialTeste, MainWindow_OpensWhereItsUserLeftIt)
{
    Entra();
    const QRect deixada(TelasDeTeste::Larga.x() + 40, 60, 900, 600);
    mesa.setGeometry(deixada);
    EntraDeNovo("bia");
    mesa.setGeometry(100, 100, 800, 500);
    EntraDeNovo("ana");
    EXPECT_EQ(mesa.geometry(), deixada);
    EntraDeNovo("bia");
    EXPECT_EQ(mesa.geometry(), QRect(100, 100, 800, 500));
    mesa.showMaximized();
    EntraDeNovo("ana");
    EXPECT_FALSE(mesa.isMaximized());
    EXPECT_EQ(mesa.geometry(), deixada);
    EntraDeNovo("bia");
    EXPECT_TRUE(mesa.isMaximized());
    mesa.showNormal();
    EXPECT_EQ(mesa.geometry(), QRect(100, 100, 800, 500));
}

// What stands in front is closed by its own key, whatever becomes of the tabs behind it.
TEST_F(TelaInicialTeste, ModalWindow_WhileTheTabsBehindItChange_StaysInFront)
{
    Entra();
    Percorre([&](Teclado &t) {
        AbreLista(t);
        t.Ctrl(Qt::Key_2).Espera("the other list", [&] {
            return mesa.findChild<QMdiArea *>()->activeSubWindow()->windowTitle() == "Equipamentos - demais";
        });
        t.Ctrl(Qt::Key_Tab).EsperaLinhas("ztlLista", 2).TabAte("ztlLista/linhas");
        t.Alt('T').EsperaJanela("frmEquipDetalhes");
        NaTela([&] { mesa.findChild<QMdiArea *>()->activateNextSubWindow(); });
        t.EsperaJanela("frmEquipDetalhes").Alt('F').EsperaJanela("frmLista").EsperaLinhas("ztlLista", 0);
    });
}

TEST_F(TelaInicialTeste, RememberedPlace_ThatMakesNoSense_IsNotUsed)
{
    for (const char *lugar : {"-90000 -90000 800 600 0", "99999 99999 99999 99999 0", "nan nan nan nan nan",
                              "0 0 0 0 0", "texto", "5000 9000 700 500 0"}) {
        Lembrancas(preferencias, registro.Aberto().Identificador(), "ana").Lembra("Mesa/lugar", lugar);
        EntraDeNovo("ana");
        mesa.show();
        EXPECT_TRUE(TelasDeTeste::Comum.contains(mesa.frameGeometry())) << lugar;
    }
}

TEST_F(TelaInicialTeste, Dialog_OpensAsLargeAsItWasLeftInFrontOfItsOwner)
{
    Entra();
    QSize deixado;
    Percorre([&](Teclado &t) {
        AbreLista(t);
        t.Alt('T').EsperaJanela("frmEquipDetalhes");
        NaTela([&] {
            QWidget *janela = Teclado::Frente();
            deixado = janela->size() + QSize(60, 40);
            janela->windowHandle()->resize(deixado); // as the person's mouse does it
            janela->windowHandle()->setPosition(5, 40);
        });
        t.Espera("it has that size", [&] { return Teclado::Frente()->size() == deixado; });
        t.Alt('F').EsperaJanela("frmLista");
        t.Alt('T').EsperaJanela("frmEquipDetalhes");
        NaTela([&] {
            EXPECT_EQ(Teclado::Frente()->size(), deixado);
            const QPoint entre = Teclado::Frente()->geometry().center() - mesa.geometry().center();
            EXPECT_LE(entre.manhattanLength(), 2);
        });
        t.Alt('F').EsperaJanela("frmLista");
    });
}

TEST_F(TelaInicialTeste, ScreenThatShrinks_KeepsEveryWindowWithinIt)
{
    auto &lugares = LugarDasJanelas::DaAplicacao();
    const auto antes = lugares.Livre;
    Entra();
    const QRect menor(0, 0, 640, 400);
    Percorre([&](Teclado &t) {
        AbreLista(t);
        t.Alt('T').EsperaJanela("frmEquipDetalhes");
        NaTela([&] {
            lugares.Livre = [&](const QScreen &) { return menor; };
            lugares.ContemTodas();
            for (const QWidget *janela : QApplication::topLevelWidgets()) {
                EXPECT_TRUE(!janela->isVisible() || menor.contains(janela->frameGeometry()))
                    << S(janela->objectName()) << " " << janela->frameGeometry().width() << "x"
                    << janela->frameGeometry().height();
            }
        });
        t.Alt('F').EsperaJanela("frmLista");
    });
    lugares.Livre = antes;
}

TEST_F(TelaInicialTeste, SixtyTabs_AreWalkedAndClosed)
{
    Entra();
    auto *area = mesa.findChild<AreaDeTrabalho *>();
    for (int n = 0; n < 60; ++n) {
        mesa.findChild<QAction *>("mnuModVOREquiptos")->trigger();
    }
    QApplication::processEvents();
    EXPECT_EQ(area->subWindowList().size(), 60);
    EXPECT_TRUE(TelasDeTeste::Comum.contains(mesa.frameGeometry()));
    EXPECT_EQ(area->activeSubWindow()->windowTitle().toStdString(), "Equipamentos - trabalho fotográfico (60)");
    EXPECT_EQ(area->activeSubWindow()->geometry(), area->viewport()->rect());
    Percorre([&](Teclado &t) {
        t.Ctrl(Qt::Key_Tab).Espera("the first one", [&] {
            return area->activeSubWindow()->windowTitle() == "Equipamentos - trabalho fotográfico";
        });
        t.Alt('J').EscolheNoMenu("Fechar todas").EsperaJanela("Mesa");
    });
}

// The tab closes as the window's own button does: the form is asked, and may refuse.
TEST_F(TelaInicialTeste, TabOfAFormThatCannotBeClosed_Stays)
{
    Entra();
    mesa.findChild<QAction *>("mnuModVOREquiptos")->trigger();
    QApplication::processEvents();
    auto *area = mesa.findChild<AreaDeTrabalho *>();
    auto *abas = area->findChild<QTabBar *>("abas");
    auto *lista = mesa.findChild<JanelaForm *>("frmLista");
    lista->setEnabled(false);
    const Ref<IForm> form = lista->Form();
    form->DefineEnabled(false); // its click still runs
    Q_EMIT abas->tabCloseRequested(0);
    QApplication::processEvents();
    EXPECT_EQ(area->subWindowList().size(), 1);
    EXPECT_TRUE(lista->isVisible());
    form->DefineEnabled(true);
    Q_EMIT abas->tabCloseRequested(0);
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(area->subWindowList().size(), 0);
}

} // namespace
