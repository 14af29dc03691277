#include "desk/tour/Telas.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/Entrada.h"
#include "desk/windows/InicioQt.h"
#include "desk/windows/JanelaDeRelato.h"
#include "desk/windows/NovoRegistro.h"
#include "desk/windows/Paletas.h"
#include "desk/windows/VisorPDF.h"
#include "tests/desk/AparenciaDeTeste.h"
#include "tests/desk/Contrastes.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Retrato.h"
#include "tests/desk/Teclado.h"

#include <QApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace mesa;

namespace {

class ContrasteTeste : public MesaTeste, public testing::WithParamInterface<Tema> {
  protected:
    ContrasteTeste()
    {
        const Ref<SessaoServico> ana = registro.Sessao("ana");
        const double documento = GuardaPdf(ana, "certificado");
        Inclui(ana, Poe(EquipamentoDe("A1"),
                        Poe(SensorDe(1), AfericaoDe("111", DataDe(10, 1, 2026), DataDe(10, 1, 2027), documento))));
        aparencia.Poe(GetParam());
    }
    // The window in front, and the main window behind it.
    static void Confere(const QString &nome)
    {
        ExecutaNaTela([&] {
            QWidget &janela = *Teclado::Frente()->window();
            CadaPagina(janela, [&](int pagina) {
                const QString qual =
                    nome + "-" + QString::number(pagina) + (GetParam() == Tema::Claro ? "-clara" : "-escura");
                Fotografa(janela, "contraste-" + qual);
                EXPECT_EQ(PoucoContraste(janela).join("\n").toStdString(), "") << qual.toStdString();
            });
        });
    }
    static void Percorre(const std::function<void(Teclado &)> &jornada) { EXPECT_EQ(Teclado::Percorre(jornada), ""); }

    AparenciaDeTeste aparencia{preferencias};
};

INSTANTIATE_TEST_SUITE_P(Temas, ContrasteTeste, testing::Values(Tema::Claro, Tema::Escuro),
                         [](const auto &caso) { return caso.param == Tema::Claro ? "Clara" : "Escura"; });

} // namespace

TEST(Contrastes, TextThatCanHardlyBeRead_IsFound)
{
    QWidget janela;
    auto *leiaute = new QVBoxLayout(&janela);
    auto *boa = new QLabel("pode ser lido", &janela);
    auto *fraca = new QLabel("mal pode ser lido", &janela);
    fraca->setObjectName("fraca");
    leiaute->addWidget(boa);
    leiaute->addWidget(fraca);
    QPalette cores = PaletaClara();
    cores.setColor(QPalette::WindowText, QColor("#a0a0a0"));
    fraca->setPalette(cores);
    janela.setPalette(PaletaClara());
    janela.show();
    const QStringList achados = PoucoContraste(janela);
    EXPECT_EQ(achados.filter("fraca").size(), 1) << achados.join("\n").toStdString();
    EXPECT_EQ(achados.size(), 1) << achados.join("\n").toStdString();
}

// The frame of a button that has the keyboard is not behind its text; the button is.
TEST(Contrastes, ButtonWithTheKeyboard_IsJudgedByWhatIsBehindItsText)
{
    QWidget janela;
    auto *leiaute = new QVBoxLayout(&janela);
    auto *botao = new QPushButton("Fechar", &janela);
    leiaute->addWidget(botao);
    janela.setPalette(PaletaEscura());
    janela.show();
    janela.activateWindow();
    botao->setDefault(true);
    botao->setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
    ASSERT_TRUE(botao->hasFocus());
    EXPECT_EQ(PoucoContraste(janela).join("\n").toStdString(), "");
    QPalette cores = PaletaEscura();
    cores.setColor(QPalette::ButtonText, QColor("#909090"));
    botao->setPalette(cores);
    EXPECT_EQ(PoucoContraste(janela).size(), 1);
}

TEST_P(ContrasteTeste, WindowsOfTheJob_EverythingCanBeRead)
{
    Entra();
    Percorre([](Teclado &t) {
        t.EsperaJanela("Mesa");
        Confere("mesa");
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('L').EsperaLinhas("ztlLista", 1).TabAte("ztlLista/linhas");
        Confere("lista");
        t.Alt('T').EsperaJanela("frmEquipDetalhes");
        Confere("detalhes");
        t.Tecla(Qt::Key_F1).EsperaJanela("Ajuda");
        Confere("ajuda");
        t.Tecla(Qt::Key_Escape).EsperaJanela("frmEquipDetalhes");
        ExecutaNaTela([] { QMetaObject::invokeMethod(Teclado::Frente(), &QWidget::close, Qt::QueuedConnection); });
        t.EsperaJanela("frmLista").Alt('E').EscolheNoMenu("trabalho fotográfico").EsperaJanela("frmLista");
        t.Alt('N').EsperaJanela("frmEquipDetalhes");
        Confere("inclusao");
        ExecutaNaTela([] { QMetaObject::invokeMethod(Teclado::Frente(), &QWidget::close, Qt::QueuedConnection); });
        t.EsperaJanela("frmLista");
        t.Ctrl(Qt::Key_3).EsperaJanela("ConsultaAutuacao");
        Confere("consulta");
        t.Alt('E').EscolheNoMenu("Preferências...").EsperaJanela("Preferencias");
        Confere("preferencias");
        t.Alt('E').EsperaCaixa("Esquecer?");
        Confere("caixa");
        t.Tecla(Qt::Key_Escape).EsperaJanela("Preferencias");
        t.Tecla(Qt::Key_Escape).EsperaJanela("ConsultaAutuacao");
        t.Alt('U').EscolheNoMenu("Sobre").EsperaJanela("Sobre");
        Confere("sobre");
        t.Tecla(Qt::Key_Escape).EsperaJanela("ConsultaAutuacao");
    });
}

TEST_P(ContrasteTeste, DesksOwnWindows_EverythingCanBeRead)
{
    const auto confere = [](QWidget &janela, const char *nome) {
        janela.show();
        QCoreApplication::processEvents();
        Fotografa(janela, QString("contraste-%1-%2").arg(nome, GetParam() == Tema::Claro ? "clara" : "escura"));
        EXPECT_EQ(PoucoContraste(janela).join("\n").toStdString(), "") << nome;
    };
    const auto amostra = Servicos::Cria(pasta.filePath("amostra.db").toStdString(), TipoDeRegistro::Amostra,
                                        [] { return Instante(DataDe(20, 11, 2026, 9, 30, 0)); });
    Entrada entrada(amostra, preferencias, std::nullopt, nullptr);
    MostraAviso(*entrada.findChild<QLabel *>("aviso"), "Usuário ou senha incorretos.");
    MostraAviso(*entrada.findChild<QLabel *>("senhaMaiusculas"), "Caps Lock está ligado.");
    entrada.findChild<QLabel *>("senhaMaiusculas")->show();
    confere(entrada, "entrada");
    NovoRegistro novo([](const RegistroNovo &) { return std::nullopt; });
    confere(novo, "novo");
    JanelaDeRelato relato("Conferir registro", "Foram achadas diferenças.", {"A", "B"}, nullptr);
    confere(relato, "relato");
    VisorPDF visor(nullptr);
    confere(visor, "visor");
}

TEST_P(ContrasteTeste, PaletteChangesWhileAModalWindowIsOpenAndWhileLocked_EverythingFollows)
{
    Entra();
    const Tema outro = GetParam() == Tema::Claro ? Tema::Escuro : Tema::Claro;
    Percorre([&](Teclado &t) {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('N').EsperaJanela("frmEquipDetalhes");
        ExecutaNaTela([&] { aparencia.Poe(outro); });
        ExecutaNaTela([&] {
            for (QWidget *janela : QApplication::topLevelWidgets()) {
                if (janela->isVisible()) {
                    EXPECT_EQ(EhEscura(janela->palette()), outro == Tema::Escuro) << S(janela->objectName());
                    EXPECT_EQ(PoucoContraste(*janela).join("\n").toStdString(), "") << S(janela->objectName());
                }
            }
        });
        ExecutaNaTela([] { QMetaObject::invokeMethod(Teclado::Frente(), &QWidget::close, Qt::QueuedConnection); });
        t.EsperaJanela("frmLista").Ctrl(Qt::Key_L).EsperaJanela("Trava");
        ExecutaNaTela([&] { aparencia.Poe(GetParam()); });
        ExecutaNaTela([&] {
            EXPECT_EQ(PoucoContraste(*Teclado::Frente()).join("\n").toStdString(), "");
            const QWidget *area = Principal()->findChild<QMdiArea *>();
            EXPECT_EQ(qobject_cast<const QMdiArea *>(area)->background().color(), CorDe(Cor::Area));
            EXPECT_EQ(Principal()->grab().toImage().pixelColor(100, 100), CorDe(Cor::Area));
        });
        t.Escreve("senha de ana\r").EsperaJanela("frmLista");
    });
}
