#include "desk/host/FichaDasPreferencias.h"
#include "desk/windows/Cores.h"
#include "desk/windows/Icones.h"
#include "desk/windows/Paletas.h"
#include "tests/desk/AparenciaDeTeste.h"

#include <QDir>
#include <QLabel>
#include <QTemporaryDir>
#include <QToolTip>

#include <gtest/gtest.h>

#include <fstream>

using namespace mesa;

namespace {

class AparenciaTeste : public testing::Test {
  protected:
    std::string Arquivo() const { return pasta.filePath("preferencias.ini").toStdString(); }
    static bool Escura() { return EhEscura(QApplication::palette()); }

    QTemporaryDir pasta;
    Preferencias preferencias{Arquivo()};
};

// The least contrast of what the icon draws, which is what its strongest points have, against the ground.
double ContrasteDoIcone(const QIcon &icone, const QColor &fundo)
{
    const QImage desenho = icone.pixmap(48, 48).toImage();
    double maior = 1;
    for (int y = 0; y < desenho.height(); ++y) {
        for (int x = 0; x < desenho.width(); ++x) {
            if (desenho.pixelColor(x, y).alpha() == 255) {
                maior = std::max(maior, Contraste(desenho.pixelColor(x, y), fundo));
            }
        }
    }
    return maior;
}

} // namespace

TEST_F(AparenciaTeste, System_NoWish_AsTheSystemIs)
{
    const AparenciaDeTeste aparencia(preferencias);
    EXPECT_FALSE(Escura());
}

TEST_F(AparenciaTeste, System_WishChanges_PaletteOfAnOpenWindowFollows)
{
    AparenciaDeTeste aparencia(preferencias);
    QLabel aberta("texto");
    aberta.show();
    aparencia.Deseja(DesejoDeCores::Escuro);
    EXPECT_TRUE(EhEscura(aberta.palette()));
    EXPECT_TRUE(EhEscura(QToolTip::palette()));
    aparencia.Deseja(DesejoDeCores::Claro);
    EXPECT_FALSE(EhEscura(aberta.palette()));
    EXPECT_FALSE(EhEscura(QToolTip::palette()));
    aparencia.Deseja(DesejoDeCores::Escuro);
    aparencia.Deseja(DesejoDeCores::Nenhum);
    EXPECT_FALSE(EhEscura(aberta.palette()));
}

TEST_F(AparenciaTeste, ThemeOfTheSettings_CountsMoreThanTheWish)
{
    AparenciaDeTeste aparencia(preferencias);
    aparencia.Deseja(DesejoDeCores::Escuro);
    aparencia.Poe(Tema::Claro);
    EXPECT_FALSE(Escura());
    aparencia.Deseja(DesejoDeCores::Claro);
    aparencia.Poe(Tema::Escuro);
    EXPECT_TRUE(Escura());
    aparencia.Poe(Tema::Sistema);
    EXPECT_FALSE(Escura());
}

TEST_F(AparenciaTeste, AtItsEnd_EverythingIsAsBefore)
{
    const QFont letra = QApplication::font();
    const QPalette paleta = QApplication::palette();
    {
        AparenciaDeTeste aparencia(preferencias);
        aparencia.Poe(Tema::Escuro, 200);
        EXPECT_NE(QApplication::font(), letra);
    }
    EXPECT_EQ(QApplication::font(), letra);
    EXPECT_EQ(QApplication::palette(), paleta);
}

TEST_F(AparenciaTeste, TextSize_IsThatPartOfTheSystems_OfOpenWindowsToo)
{
    const double antes = QApplication::font().pointSizeF();
    AparenciaDeTeste aparencia(preferencias);
    QLabel aberta("texto");
    aberta.show();
    aparencia.Poe(Tema::Sistema, 200);
    EXPECT_DOUBLE_EQ(aberta.font().pointSizeF(), antes * 2);
    aparencia.Poe(Tema::Sistema, 80);
    EXPECT_DOUBLE_EQ(aberta.font().pointSizeF(), antes * 0.8);
    aparencia.Poe(Tema::Sistema, 100);
    EXPECT_DOUBLE_EQ(aberta.font().pointSizeF(), antes);
}

TEST_F(AparenciaTeste, SettingsFileWithNonsense_GoesOnAsIfThereWereNone)
{
    std::ofstream(pasta.filePath("lixo.ini").toStdString())
        << "[aspecto]\ntema=@Invalid()\ntamanhoDoTexto=enorme\nimpressora=\\x0\n[entrada]\nlembraUsuario=7\n";
    const Preferencias lixo(pasta.filePath("lixo.ini").toStdString());
    EXPECT_EQ(lixo.Aspecto().Cores, Tema::Sistema);
    EXPECT_EQ(lixo.Aspecto().TamanhoDoTexto, 100);
    EXPECT_TRUE(lixo.LembraUsuario());
    std::ofstream(pasta.filePath("longe.ini").toStdString()) << "[aspecto]\ntema=roxo\ntamanhoDoTexto=100000\n";
    EXPECT_EQ(Preferencias(pasta.filePath("longe.ini").toStdString()).Aspecto().TamanhoDoTexto, 200);
    EXPECT_EQ(Preferencias(pasta.filePath("longe.ini").toStdString()).Aspecto().Cores, Tema::Sistema);
}

TEST_F(AparenciaTeste, Aspect_IsReadAgainFromTheFile)
{
    const Aspecto escolhido{Tema::Escuro, 125, "Recepção \"1\""};
    preferencias.DefineAspecto(escolhido);
    EXPECT_EQ(Preferencias(Arquivo()).Aspecto(), escolhido);
}

TEST(Paletas, OwnOnes_EveryPairOfTextAndGround_CanBeRead)
{
    for (const QPalette &paleta : {PaletaClara(), PaletaEscura()}) {
        EXPECT_EQ(Retoques(paleta).resolveMask(), 0U);
        EXPECT_GE(Contraste(paleta.color(QPalette::Text), paleta.color(QPalette::AlternateBase)), 4.5);
        EXPECT_GE(Contraste(paleta.color(QPalette::PlaceholderText), paleta.color(QPalette::Window)), 4.5);
    }
}

TEST(Paletas, Retoques_OfASystemWithPaleTexts_MakesThemReadableAndLeavesTheRest)
{
    QPalette paleta = PaletaClara();
    paleta.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 80));
    paleta.setColor(QPalette::Highlight, QColor("#a0c4ff"));
    paleta.setColor(QPalette::Disabled, QPalette::WindowText, QColor("#dddddd"));
    const QPalette retoques = Retoques(paleta);
    const QPalette vista = retoques.resolve(paleta);
    EXPECT_GE(Contraste(vista.color(QPalette::PlaceholderText), vista.color(QPalette::Base)), 4.5);
    EXPECT_GE(Contraste(vista.color(QPalette::Highlight), vista.color(QPalette::HighlightedText)), 4.5);
    EXPECT_GE(Contraste(vista.color(QPalette::Disabled, QPalette::WindowText),
                        vista.color(QPalette::Disabled, QPalette::Window)),
              3.0);
    EXPECT_EQ(vista.color(QPalette::WindowText), paleta.color(QPalette::WindowText));
    EXPECT_EQ(vista.color(QPalette::Base), paleta.color(QPalette::Base));
    EXPECT_EQ(Retoques(vista).resolveMask(), 0U);
}

TEST_F(AparenciaTeste, Icons_EachOne_IsSeenOnLightAndOnDark)
{
    AparenciaDeTeste aparencia(preferencias);
    for (const Tema tema : {Tema::Claro, Tema::Escuro}) {
        aparencia.Poe(tema);
        const QStringList nomes = QDir(":/icones").entryList({"*.svg"});
        EXPECT_GT(nomes.size(), 20);
        for (const QString &arquivo : nomes) {
            for (const auto fundo : {QPalette::Window, QPalette::Base, QPalette::Button}) {
                EXPECT_GE(ContrasteDoIcone(Icone(arquivo.chopped(4)), QApplication::palette().color(fundo)), 3.0)
                    << arquivo.toStdString() << ' ' << static_cast<int>(tema);
            }
        }
    }
}

TEST_F(AparenciaTeste, IconOnALabel_FollowsThePalette)
{
    AparenciaDeTeste aparencia(preferencias);
    QLabel marca;
    PoeIcone(marca, "localizar", 48);
    marca.show();
    aparencia.Poe(Tema::Escuro);
    EXPECT_GE(ContrasteDoIcone(QIcon(marca.pixmap(Qt::ReturnByValue)), marca.palette().color(QPalette::Window)), 3.0);
}

TEST(Icones, OneThatThereIsNot_IsEmpty)
{
    EXPECT_TRUE(Icone("nenhum").isNull());
    EXPECT_FALSE(HaIcone("nenhum"));
    EXPECT_TRUE(Icone("olho").pixmap(16, 16, QIcon::Disabled).toImage() !=
                Icone("olho").pixmap(16, 16, QIcon::Normal).toImage());
}

TEST_F(AparenciaTeste, Ficha_Saved_SettingsHaveWhatWasChosen)
{
    Ficha ficha = FichaDasPreferencias(preferencias, {"Recepção", "Arquivo"}, {});
    EXPECT_EQ(ficha.Valor("tema"), "0");
    EXPECT_EQ(ficha.Valor("tamanhoDoTexto"), "100");
    EXPECT_EQ(ficha.Valor("impressora"), "");
    EXPECT_EQ(ficha.Campo("impressora").Opcoes.size(), 3U);
    ficha.Campo("tema").Valor = "2";
    ficha.Campo("tamanhoDoTexto").Valor = "150";
    ficha.Campo("impressora").Valor = "Arquivo";
    ficha.Campo("minutos").Valor = "7";
    ficha.Campo("lembraUsuario").Valor = "2";
    EXPECT_FALSE(ficha.Salva(ficha).has_value());
    EXPECT_EQ(preferencias.Aspecto(), (Aspecto{Tema::Escuro, 150, "Arquivo"}));
    EXPECT_EQ(preferencias.MinutosAteTravar(), 7);
    EXPECT_FALSE(preferencias.LembraUsuario());
}

TEST_F(AparenciaTeste, Ficha_Refused_NothingIsKept)
{
    Ficha ficha = FichaDasPreferencias(preferencias, {}, {});
    ficha.Campo("tema").Valor = "2";
    ficha.Campo("minutos").Valor = "1441";
    const auto problema = ficha.Salva(ficha);
    ASSERT_TRUE(problema.has_value());
    EXPECT_EQ(problema->Campo, "minutos");
    EXPECT_EQ(preferencias.Aspecto(), Aspecto());
}

TEST_F(AparenciaTeste, Ficha_PrinterThatIsGoneAndSizeOfTheFile_AreStillThere)
{
    preferencias.DefineAspecto({Tema::Sistema, 137, "Antiga"});
    Ficha ficha = FichaDasPreferencias(preferencias, {"Nova"}, {});
    EXPECT_EQ(ficha.Valor("impressora"), "Antiga");
    EXPECT_EQ(ficha.Campo("impressora").Opcoes.back().Texto, "Antiga (não encontrada)");
    EXPECT_EQ(ficha.Campo("tamanhoDoTexto").Opcoes.size(), 9U);
    EXPECT_FALSE(ficha.Salva(ficha).has_value());
    EXPECT_EQ(preferencias.Aspecto(), (Aspecto{Tema::Sistema, 137, "Antiga"}));
}

TEST_F(AparenciaTeste, Ficha_Forget_UsersAndWhatIsRememberedOfWhoIsAtWork)
{
    preferencias.LembraUltimoUsuario("r1", "ana");
    bool esquecido = false;
    const Ficha ficha = FichaDasPreferencias(preferencias, {}, [&] { esquecido = true; });
    ASSERT_EQ(ficha.Comandos.size(), 1U);
    ficha.Comandos[0].Faz();
    EXPECT_TRUE(esquecido);
    EXPECT_EQ(preferencias.UltimoUsuario("r1"), "");
    FichaDasPreferencias(preferencias, {}, {}).Comandos[0].Faz(); // while nobody is in
}

TEST_F(AparenciaTeste, LastUser_OfEachRegistryByItself_AndNoneWhereNobodyLikesIt)
{
    preferencias.LembraUltimoUsuario("r1", "ana");
    preferencias.LembraUltimoUsuario("r2", "bruno");
    EXPECT_EQ(preferencias.UltimoUsuario("r1"), "ana");
    EXPECT_EQ(preferencias.UltimoUsuario("r3"), "");
    preferencias.DefineLembraUsuario(false);
    EXPECT_EQ(preferencias.UltimoUsuario("r2"), "");
    preferencias.LembraUltimoUsuario("r1", "ana");
    EXPECT_EQ(preferencias.UltimoUsuario("r1"), "");
    preferencias.DefineLembraUsuario(true);
    preferencias.LembraUltimoUsuario("r1", "ana");
    EXPECT_EQ(preferencias.UltimoUsuario("r1"), "ana");
}
