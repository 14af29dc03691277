#include "desk/windows/Cores.h"

#include <QApplication>
#include <QLabel>

#include <gtest/gtest.h>

#include <vector>

using namespace mesa;

namespace {

QPalette PaletaDe(const char *janela, const char *texto, const char *campo)
{
    const QColor fundo(janela);
    const QColor letra(texto);
    const QColor base(campo);
    QPalette paleta(letra, fundo, fundo.lighter(), fundo.darker(), fundo, letra, letra, base, fundo);
    paleta.setColor(QPalette::AlternateBase, base);
    return paleta;
}

// Light, dark, and those of people who see little.
std::vector<QPalette> Paletas()
{
    return {PaletaDe("#efefef", "#000000", "#ffffff"), PaletaDe("#2b2f33", "#f2f2f2", "#1e2124"),
            PaletaDe("#000000", "#ffff00", "#000000"), PaletaDe("#ffffff", "#000000", "#ffffff"),
            PaletaDe("#000080", "#ffffff", "#000000"), PaletaDe("#c8c8b4", "#101010", "#ffffe0")};
}

class PaletaDaAplicacao {
  public:
    explicit PaletaDaAplicacao(const QPalette &paleta) { Poe(paleta); }
    ~PaletaDaAplicacao() { Poe(QPalette()); }

  private:
    static void Poe(const QPalette &paleta)
    {
        QApplication::setPalette(paleta);
        QCoreApplication::processEvents(); // the widgets are told by an event
    }
};

} // namespace

TEST(Cores, Contraste_ValuesThatTheStandardGives)
{
    EXPECT_NEAR(Contraste(Qt::black, Qt::white), 21.0, 0.001);
    EXPECT_NEAR(Contraste(Qt::white, Qt::black), 21.0, 0.001);
    EXPECT_NEAR(Contraste(QColor("#767676"), Qt::white), 4.54, 0.01);
    EXPECT_NEAR(Contraste(QColor("#ff0000"), Qt::white), 4.00, 0.01);
    EXPECT_DOUBLE_EQ(Contraste(QColor("#123456"), QColor("#123456")), 1.0);
}

TEST(Cores, CorDe_TextsInEachPalette_CanBeReadWhereverTheyStand)
{
    for (const QPalette &paleta : Paletas()) {
        for (const Cor cor : {Cor::Erro, Cor::Aviso, Cor::Amostra}) {
            for (const auto fundo : {QPalette::Window, QPalette::Base, QPalette::AlternateBase}) {
                EXPECT_GE(Contraste(CorDe(cor, paleta), paleta.color(fundo)), 4.5)
                    << static_cast<int>(cor) << ' ' << paleta.color(fundo).name().toStdString();
            }
        }
    }
}

TEST(Cores, CorDe_GroundsInEachPalette_LeaveTheTextReadable)
{
    for (const QPalette &paleta : Paletas()) {
        EXPECT_GE(Contraste(CorDe(Cor::Achado, paleta), paleta.color(QPalette::Text)), 4.5);
        EXPECT_GE(Contraste(CorDe(Cor::Area, paleta), paleta.color(QPalette::WindowText)), 4.5);
        EXPECT_GE(Contraste(CorDe(Cor::Foco, paleta), paleta.color(QPalette::Window)), 3.0);
        EXPECT_GE(Contraste(CorDe(Cor::Foco, paleta), paleta.color(QPalette::Base)), 3.0);
    }
    EXPECT_GE(Contraste(CorDe(Cor::Achado, PaletaDePapel()), Qt::black), 4.5);
}

TEST(Cores, CorDe_LightAndDark_AreNotTheSame)
{
    const std::vector<QPalette> paletas = Paletas();
    for (const Cor cor : {Cor::Erro, Cor::Aviso, Cor::Amostra, Cor::Area, Cor::Achado}) {
        EXPECT_NE(CorDe(cor, paletas[0]), CorDe(cor, paletas[1])) << static_cast<int>(cor);
    }
    EXPECT_FALSE(EhEscura(paletas[0]));
    EXPECT_TRUE(EhEscura(paletas[1]));
}

TEST(Cores, Legivel_AlreadyReadable_StaysExactlyAsItIs)
{
    EXPECT_EQ(Legivel(QColor("#a4161a"), {Qt::white}).name(), "#a4161a");
}

TEST(Cores, Legivel_NothingWillDo_TheBetterEnd)
{
    EXPECT_EQ(Legivel(QColor("#ff0000"), {Qt::white}, 22).name(), "#000000");
}

TEST(Cores, Colore_PaletteChanges_TextFollows)
{
    QLabel rotulo("recusado");
    Colore(rotulo, Cor::Erro);
    rotulo.show();
    const QColor clara = rotulo.palette().color(QPalette::WindowText);
    const PaletaDaAplicacao escura(Paletas()[1]);
    EXPECT_NE(rotulo.palette().color(QPalette::WindowText), clara);
    EXPECT_EQ(rotulo.palette().color(QPalette::WindowText), CorDe(Cor::Erro));
    EXPECT_EQ(rotulo.palette().color(QPalette::Window), Paletas()[1].color(QPalette::Window));
}

TEST(Cores, SeguePaleta_GivenTwice_TheLastOneCounts)
{
    QLabel rotulo;
    int primeiro = 0;
    int segundo = 0;
    SeguePaleta(rotulo, [&] { ++primeiro; });
    SeguePaleta(rotulo, [&] { ++segundo; });
    rotulo.show();
    const PaletaDaAplicacao escura(Paletas()[1]);
    EXPECT_EQ(primeiro, 1);
    EXPECT_EQ(segundo, 2);
}
