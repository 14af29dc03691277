#include "tests/desk/LeitorDeTela.h"

#include "desk/windows/Acessibilidade.h"
#include "desk/windows/Dialogos.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPdfView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace mesa;

namespace {

// A window in which everything is told, as far as the test does not spoil it.
class LeitorDeTelaTeste : public testing::Test {
  protected:
    LeitorDeTelaTeste()
    {
        janela.setObjectName("janela");
        campos->addRow("&Código:", codigo);
        campos->addRow("&Tipo:", tipo);
        campos->addRow(ativo);
        tipo->addItems({"Fixo", "Móvel"});
        codigo->setText("A1");
        codigo->setObjectName("codigo");
        tipo->setObjectName("tipo");
        tabela->setObjectName("linhas");
        tabela->setAccessibleName("Equipamentos");
        tabela->setHorizontalHeaderLabels({"Código", "Município"});
        tabela->setItem(0, 0, new QTableWidgetItem("A1"));
        tabela->setItem(0, 1, new QTableWidgetItem("Porto Alegre"));
        tabela->setSelectionBehavior(QAbstractItemView::SelectRows);
        tabela->setCurrentCell(0, 0);
        tabela->verticalHeader()->hide();
        auto *tudo = new QVBoxLayout(&janela);
        tudo->addLayout(campos);
        tudo->addWidget(tabela);
        tudo->addWidget(ok);
    }
    std::string Defeitos()
    {
        janela.show();
        return DefeitosDoLeitor(janela).join("\n").toStdString();
    }

    QWidget janela;
    QFormLayout *campos = new QFormLayout;
    QLineEdit *codigo = new QLineEdit(&janela);
    QComboBox *tipo = new QComboBox(&janela);
    QCheckBox *ativo = new QCheckBox("&Ativo", &janela);
    QTableWidget *tabela = new QTableWidget(1, 2, &janela);
    QPushButton *ok = new QPushButton("&OK", &janela);
};

TEST_F(LeitorDeTelaTeste, WindowThatTellsEverything_HasNoDefect)
{
    EXPECT_EQ(Defeitos(), "");
    const QStringList lido = LidoNa(janela);
    EXPECT_TRUE(lido.contains(QString("%1|Código:|A1||Alt+C").arg(QAccessible::EditableText)));
    EXPECT_TRUE(lido.contains(QString("%1|Ativo|||Alt+A").arg(QAccessible::CheckBox)));
}

TEST_F(LeitorDeTelaTeste, FieldWithoutALabel_IsToldOf)
{
    campos->labelForField(codigo)->hide();
    qobject_cast<QLabel *>(campos->labelForField(codigo))->setBuddy(nullptr);
    EXPECT_NE(Defeitos().find("no name: janela/codigo"), std::string::npos) << Defeitos();
}

TEST_F(LeitorDeTelaTeste, ComboThatHasANameAndNoLabel_IsToldOf)
{
    tipo->setAccessibleName("Tipo");
    qobject_cast<QLabel *>(campos->labelForField(tipo))->setBuddy(nullptr);
    EXPECT_NE(Defeitos().find("no name: janela/tipo"), std::string::npos) << Defeitos();
}

TEST_F(LeitorDeTelaTeste, ButtonWithAPictureAndATip_HasNoName)
{
    ok->setText("");
    ok->setIcon(QPixmap(16, 16));
    ok->setToolTip("Confirma");
    EXPECT_NE(Defeitos().find("no name"), std::string::npos);
    ok->setAccessibleName("Confirmar");
    EXPECT_EQ(Defeitos(), "");
}

TEST_F(LeitorDeTelaTeste, SameNameTwice_IsToldOf_UnlessTheGroupsDiffer)
{
    codigo->setAccessibleName("Ativo");
    EXPECT_NE(Defeitos().find("the same name 2 times in the window: Ativo"), std::string::npos) << Defeitos();
    auto *grupo = new QGroupBox("Sensor", &janela);
    auto *dentro = new QVBoxLayout(grupo);
    dentro->addWidget(codigo);
    janela.layout()->addWidget(grupo);
    EXPECT_EQ(Defeitos(), "");
}

TEST_F(LeitorDeTelaTeste, EnglishName_IsToldOf)
{
    ok->setText("&Close");
    EXPECT_NE(Defeitos().find("English: Close"), std::string::npos);
}

TEST_F(LeitorDeTelaTeste, ColourAlone_IsToldOf)
{
    auto *erro = new QLabel("Informe o código.", &janela);
    janela.layout()->addWidget(erro);
    EXPECT_EQ(Defeitos(), "");
    QPalette cores = erro->palette();
    cores.setColor(QPalette::WindowText, Qt::red);
    erro->setPalette(cores);
    EXPECT_NE(Defeitos().find("told by its colour alone"), std::string::npos);
    erro->setAccessibleDescription("Erro");
    EXPECT_EQ(Defeitos(), "");
}

TEST_F(LeitorDeTelaTeste, ColumnsThatCannotBeToldApart_AreToldOf)
{
    tabela->setHorizontalHeaderLabels({"Código", "Código"});
    EXPECT_NE(Defeitos().find("has no heading of its own"), std::string::npos) << Defeitos();
    tabela->setHorizontalHeaderLabels({"Código", " "});
    EXPECT_NE(Defeitos().find("has no heading of its own"), std::string::npos) << Defeitos();
}

TEST_F(LeitorDeTelaTeste, WidgetThatTakesTheKeyboardAndIsNothing_IsToldOf)
{
    auto *lugar = new QWidget(&janela);
    lugar->setMinimumSize(20, 20);
    lugar->setFocusPolicy(Qt::StrongFocus);
    lugar->setAccessibleName("Lugar");
    janela.layout()->addWidget(lugar);
    EXPECT_NE(Defeitos().find("has no role"), std::string::npos) << Defeitos();
}

TEST_F(LeitorDeTelaTeste, Password_IsNeverRead)
{
    codigo->setEchoMode(QLineEdit::Password);
    codigo->setText("cavalo grampeador");
    EXPECT_EQ(Defeitos(), "");
    EXPECT_FALSE(LidoNa(janela).join("\n").contains("cavalo"));
}

TEST_F(LeitorDeTelaTeste, Order_ThatGoesUpOrBack_IsToldOf)
{
    janela.show();
    EXPECT_EQ(TabForaDaLeitura(janela), QStringList());
    QWidget::setTabOrder(tipo, codigo);
    EXPECT_FALSE(TabForaDaLeitura(janela).isEmpty());
}

// A widget that does not draw that it has the keyboard.
class Cego : public QWidget {
  public:
    using QWidget::QWidget;
};

TEST_F(LeitorDeTelaTeste, Focus_ThatIsNotDrawn_IsToldOf)
{
    auto *cego = new Cego(&janela);
    cego->setObjectName("cego");
    cego->setMinimumSize(40, 40);
    cego->setFocusPolicy(Qt::StrongFocus);
    janela.layout()->addWidget(cego);
    janela.show();
    janela.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&janela));
    const QStringList invisiveis = FocoInvisivel(janela);
    ASSERT_EQ(invisiveis.size(), 1) << invisiveis.join("\n").toStdString();
    EXPECT_TRUE(invisiveis.front().contains("cego"));
}

TEST(Acessibilidade, Option_ThatDoesNotExcludeOthers_IsStillAnOption)
{
    QGroupBox grupo("Tipo &Via:");
    QRadioButton urbana("Via &urbana", &grupo);
    urbana.setAutoExclusive(false);
    urbana.setChecked(true);
    QAccessibleInterface *peca = QAccessible::queryAccessibleInterface(&urbana);
    EXPECT_EQ(peca->role(), QAccessible::RadioButton);
    EXPECT_EQ(peca->text(QAccessible::Name).toStdString(), "Via urbana");
    EXPECT_EQ(peca->text(QAccessible::Accelerator).toStdString(), "Alt+U");
    EXPECT_TRUE(peca->state().checkable);
    EXPECT_TRUE(peca->state().checked);
    peca->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(urbana.isChecked());
    urbana.setEnabled(false);
    EXPECT_FALSE(peca->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
}

TEST(Acessibilidade, PagesOfADocument_AreOne)
{
    QPdfView paginas;
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&paginas)->role(), QAccessible::Document);
}

TEST(Acessibilidade, SentenceOfAnError_IsHeardAtOnce)
{
    QWidget janela;
    QLabel *aviso = FazAviso(&janela);
    Anunciados().clear();
    MostraAviso(*aviso, "Informe o usuário.");
    EXPECT_EQ(Anunciados(), QStringList("Erro: Informe o usuário."));
}

} // namespace
