#include "desk/tour/Telas.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/InicioQt.h"
#include "desk/windows/JanelaDaCabeca.h"
#include "desk/windows/JanelaDeRelato.h"
#include "desk/windows/JanelaDeTrabalho.h"
#include "tests/desk/LeitorDeTela.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Teclado.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

using namespace mesa;

namespace {

// Of people who like it dark.
class PaletaEscuraDeTeste {
  public:
    PaletaEscuraDeTeste()
    {
        QPalette cores(QColor("#2b2f33"));
        cores.setColor(QPalette::Base, QColor("#1e2124"));
        QApplication::setPalette(cores);
        QApplication::processEvents();
    }
    ~PaletaEscuraDeTeste()
    {
        QApplication::setPalette(QPalette());
        QApplication::processEvents();
    }
};

// The desk with everything that it may show, in the hands of saulo, who may do everything. What the forms of the module
// tell is told with their portraits; what a form shows is looked at here as it stands in the desk.
class AcessibilidadeTeste : public MesaTeste {
  protected:
    AcessibilidadeTeste()
    {
        Inclui(registro.Sessao("ana"), EquipamentoDe("A1"));
        AtosDoRegistro atos;
        atos.Confere = [] { return [](const Segue &) { return ResultadoDoAto{true, "Tudo foi conferido.", {}}; }; };
        atos.Copia = [](const std::string &, const Segue &) { return ResultadoDoAto{}; };
        atos.Restaura = [](const std::string &) {};
        atos.Cabeca = [] { return CabecaAssinada(); };
        mesa.DefineAtos(atos);
        mesa.show();
        mesa.Entra(registro.Sessao("saulo"));
    }
    static void Percorre(const std::function<void(Teclado &)> &jornada) { EXPECT_EQ(Teclado::Percorre(jornada), ""); }
    // The window in front: what a reader hears, and where its keyboard is, in light and in dark.
    static void Confere(const char *qual, bool comForm = false)
    {
        const QString defeitos = NaTela([=] {
            QWidget *janela = Teclado::Frente()->window();
            janela->activateWindow();
            QApplication::processEvents();
            QStringList todos = DefeitosDoLeitor(*janela) + FocoInvisivel(*janela);
            if (!comForm) { // which has an order of its own
                todos += TabForaDaLeitura(*janela);
            }
            const PaletaEscuraDeTeste escura;
            return (todos + FocoInvisivel(*janela)).join("\n");
        });
        EXPECT_EQ(defeitos.toStdString(), "") << qual;
    }
    // A menu that is open.
    static void ConfereMenu()
    {
        const QString defeitos = NaTela([] {
            QWidget *menu = QApplication::activePopupWidget();
            return menu == nullptr ? QString("no menu") : DefeitosDoLeitor(*menu).join("\n");
        });
        EXPECT_EQ(defeitos.toStdString(), "");
    }
};

TEST_F(AcessibilidadeTeste, MainWindow_WithAListAndTheQuery_TellsEverything)
{
    Percorre([](Teclado &t) {
        t.EsperaJanela("Mesa");
        Confere("desk");
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        Confere("without rows", true);
        NaTela([] { Teclado::Acha("ztlLista_localizar")->setFocus(); });
        t.Tecla(Qt::Key_Space).EsperaLinhas("ztlLista", 1);
        Confere("with rows", true);
        t.Ctrl(Qt::Key_3).EsperaJanela("ConsultaAutuacao");
        Confere("query");
    });
}

TEST_F(AcessibilidadeTeste, Menus_TellTheirEntriesAndKeys)
{
    Percorre([this](Teclado &t) {
        const QString letras = NaTela([this] {
            QString todas;
            for (const QAction *menu : mesa.menuBar()->actions()) {
                if (menu->isVisible()) {
                    todas += menu->text()[menu->text().indexOf('&') + 1];
                }
            }
            return todas;
        });
        EXPECT_GE(letras.size(), 4);
        for (const QChar letra : letras) {
            t.Alt(letra.toLatin1()).EsperaMenu();
            ConfereMenu();
            t.Tecla(Qt::Key_Escape).Espera("the menu is gone", [] {
                return QApplication::activePopupWidget() == nullptr;
            });
            t.Tecla(Qt::Key_Escape);
        }
    });
}

TEST_F(AcessibilidadeTeste, MenuEntry_OfASearch_IsReadWithItsShortcut)
{
    QMenu *equipamentos = mesa.menuBar()->actions().front()->menu();
    equipamentos->popup(QPoint());
    const QStringList lido = LidoNa(*equipamentos);
    equipamentos->close();
    EXPECT_TRUE(std::ranges::any_of(lido, [](const QString &linha) {
        return linha.contains("Equipamentos com trabalho fotográfico") && linha.endsWith("Ctrl+1");
    })) << lido.join("\n").toStdString();
}

TEST_F(AcessibilidadeTeste, Lock_TellsItself)
{
    QMetaObject::invokeMethod(
        &mesa, [this] { mesa.findChild<QAction *>("travar")->trigger(); }, Qt::QueuedConnection);
    Percorre([](Teclado &t) {
        t.EsperaJanela("Trava");
        Confere("lock");
        t.Escreve("senha de saulo\r").EsperaJanela("Mesa");
    });
}

TEST_F(AcessibilidadeTeste, WindowsOfTheMenus_TellThemselves)
{
    Percorre([](Teclado &t) {
        t.Alt('E').EscolheNoMenu("Preferências").Espera("settings", [] { return Teclado::Frente()->isModal(); });
        Confere("settings");
        t.Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
        t.Alt('E').EscolheNoMenu("Trocar minha senha").EsperaJanela("MinhaSenha");
        Confere("password");
        t.Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
        t.Alt('G').EscolheNoMenu("Conferir registro").EsperaJanela("Trabalho").EsperaTexto("fechar", "&Fechar");
        Confere("work");
        t.Alt('F').EsperaJanela("Mesa");
        t.Alt('U').EscolheNoMenu("Sobre").Espera("about", [] { return Teclado::Frente()->isModal(); });
        Confere("about");
        t.Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
        t.Tecla(Qt::Key_F1).EsperaJanela("Ajuda");
        Confere("manual");
        t.Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
    });
}

TEST_F(AcessibilidadeTeste, PagesOfTheAdministration_TellThemselves)
{
    Percorre([](Teclado &t) {
        t.Alt('M').EscolheNoMenu("Usuários").EsperaJanela("Administracao");
        for (const auto &[letra, pagina] :
             {std::pair('C', 1), std::pair('R', 2), std::pair('L', 3), std::pair('Y', 4)}) {
            Confere("administration");
            t.Alt(letra).EsperaPagina("paginas", pagina);
        }
        Confere("layouts");
        t.Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
    });
}

TEST_F(AcessibilidadeTeste, Boxes_TellThemselves)
{
    QMetaObject::invokeMethod(
        &mesa,
        [this] {
            PerguntaSimNao("Desativar o equipamento A1?", &mesa);
            AvisaEmCaixa("O arquivo não pôde ser aberto.", &mesa);
        },
        Qt::QueuedConnection);
    Percorre([](Teclado &t) {
        t.EsperaCaixa("Desativar");
        Confere("question");
        t.Tecla(Qt::Key_Escape).EsperaCaixa("O arquivo");
        Confere("warning");
        t.Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
    });
}

// A box finds its place over the window that it was opened from, however long its text is.
TEST_F(AcessibilidadeTeste, Box_OfALongText_StandsOverItsWindow)
{
    QMetaObject::invokeMethod(
        &mesa,
        [this] {
            PerguntaSimNao(QString("Data de verificação do INMETRO em conflito com a aferição dos dias 26/01/2026 e "
                                   "21/01/2027.\n\nDeseja continuar ?\n\nOBS: caso continue, a data é recalculada.")
                               .repeated(2),
                           &mesa);
        },
        Qt::QueuedConnection);
    Percorre([this](Teclado &t) {
        t.EsperaCaixa("conflito");
        t.Espera("the box stands over the middle of its window", [this] {
            const QWidget *caixa = Teclado::Frente();
            const QPoint longe = caixa->geometry().center() - mesa.geometry().center();
            return caixa != &mesa && longe.manhattanLength() < 60;
        });
        t.Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
    });
}

TEST_F(AcessibilidadeTeste, Error_InAForm_IsHeardAtOnce)
{
    Anunciados().clear();
    Percorre([](Teclado &t) {
        t.Alt('E').EscolheNoMenu("Trocar minha senha").EsperaJanela("MinhaSenha");
        t.Escreve("senha errada\tcurta\tcurta\r");
        t.Espera("something is heard", [] { return !Anunciados().isEmpty(); });
        t.Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
    });
    ASSERT_FALSE(Anunciados().isEmpty());
    EXPECT_TRUE(Anunciados().front().startsWith("Erro: ")) << Anunciados().front().toStdString();
}

} // namespace
