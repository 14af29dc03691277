#include "desk/host/Ociosidade.h"
#include "desk/host/Titulo.h"
#include "desk/tour/Telas.h"
#include "desk/windows/Entrada.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Retrato.h"
#include "tests/desk/Teclado.h"

#include <QAction>
#include <QApplication>
#include <QMessageBox>
#include <QTest>

#include <gtest/gtest.h>

using namespace mesa;

namespace {

constexpr std::int32_t Minuto = 60;

class TravaTeste : public MesaTeste {
  protected:
    TravaTeste()
    {
        Inclui(registro.Sessao("ana"), EquipamentoDe("A1"));
        registro.Cadastra("elisa");
        Entra();
    }
    // The clock goes on, and the desk looks at it, in the windows' thread.
    void Passam(std::int32_t minutos)
    {
        ExecutaNaTela([this, minutos] {
            registro.PassaSegundos(minutos * Minuto);
            QMetaObject::invokeMethod(
                &mesa, [this] { mesa.ConfereOciosidade(); }, Qt::QueuedConnection);
        });
    }
    static bool Aberta(const char *nome)
    {
        return NaTela([&] {
            const auto janelas = QApplication::topLevelWidgets();
            return std::any_of(janelas.begin(), janelas.end(),
                               [&](QWidget *janela) { return janela->objectName() == nome && janela->isVisible(); });
        });
    }
    // Of what is seen besides the lock: windows that show anything, and those that say whose they are.
    static QStringList Descobertas()
    {
        return NaTela([] {
            QStringList descobertas;
            for (const QWidget *janela : QApplication::topLevelWidgets()) {
                if (!janela->isVisible() || janela->objectName() == "Trava") {
                    continue;
                }
                const auto *cortina = janela->findChild<QWidget *>("cortina", Qt::FindDirectChildrenOnly);
                const QWidget *deCima = nullptr; // of what is inside
                for (const QWidget *dentro : janela->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
                    deCima = dentro->isWindow() ? deCima : dentro;
                }
                if (cortina == nullptr || !cortina->isVisible() || cortina->geometry() != janela->rect() ||
                    deCima != cortina || janela->windowTitle() != "Travado") {
                    descobertas << janela->objectName();
                }
            }
            return descobertas;
        });
    }
    static void AbreInclusao(Teclado &t)
    {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('N').EsperaJanela("frmEquipDetalhes");
        t.TabAte("txtCodEquip").Escreve("NOVO1").Feito(); // the minutes begin after the last key
    }
    static void Percorre(const std::function<void(Teclado &)> &jornada) { EXPECT_EQ(Teclado::Percorre(jornada), ""); }
};

TEST(Ociosidade, PassesAfterItsMinutesWithoutUse)
{
    Data agora = DataDe(20, 11, 2026, 10, 0, 0);
    const auto passam = [&](double segundos) { agora.Valor += segundos / 86400; };
    Ociosidade ociosidade(15, [&] { return agora; });
    passam(14 * 60 + 59);
    EXPECT_FALSE(ociosidade.Passou());
    passam(1);
    EXPECT_TRUE(ociosidade.Passou());
    ociosidade.Usa();
    EXPECT_FALSE(ociosidade.Passou());
    passam(-3600); // somebody sets the clock
    EXPECT_FALSE(ociosidade.Passou());
    passam(15 * 60);
    EXPECT_TRUE(ociosidade.Passou());
    ociosidade.DefineMinutos(0);
    passam(1e6);
    EXPECT_FALSE(ociosidade.Passou());
}

TEST_F(TravaTeste, IdleDesk_Locks_AndComesBackWithWhatWasTyped)
{
    Percorre([this](Teclado &t) {
        AbreInclusao(t);
        Passam(14);
        t.EsperaFoco("txtCodEquip");
        Passam(1);
        t.EsperaJanela("Trava").EsperaFoco("senha").EsperaTexto("usuario", "ana");
        EXPECT_EQ(Descobertas(), QStringList());
        t.Escreve("senha errada\r").EsperaTexto("aviso", "Usuário ou senha incorretos.");
        t.Tecla(Qt::Key_Escape).EsperaJanela("Trava");
        t.Escreve("senha de ana\r").EsperaJanela("frmEquipDetalhes").EsperaTexto("txtCodEquip", "NOVO1");
        EXPECT_EQ(NaTela([&] { return mesa.findChildren<QWidget *>("cortina").size(); }), 0);
        EXPECT_EQ(NaTela([&] { return mesa.windowTitle(); }), "Registro de Equipamentos");
        t.EsperaTexto("estadoUsuario", "Usuário: Ana Souza");
        t.Alt('C').EsperaCaixa("Foram feitas alterações").Alt('S').EsperaJanela("frmLista");
    });
}

TEST_F(TravaTeste, LockedDesk_AnotherUser_ClosesTheWindowsAndSignsIn)
{
    Percorre([this](Teclado &t) {
        AbreInclusao(t);
        Passam(15);
        t.EsperaJanela("Trava");
        t.Alt('T').EsperaCaixa("As janelas de Ana Souza serão fechadas").Alt('N').EsperaJanela("Trava");
        t.Alt('T').EsperaCaixa("As janelas de Ana Souza serão fechadas").Alt('S');
        t.EsperaJanela("Entrada").EsperaTexto("estadoUsuario", "Ninguém entrou");
        t.Escreve("elisa\tsenha de elisa\r").EsperaTexto("estadoUsuario", "Usuário: Elisa Prado");
        t.EsperaJanela("Mesa");
    });
    EXPECT_EQ(mesa.Hospedeiro()->Plataforma()->NroForms(), 0);
    EXPECT_EQ(registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO WHERE Codigo = 'NOVO1'"), "0");
}

TEST_F(TravaTeste, QuestionThatIsOpen_IsStillThereAfterTheLock)
{
    Percorre([this](Teclado &t) {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('L').EsperaLinhas("ztlLista", 1).TabAte("ztlLista/linhas");
        t.Tecla(Qt::Key_F10, Qt::ShiftModifier).EscolheNoMenu("Desativar").EsperaCaixa("Deseja");
        Passam(15);
        t.EsperaJanela("Trava");
        EXPECT_EQ(Descobertas(), QStringList());
        t.Escreve("senha de ana\r").EsperaCaixa("Deseja").Alt('S');
        t.EsperaCaixa("Não foram encontrados").Tecla(Qt::Key_Return).EsperaJanela("frmLista");
    });
    EXPECT_EQ(registro.Sql("SELECT Ativo FROM EQUIPAMENTO"), "2");
}

TEST_F(TravaTeste, Key_KeepsTheDeskOpen)
{
    Percorre([this](Teclado &t) {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        Passam(14);
        t.Tecla(Qt::Key_Tab).Feito();
        Passam(14);
        t.EsperaJanela("frmLista");
        EXPECT_FALSE(Aberta("Trava"));
    });
}

TEST_F(TravaTeste, Setting_OfZero_NeverLocks)
{
    Percorre([this](Teclado &t) {
        t.Alt('E').EscolheNoMenu("Preferências").EsperaJanela("Preferencias").EsperaFoco("minutos");
        t.EsperaTexto("minutos", "15").Escreve("9999\r").EsperaTexto("aviso", "Informe de 0 a 1440 minutos.");
        t.Ctrl(Qt::Key_A).Escreve("0\r").EsperaJanela("Mesa");
        Passam(100000);
        t.EsperaJanela("Mesa");
        EXPECT_FALSE(Aberta("Trava"));
        t.Ctrl(Qt::Key_L).EsperaJanela("Trava").Escreve("senha de ana\r").EsperaJanela("Mesa");
    });
    EXPECT_EQ(preferencias.MinutosAteTravar(), 0);
}

TEST_F(TravaTeste, Pictures_OfSignInAndLock_AreWithoutADefect)
{
    const auto servicos = Servicos::Abre(registro.Caminho(), Agora());
    Operador ana;
    ana.Usuario = "ana";
    ana.Nome = "Ana Souza";
    for (const auto &[nome, quem] :
         {std::pair("entrada", std::optional<Operador>()), std::pair("trava", std::optional(ana))}) {
        Entrada janela(servicos, preferencias, quem, nullptr);
        janela.show();
        Fotografa(janela, nome);
        EXPECT_EQ(DefeitosDaJanela(janela).join("\n").toStdString(), "") << nome;
    }
}

TEST(TituloDoRegistro, OfASample_SaysSoOnEveryWindow)
{
    QTemporaryDir pasta;
    const auto manha = [] { return Instante(DataDe(20, 11, 2026, 9, 30, 0)); };
    const auto amostra = Servicos::Cria(pasta.filePath("registro.db").toStdString(), TipoDeRegistro::Amostra, manha);
    Preferencias preferencias(pasta.filePath("preferencias.ini").toStdString());
    const Mesa mesa(
        amostra, pasta.path().toStdString(), [] { return DataDe(20, 11, 2026, 9, 30, 0); }, preferencias);
    EXPECT_EQ(mesa.windowTitle().toStdString(), "AMOSTRA - Registro de Equipamentos");
    Entrada entrada(amostra, preferencias, std::nullopt, nullptr);
    entrada.show();
    EXPECT_EQ(entrada.windowTitle().toStdString(), "AMOSTRA - Registro de Equipamentos - Entrada");
    Fotografa(entrada, "entrada-amostra");
    EXPECT_EQ(DefeitosDaJanela(entrada).join("\n").toStdString(), "");
}

} // namespace
