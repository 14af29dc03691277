#include "desk/windows/LugarDasJanelas.h"

#include "desk/host/Lembrancas.h"
#include "desk/tour/Telas.h"
#include "desk/windows/Rolagem.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Retrato.h"
#include "tests/desk/Teclado.h"
#include "tests/desk/TelasDeTeste.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QScrollBar>
#include <QStatusBar>
#include <QTabBar>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

using namespace mesa;

namespace {

// Every window on its screen, frame included; empty when all are.
std::string ForaDaTela(const QRect &tela)
{
    QStringList fora;
    for (const QWidget *janela : QApplication::topLevelWidgets()) {
        if (janela->isVisible() && (janela->windowType() == Qt::Window || janela->windowType() == Qt::Dialog) &&
            !tela.contains(janela->frameGeometry())) {
            const QRect lugar = janela->frameGeometry();
            fora << QString("%1 %2,%3 %4x%5")
                        .arg(janela->objectName())
                        .arg(lugar.x())
                        .arg(lugar.y())
                        .arg(lugar.width())
                        .arg(lugar.height());
        }
    }
    return fora.join("; ").toStdString();
}

class LugarDasJanelasTeste : public MesaTeste, public testing::WithParamInterface<QRect> {
  protected:
    void EntraNaTela(const QRect &tela)
    {
        mesa.setScreen(QGuiApplication::screenAt(tela.center()));
        mesa.move(tela.topLeft());
        Entra();
    }
    // The widget with the keyboard can be seen, whole or as much as its window can show.
    static bool VeTeclado()
    {
        const QWidget *com = QApplication::focusWidget();
        return com != nullptr && !com->visibleRegion().isEmpty() &&
               com->visibleRegion().boundingRect().height() >= qMin(com->height(), com->fontMetrics().height());
    }
};

TEST_P(LugarDasJanelasTeste, Windows_OnThatScreen_OpenWithinItAndEverythingIsReached)
{
    const QRect tela = GetParam();
    const QString nome = QString("tela-%1x%2-").arg(tela.width()).arg(tela.height());
    EntraNaTela(tela);
    IncluiComSensores(registro.Sessao("ana"), {{AfericaoDe("1", DataDe(1, 1, 2026), DataDe(30, 6, 2026))}});
    const auto confere = [&](const char *oQue) {
        NaTela([&] {
            Fotografa(*Teclado::Frente()->window(), nome + oQue);
            EXPECT_EQ(ForaDaTela(tela), "") << oQue;
        });
    };
    const auto alcanca = [&](Teclado &t, const char *qual) {
        t.TabAte(qual).Espera(QString("%1 is in view").arg(qual), VeTeclado);
    };
    EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                  t.EsperaJanela("Mesa");
                  confere("mesa");
                  NaTela([&] {
                      EXPECT_FALSE(mesa.statusBar()->visibleRegion().isEmpty());
                      EXPECT_TRUE(QRect({}, mesa.size()).contains(mesa.statusBar()->geometry()));
                  });
                  t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
                  alcanca(t, "ztlLista_localizar");
                  t.Tecla(Qt::Key_Space).EsperaLinhas("ztlLista", 1);
                  alcanca(t, "cboCriterio");
                  alcanca(t, "ztlLista/linhas");
                  confere("lista");
                  t.Alt('D').EsperaJanela("frmEquipDetalhes");
                  confere("equipamento");
                  alcanca(t, "txtCodEquip");
                  alcanca(t, "cmdCancelar");
                  NaTela([&] { // below what is scrolled, all the time
                      for (const char *botao : {"ztCmdOK", "cmdCancelar", "ztCmdAplicar"}) {
                          const QWidget *comando = Teclado::Acha(botao);
                          EXPECT_EQ(comando->visibleRegion().boundingRect().size(), comando->size()) << botao;
                      }
                  });
                  t.Alt('C').EsperaJanela("frmLista");
                  t.Tecla(Qt::Key_F1).EsperaJanela("Ajuda");
                  confere("ajuda");
                  t.Tecla(Qt::Key_Escape).EsperaJanela("frmLista");
              }),
              "");
}

INSTANTIATE_TEST_SUITE_P(Telas, LugarDasJanelasTeste,
                         testing::Values(TelasDeTeste::Larga, TelasDeTeste::Pequena, TelasDeTeste::Ampliada),
                         [](const auto &qual) {
                             return std::to_string(qual.param.width()) + "x" + std::to_string(qual.param.height());
                         });

TEST_F(LugarDasJanelasTeste, OnALargeScreen_NothingScrolls)
{
    EntraNaTela(TelasDeTeste::Comum);
    IncluiComSensores(registro.Sessao("ana"), {{AfericaoDe("1", DataDe(1, 1, 2026), DataDe(30, 6, 2026))}});
    const auto semBarras = [] {
        NaTela([] {
            for (Rolagem *rolagem : Teclado::Frente()->findChildren<Rolagem *>()) {
                EXPECT_FALSE(rolagem->verticalScrollBar()->isVisible()) << S(Teclado::Frente()->objectName());
                EXPECT_FALSE(rolagem->horizontalScrollBar()->isVisible()) << S(Teclado::Frente()->objectName());
            }
        });
    };
    EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                  t.EsperaJanela("Mesa").Ctrl(Qt::Key_1).EsperaJanela("frmLista");
                  semBarras();
                  t.TabAte("ztlLista_localizar").Tecla(Qt::Key_Space).EsperaLinhas("ztlLista", 1);
                  t.TabAte("ztlLista/linhas").Alt('D').EsperaJanela("frmEquipDetalhes");
                  semBarras();
                  t.Alt('C').EsperaJanela("frmLista");
              }),
              "");
}

TEST_F(LugarDasJanelasTeste, Lists_OpenOnTabsThatSayWhichTheyAre)
{
    EntraNaTela(TelasDeTeste::Comum);
    const auto *area = mesa.findChild<QMdiArea *>();
    auto *abas = area->findChild<QTabBar *>();
    ASSERT_NE(abas, nullptr);
    const auto textos = [&] {
        return NaTela([&] {
            QStringList lista;
            for (int n = 0; n < abas->count(); ++n) {
                lista << abas->tabText(n);
            }
            return lista.join("|").toStdString();
        });
    };
    const auto inteiras = [&] {
        NaTela([&] {
            for (const QMdiSubWindow *filha : area->subWindowList()) {
                if (filha == area->activeSubWindow()) {
                    EXPECT_EQ(filha->geometry(), area->viewport()->rect()) << S(filha->windowTitle());
                }
            }
        });
    };
    const auto titulo = [&](const char *esperado) {
        return [=] { return area->activeSubWindow()->windowTitle() == esperado; };
    };
    EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                  t.EsperaJanela("Mesa").Ctrl(Qt::Key_1).EsperaJanela("frmLista");
                  t.Ctrl(Qt::Key_2).Espera("the second list", titulo("Equipamentos - demais"));
                  t.Ctrl(Qt::Key_1).Espera("the third list", titulo("Equipamentos - trabalho fotográfico (2)"));
                  inteiras();
                  EXPECT_NE(textos().find("Equipamentos - trabalho fotográfico|Equipamentos - demais|"
                                          "Equipamentos - trabalho fotográfico (2)"),
                            std::string::npos)
                      << textos();
                  t.Tecla(Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier)
                      .Espera("the list before", titulo("Equipamentos - demais"));
                  t.Ctrl(Qt::Key_Tab).Espera("the list behind", titulo("Equipamentos - trabalho fotográfico (2)"));
                  t.Tecla(Qt::Key_F6, Qt::ControlModifier | Qt::ShiftModifier)
                      .Espera("the list before", titulo("Equipamentos - demais"));
                  inteiras();
                  t.Alt('J').EscolheNoMenu("Equipamentos - trabalho fotográfico (2)");
                  t.Espera("the list chosen", titulo("Equipamentos - trabalho fotográfico (2)"));
              }),
              "");
    EXPECT_EQ(mesa.windowTitle().toStdString().find("Equipamentos - "), std::string::npos);
    Fotografa(mesa, "abas");
}

} // namespace
