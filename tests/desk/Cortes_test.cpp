#include "desk/tour/Cortes.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCommandLinkButton>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabBar>
#include <QTableWidget>
#include <QTextBrowser>
#include <QToolButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

using namespace mesa;

namespace {

constexpr const char *Longo = "Avenida Presidente João Belchior Marques Goulart";

// A window in which one widget stands by itself, as large as it is told.
class CortesTeste : public testing::Test {
  protected:
    CortesTeste() { janela.resize(900, 600); }

    template <class W> W *Poe(const QString &nome)
    {
        auto *widget = new W(&janela);
        widget->setObjectName(nome);
        return widget;
    }
    QStringList Cortados()
    {
        janela.show();
        return TextosCortados(janela);
    }
    // Whole at its own size, and cut when it has as many points less, of that width or height.
    void ConfereAoEncolher(QWidget *widget, int estreita, int baixa = 0)
    {
        janela.show();
        widget->resize(widget->sizeHint());
        EXPECT_EQ(TextosCortados(janela).join("\n").toStdString(), "");
        widget->resize(widget->sizeHint() - QSize(estreita, 0));
        EXPECT_EQ(TextosCortados(janela).size(), 1) << "narrow";
        if (baixa > 0) {
            widget->resize(widget->sizeHint() - QSize(0, baixa));
            EXPECT_EQ(TextosCortados(janela).size(), 1) << "low";
        }
    }

    QWidget janela;
};

TEST_F(CortesTeste, Label_OnePointShort_IsCut)
{
    auto *rotulo = Poe<QLabel>("rotulo");
    rotulo->setText(Longo);
    ConfereAoEncolher(rotulo, 1, 1);
    EXPECT_TRUE(TextosCortados(janela).front().startsWith("cut: rotulo (QLabel) \"Avenida"));
}

TEST_F(CortesTeste, Label_ThatWraps_IsCutByItsHeightOrByAWordThatIsTooLong)
{
    auto *rotulo = Poe<QLabel>("rotulo");
    rotulo->setText("Uma frase que ocupa mais de uma linha quando o lugar é estreito");
    rotulo->setWordWrap(true);
    janela.show();
    rotulo->resize(120, rotulo->heightForWidth(120));
    EXPECT_EQ(TextosCortados(janela), QStringList());
    rotulo->resize(120, rotulo->heightForWidth(120) - 2);
    EXPECT_EQ(TextosCortados(janela).size(), 1);
    rotulo->setText("ESTADO_CERRADO_DE_TRÂNSITO");
    rotulo->resize(60, 300);
    EXPECT_EQ(TextosCortados(janela).size(), 1);
}

TEST_F(CortesTeste, Label_OfMarkedUpTextOrAPicture_IsMeasuredAsItIsDrawn)
{
    auto *rotulo = Poe<QLabel>("rotulo");
    rotulo->setText("<h3>Registro</h3><p>Equipamentos</p>");
    ConfereAoEncolher(rotulo, 5, 5);
    QPixmap figura(64, 64);
    figura.fill(Qt::red);
    rotulo->setPixmap(figura);
    ConfereAoEncolher(rotulo, 1, 1);
}

TEST_F(CortesTeste, Buttons_OfAllKinds_AreCutWhenTheirTextHasNoRoom)
{
    for (const auto &faz : std::vector<std::function<QAbstractButton *()>>{
             [&] { return Poe<QPushButton>("botao"); },
             [&] {
                 auto *botao = Poe<QPushButton>("comIcone");
                 QPixmap icone(16, 16);
                 icone.fill(Qt::red);
                 botao->setIcon(icone);
                 return botao;
             },
             [&] { return Poe<QToolButton>("ferramenta"); },
             [&] { return Poe<QCheckBox>("caixa"); },
             [&] { return Poe<QRadioButton>("opcao"); },
             [&] { return Poe<QCommandLinkButton>("escolha"); },
         }) {
        const std::unique_ptr<QAbstractButton> botao(faz());
        SCOPED_TRACE(botao->objectName().toStdString());
        botao->setText("&Localizar equipamentos");
        botao->show();
        ConfereAoEncolher(botao.get(), 20);
    }
}

TEST_F(CortesTeste, TitlesOfGroups_AreCutByTheirFrame)
{
    auto *grupo = Poe<QGroupBox>("grupo");
    grupo->setTitle(Longo);
    janela.show();
    grupo->resize(500, 100);
    EXPECT_EQ(TextosCortados(janela), QStringList());
    grupo->resize(150, 100);
    EXPECT_EQ(TextosCortados(janela).size(), 1);
}

TEST_F(CortesTeste, Pages_ThatAreShortenedOrStandOutside_AreCut_AndThoseBehindArrowsAreNot)
{
    auto *abas = Poe<QTabBar>("abas");
    for (const char *texto : {"Equipamento", "Dados", "Sensores", "Aferições"}) {
        abas->addTab(texto);
    }
    abas->setUsesScrollButtons(false);
    abas->setElideMode(Qt::ElideNone);
    janela.show();
    abas->resize(abas->sizeHint());
    EXPECT_EQ(TextosCortados(janela), QStringList());
    abas->resize(150, abas->sizeHint().height());
    EXPECT_EQ(TextosCortados(janela).size(), 1);
    abas->setElideMode(Qt::ElideRight);
    EXPECT_EQ(TextosCortados(janela).size(), 1);
    abas->setElideMode(Qt::ElideNone);
    abas->setUsesScrollButtons(true);
    EXPECT_EQ(TextosCortados(janela), QStringList());
}

TEST_F(CortesTeste, Combo_ThatShowsHalfOfWhatIsChosen_IsCut)
{
    auto *combo = Poe<QComboBox>("combo");
    combo->addItems({"Todos", Longo});
    janela.show();
    combo->resize(100, combo->sizeHint().height());
    EXPECT_EQ(TextosCortados(janela), QStringList());
    combo->setCurrentIndex(1);
    EXPECT_EQ(TextosCortados(janela).size(), 1);
    combo->setToolTip(Longo);
    EXPECT_EQ(TextosCortados(janela), QStringList());
}

TEST_F(CortesTeste, Field_IsCutUnlessItsTipHasAllOfIt_AndAPasswordNever)
{
    auto *campo = Poe<QLineEdit>("campo");
    campo->setText(Longo);
    campo->resize(120, campo->sizeHint().height());
    EXPECT_EQ(Cortados().size(), 1);
    campo->setToolTip(Longo);
    EXPECT_EQ(TextosCortados(janela), QStringList());
    campo->setToolTip("Avenida");
    EXPECT_EQ(TextosCortados(janela).size(), 1);
    campo->setEchoMode(QLineEdit::Password);
    EXPECT_EQ(TextosCortados(janela), QStringList());
    campo->clear();
    campo->setPlaceholderText(Longo);
    EXPECT_EQ(TextosCortados(janela).size(), 1);
    campo->setText("Rua Um");
    campo->setEchoMode(QLineEdit::Normal);
    EXPECT_EQ(TextosCortados(janela), QStringList());
}

TEST_F(CortesTeste, TextOfACell_OrAHeading_IsCutUnlessItsTipHasAllOfIt)
{
    auto *tabela = Poe<QTableWidget>("tabela");
    tabela->resize(600, 300);
    tabela->setColumnCount(2);
    tabela->setRowCount(2);
    tabela->setHorizontalHeaderLabels({"Código", "Local"});
    tabela->setItem(1, 1, new QTableWidgetItem(Longo));
    tabela->setColumnWidth(1, 100);
    EXPECT_EQ(Cortados().size(), 1);
    tabela->item(1, 1)->setToolTip(Longo);
    EXPECT_EQ(TextosCortados(janela), QStringList());
    tabela->horizontalHeaderItem(1)->setText(Longo);
    EXPECT_EQ(TextosCortados(janela).size(), 1);
    tabela->setColumnWidth(1, 500);
    EXPECT_EQ(TextosCortados(janela), QStringList());
    tabela->verticalHeader()->setMinimumSectionSize(1);
    tabela->setRowHeight(1, 8);
    EXPECT_EQ(TextosCortados(janela).size(), 1);
}

TEST_F(CortesTeste, EntryOfTheMenuBar_ThatStandsNowhere_IsCut)
{
    auto *menus = Poe<QMenuBar>("menus");
    for (const char *texto : {"&Equipamentos", "&Registro", "Aj&uda"}) {
        menus->addMenu(texto);
    }
    janela.show();
    menus->setGeometry(0, 0, 600, menus->sizeHint().height());
    EXPECT_EQ(TextosCortados(janela), QStringList());
}

TEST_F(CortesTeste, TitleOfAWindowInTheArea_IsCutUnlessItsTipHasAllOfIt)
{
    auto *area = Poe<QMdiArea>("area");
    area->resize(800, 500);
    QMdiSubWindow *filha = area->addSubWindow(new QLabel("x"));
    filha->setWindowTitle(QString("Equipamentos - ") + Longo);
    janela.show();
    filha->resize(700, 200);
    EXPECT_EQ(TextosCortados(janela), QStringList());
    filha->resize(200, 200);
    EXPECT_EQ(TextosCortados(janela).size(), 1);
    filha->setToolTip(filha->windowTitle());
    EXPECT_EQ(TextosCortados(janela), QStringList());
}

TEST_F(CortesTeste, RunningText_ThatHasToBeScrolledSideways_IsCut)
{
    auto *texto = Poe<QTextBrowser>("manual");
    texto->resize(300, 200);
    texto->setPlainText(Longo);
    EXPECT_EQ(Cortados(), QStringList());
    texto->setHtml(R"(<table width="900"><tr><td>larga</td></tr></table>)");
    EXPECT_EQ(TextosCortados(janela).size(), 1);
}

TEST_F(CortesTeste, WhatIsHidden_IsNotCut)
{
    auto *rotulo = Poe<QLabel>("rotulo");
    rotulo->setText(Longo);
    rotulo->resize(20, 20);
    EXPECT_EQ(Cortados().size(), 1);
    rotulo->hide();
    EXPECT_EQ(TextosCortados(janela), QStringList());
}

TEST_F(CortesTeste, Places_OverOneAnotherOrOutside_AreTold_AndScrollingOnesAreNot)
{
    auto *um = Poe<QPushButton>("um");
    auto *outro = Poe<QPushButton>("outro");
    janela.show();
    um->setGeometry(10, 10, 80, 30);
    outro->setGeometry(100, 10, 80, 30);
    EXPECT_EQ(ForaDoLugar(janela), QStringList());
    outro->setGeometry(89, 10, 80, 30);
    EXPECT_EQ(ForaDoLugar(janela).size(), 1);
    outro->setGeometry(850, 10, 80, 30);
    EXPECT_EQ(ForaDoLugar(janela).size(), 1);
    outro->hide();
    auto *rola = Poe<QScrollArea>("rola");
    auto *dentro = new QWidget;
    dentro->resize(2000, 2000);
    rola->setWidget(dentro);
    rola->setGeometry(10, 100, 300, 300);
    rola->show();
    EXPECT_EQ(ForaDoLugar(janela), QStringList());
}

// The measure knows of fonts by the font alone: what is whole in one is cut in a larger or wider one.
TEST_F(CortesTeste, LargerOrWiderLetters_CutWhatWasWhole)
{
    auto *rotulo = Poe<QLabel>("rotulo");
    rotulo->setText(Longo);
    rotulo->resize(rotulo->sizeHint());
    EXPECT_EQ(Cortados(), QStringList());
    QFont larga = rotulo->font();
    larga.setLetterSpacing(QFont::PercentageSpacing, 110);
    rotulo->setFont(larga);
    EXPECT_EQ(TextosCortados(janela).size(), 1);
    QFont grande = janela.font();
    grande.setPointSizeF(grande.pointSizeF() * 2);
    rotulo->setFont(grande);
    EXPECT_EQ(TextosCortados(janela).size(), 1);
}

} // namespace
