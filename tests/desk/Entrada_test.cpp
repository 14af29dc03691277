#include "desk/host/VigiaDeMaiusculas.h"
#include "desk/tour/Telas.h"
#include "desk/windows/CampoDeSenha.h"
#include "desk/windows/Cores.h"
#include "desk/windows/Entrada.h"
#include "tests/desk/AparenciaDeTeste.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Retrato.h"
#include "tests/desk/Teclado.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

using namespace mesa;

namespace {

constexpr const char *SenhaDeAna = "senha de ana";

class EntradaTeste : public MesaTeste {
  protected:
    EntradaTeste() { registro.Sessao("ana"); }

    void PedeEntrada()
    {
        mesa.show();
        QMetaObject::invokeMethod(
            &mesa, [this] { entrou = mesa.PedeEntrada(); }, Qt::QueuedConnection);
    }
    static void Percorre(const std::function<void(Teclado &)> &jornada) { EXPECT_EQ(Teclado::Percorre(jornada), ""); }
    static QString TextoEm(const QString &nome)
    {
        return NaTela([&] { return TextoDe(Teclado::Acha(nome)); });
    }
    static bool Visivel(const QString &nome)
    {
        return NaTela([&] { return Teclado::Acha(nome) != nullptr && Teclado::Acha(nome)->isVisible(); });
    }
    static QLineEdit::EchoMode Eco()
    {
        return NaTela([] { return qobject_cast<QLineEdit *>(Teclado::Acha("senha"))->echoMode(); });
    }

    bool entrou = false;
};

} // namespace

TEST(VigiaDeMaiusculas, Letters_AgainstShift_TellCapsLock)
{
    VigiaDeMaiusculas vigia;
    EXPECT_FALSE(vigia.Ligado());
    vigia.Digitou("A", true);
    EXPECT_FALSE(vigia.Ligado());
    vigia.Digitou("Ç", false);
    EXPECT_TRUE(vigia.Ligado());
    vigia.Digitou("1", false); // tells nothing
    EXPECT_TRUE(vigia.Ligado());
    vigia.Digitou("", true);
    EXPECT_TRUE(vigia.Ligado());
    vigia.Digitou("a", true);
    EXPECT_TRUE(vigia.Ligado());
    vigia.Digitou("é", false);
    EXPECT_FALSE(vigia.Ligado());
}

TEST(VigiaDeMaiusculas, TheKeyItself_CountsOnlyOnceSomethingIsKnown)
{
    VigiaDeMaiusculas vigia;
    vigia.Trocou();
    EXPECT_FALSE(vigia.Ligado());
    vigia.Digitou("A", false);
    vigia.Trocou();
    EXPECT_FALSE(vigia.Ligado());
    vigia.Trocou();
    EXPECT_TRUE(vigia.Ligado());
    vigia.Soube(false);
    EXPECT_FALSE(vigia.Ligado());
}

TEST_F(EntradaTeste, CapsLock_IsToldWhileThePasswordIsTyped)
{
    PedeEntrada();
    Percorre([](Teclado &t) {
        t.EsperaJanela("Entrada").Escreve("ANA\t"); // upper case by Shift or not, the name has no secret
        EXPECT_FALSE(Visivel("senhaMaiusculas"));
        ExecutaNaTela([] {
            QKeyEvent tecla(QEvent::KeyPress, Qt::Key_C, Qt::NoModifier, "C");
            QApplication::sendEvent(Teclado::Acha("senha"), &tecla);
        });
        t.EsperaTexto("senhaMaiusculas", "Caps Lock está ligado.");
        EXPECT_TRUE(Visivel("senhaMaiusculas"));
        ExecutaNaTela([] {
            EXPECT_EQ(Teclado::Acha("senha")->accessibleDescription(), "Caps Lock está ligado.");
            EXPECT_EQ(DefeitosDaJanela(*Teclado::Frente()).join("\n").toStdString(), "");
            Fotografa(*Teclado::Frente(), "entrada-caps-lock");
        });
        t.Tecla(Qt::Key_CapsLock);
        t.Espera("nothing is said any more", [] { return Teclado::Acha("senhaMaiusculas") == nullptr; });
        t.Tecla(Qt::Key_Escape);
    });
}

TEST_F(EntradaTeste, Password_IsShownByKeyAndHiddenAgainByEachTry)
{
    PedeEntrada();
    Percorre([](Teclado &t) {
        t.EsperaJanela("Entrada").Escreve("ana\terrada123");
        EXPECT_EQ(Eco(), QLineEdit::Password);
        t.Ctrl(Qt::Key_M);
        t.Espera("the password is seen",
                 [] { return qobject_cast<QLineEdit *>(Teclado::Acha("senha"))->echoMode() == QLineEdit::Normal; });
        ExecutaNaTela([] {
            const auto *olho = Teclado::Acha("senha")->findChild<QToolButton *>("senhaMostrar");
            EXPECT_EQ(olho->text(), "Esconder a senha");
            EXPECT_TRUE(olho->toolTip().startsWith("Esconder a senha (Ctrl+M"));
        });
        t.Tecla(Qt::Key_Return);
        t.Espera("the refusal", [] { return !TextoDe(Teclado::Acha("aviso")).isEmpty(); });
        EXPECT_EQ(Eco(), QLineEdit::Password);
        t.EsperaFoco("senha");
        ExecutaNaTela([] {
            auto *olho = Teclado::Acha("senha")->findChild<QToolButton *>("senhaMostrar");
            QTest::mouseClick(olho, Qt::LeftButton);
            EXPECT_EQ(qobject_cast<QLineEdit *>(Teclado::Acha("senha"))->echoMode(), QLineEdit::Normal);
        });
        t.Tecla(Qt::Key_Escape);
    });
}

TEST_F(EntradaTeste, LastUser_IsOfferedWithTheKeyboardInThePassword)
{
    PedeEntrada();
    Percorre([](Teclado &t) {
        t.EsperaJanela("Entrada").EsperaFoco("usuario").Escreve("ana\tsenha de ana\r");
        t.EsperaTexto("estadoUsuario", "Usuário: Ana Souza");
        t.Alt('E').EscolheNoMenu("Trocar de usuário").EsperaJanela("Entrada").EsperaFoco("senha");
        EXPECT_EQ(TextoEm("usuario"), "ana");
        t.Tecla(Qt::Key_Escape);
    });
    EXPECT_EQ(preferencias.UltimoUsuario(registro.Aberto().Identificador()), "ana");
}

TEST_F(EntradaTeste, LastUser_WhoIsRefusedIsNone_AndWhoDoesNotLikeItIsForgotten)
{
    const auto servicos = mesa::Servicos::Abre(registro.Caminho(), Agora());
    Entrada janela(servicos, preferencias, std::nullopt, nullptr);
    janela.show();
    auto *senha = janela.findChild<CampoDeSenha *>("senha");
    QTest::keyClicks(janela.findChild<QLineEdit *>("usuario"), "ana");
    QTest::keyClicks(senha, "errada");
    QTest::keyClick(senha, Qt::Key_Return);
    EXPECT_TRUE(janela.Sessao().Nada());
    EXPECT_EQ(preferencias.UltimoUsuario(servicos->Identificador()), "");

    preferencias.LembraUltimoUsuario(servicos->Identificador(), "bruno");
    QTest::keyClick(janela.findChild<QCheckBox *>("lembrar"), Qt::Key_Space);
    QTest::keyClicks(senha, SenhaDeAna);
    QTest::keyClick(senha, Qt::Key_Return);
    EXPECT_FALSE(janela.Sessao().Nada());
    EXPECT_EQ(preferencias.UltimoUsuario(servicos->Identificador()), "");
    EXPECT_FALSE(preferencias.LembraUsuario());
}

TEST_F(EntradaTeste, TextTwiceAsLarge_NothingOfTheSignInIsCut)
{
    AparenciaDeTeste aparencia(preferencias);
    for (const Tema tema : {Tema::Claro, Tema::Escuro}) {
        aparencia.Poe(tema, 200);
        Entrada janela(mesa::Servicos::Abre(registro.Caminho(), Agora()), preferencias, std::nullopt, nullptr);
        janela.show();
        Fotografa(janela, tema == Tema::Claro ? "entrada-200" : "entrada-200-escura");
        EXPECT_EQ(DefeitosDaJanela(janela).join("\n").toStdString(), "");
        aparencia.Poe(tema, 80); // while it is open
        aparencia.Poe(tema, 200);
        EXPECT_EQ(DefeitosDaJanela(janela).join("\n").toStdString(), "");
    }
}

TEST_F(EntradaTeste, Settings_ByKeys_ChangeTheOpenWindowsAtOnceAndForget)
{
    AparenciaDeTeste aparencia(preferencias);
    Entra();
    preferencias.LembraUltimoUsuario("r1", "ana");
    Percorre([](Teclado &t) {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('E').EscolheNoMenu("Preferências...").EsperaJanela("Preferencias");
        ExecutaNaTela([] {
            Fotografa(*Teclado::Frente(), "preferencias-completas");
            EXPECT_EQ(DefeitosDaJanela(*Teclado::Frente()).join("\n").toStdString(), "");
        });
        t.Alt('T').EsperaFoco("tema").DesceAte("Escuro");
        t.Alt('X').EsperaFoco("tamanhoDoTexto").DesceAte("150 %");
        t.Tecla(Qt::Key_Return).EsperaJanela("frmLista");
        t.Espera("the dark colours", [] { return EhEscura(Teclado::Acha("ztlLista")->palette()); });
        t.Alt('E').EscolheNoMenu("Preferências...").EsperaJanela("Preferencias");
        t.Alt('E').EsperaCaixa("serão esquecidos").Alt('S').EsperaCaixa("O que foi lembrado foi esquecido.");
        t.Tecla(Qt::Key_Return).EsperaJanela("Preferencias").Tecla(Qt::Key_Escape).EsperaJanela("frmLista");
    });
    EXPECT_EQ(preferencias.Aspecto(), (Aspecto{Tema::Escuro, 150, ""}));
    EXPECT_EQ(preferencias.UltimoUsuario("r1"), "");
}
