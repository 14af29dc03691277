#include "desk/windows/Mesa.h"
#include "equipment/frmEquipDetalhes.h"
#include "limits/frmLimitesDif.h"
#include "limits/frmLimitesDifDetalhes.h"
#include "search/frmLista.h"
#include "sensors/frmEquipAfericoes.h"
#include "sensors/frmEquipSensores.h"
#include "tests/desk/RegistroDeTeste.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

#include <gtest/gtest.h>

#include <set>

namespace {

// A form of the module with its controls, not yet shown.
template <class Form> class Carregada : public Form {
  public:
    void Abre() { this->Carregar(); }
};

template <class Form> Ref<IForm> Carrega()
{
    auto form = Novo<Carregada<Form>>();
    form->Abre();
    return form;
}

class JanelasTeste : public testing::Test {
  protected:
    JanelasTeste() : mesa(Ref<Servicos>(), pasta.path().toStdString(), [this] { return registro.Relogio; })
    {
        mesa.show();
        mesa.Entra(registro.Sessao("ana"));
    }

    JanelaForm *Janela(const Ref<IForm> &form)
    {
        return new JanelaForm(form,
                              {[](const std::function<void()> &acao) { acao(); }, [](const Ref<IForm> &) {},
                               [](const std::string &) {}, [] { return std::vector<ClienteCadastrado>{}; }},
                              &mesa);
    }
    template <class F> void CadaForm(F &&confere)
    {
        for (const Ref<IForm> &form :
             {Carrega<frmLista>(), Carrega<frmEquipDetalhes>(), Carrega<frmEquipSensores>(),
              Carrega<frmEquipAfericoes>(), Carrega<frmLimitesDif>(), Carrega<frmLimitesDifDetalhes>()}) {
            SCOPED_TRACE(std::string(form->NomeTipo()));
            const std::unique_ptr<JanelaForm> janela(Janela(form));
            confere(*form, *janela);
            mesa.Hospedeiro()->Plataforma()->Descarrega(form);
        }
    }

    QTemporaryDir pasta;
    RegistroDeTeste registro;
    Mesa mesa;
};

std::string NomeDe(const QWidget &widget)
{
    return (widget.parentWidget()->objectName() + "/" + widget.objectName() + " (" + widget.metaObject()->className() +
            ")")
        .toStdString();
}

// What takes a person's text or choice.
bool EhCampo(const QWidget &widget)
{
    const bool dentroDeOutro = qobject_cast<QComboBox *>(widget.parentWidget()) ||
                               qobject_cast<QAbstractSpinBox *>(widget.parentWidget()) ||
                               widget.parentWidget()->inherits("QComboBoxPrivateContainer");
    return !dentroDeOutro &&
           (qobject_cast<const QLineEdit *>(&widget) || qobject_cast<const QComboBox *>(&widget) ||
            qobject_cast<const QTextEdit *>(&widget) || qobject_cast<const QPlainTextEdit *>(&widget) ||
            qobject_cast<const QAbstractSpinBox *>(&widget) ||
            (qobject_cast<const QAbstractItemView *>(&widget) && !qobject_cast<const QHeaderView *>(&widget)));
}

bool TemRotulo(const QWidget &janela, const QWidget &campo)
{
    if (!campo.accessibleName().isEmpty()) {
        return true;
    }
    for (const QLabel *rotulo : janela.findChildren<QLabel *>()) {
        const QWidget *alvo = rotulo->buddy();
        if (alvo != nullptr && !rotulo->text().isEmpty() && (alvo == &campo || alvo->focusProxy() == &campo)) {
            return true;
        }
    }
    return false;
}

TEST_F(JanelasTeste, Forms_EveryControl_HasAWidgetOfItsName)
{
    CadaForm([](IForm &form, QWidget &janela) {
        EXPECT_FALSE(form.Controles().empty());
        for (const Ref<IControle> &controle : form.Controles()) {
            QString nome = Q(controle->Nome());
            if (controle->Indice() >= 0) {
                nome += "_" + QString::number(controle->Indice());
            }
            if (controle->Especie() != EspecieControle::CommonDialog) {
                EXPECT_EQ(janela.findChildren<QWidget *>(nome).size(), 1) << S(nome);
            }
        }
    });
}

TEST_F(JanelasTeste, Forms_Texts_AreNotInEnglish)
{
    const QRegularExpression ingles("\\b(cancel|close|save|apply|help|open|new|search|find|yes|no more|name|date|type|"
                                    "number|street|city|label|button|text ?label|tab ?[0-9]|group ?box|check ?box|"
                                    "radio ?button|push ?button|form|file|edit|delete|remove|add|next|previous|all|"
                                    "select|print|zoom|page)\\b",
                                    QRegularExpression::CaseInsensitiveOption);
    CadaForm([&](IForm &, QWidget &janela) {
        QStringList textos{janela.windowTitle()};
        for (const QWidget *widget : janela.findChildren<QWidget *>()) {
            for (const char *propriedade : {"text", "title", "toolTip", "placeholderText", "accessibleName"}) {
                textos << widget->property(propriedade).toString();
            }
            if (const auto *abas = qobject_cast<const QTabWidget *>(widget)) {
                for (int pagina = 0; pagina < abas->count(); ++pagina) {
                    textos << abas->tabText(pagina);
                }
            }
        }
        for (QString texto : textos) {
            EXPECT_FALSE(texto.remove('&').contains(ingles)) << S(texto);
        }
    });
}

TEST_F(JanelasTeste, Forms_EveryField_TellsAReaderItsName)
{
    CadaForm([](IForm &, QWidget &janela) {
        for (const QWidget *widget : janela.findChildren<QWidget *>()) {
            if (EhCampo(*widget)) {
                EXPECT_TRUE(TemRotulo(janela, *widget)) << NomeDe(*widget);
            }
        }
    });
}

TEST_F(JanelasTeste, Forms_TabKey_ReachesEverythingThatCanBeUsed)
{
    CadaForm([](IForm &, JanelaForm &janela) {
        janela.setWindowFlags(Qt::Dialog);
        janela.show();
        janela.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&janela));
        const auto abas = janela.findChildren<QTabWidget *>();
        const int paginas = abas.isEmpty() ? 1 : abas.first()->count();
        for (int pagina = 0; pagina < paginas; ++pagina) {
            if (!abas.isEmpty()) {
                abas.first()->setCurrentIndex(pagina);
            }
            std::set<const QWidget *> alcancados;
            for (int tecla = 0; tecla < 200; ++tecla) {
                QWidget *foco = QApplication::focusWidget();
                if (foco != nullptr) {
                    alcancados.insert(foco);
                }
                QTest::keyClick(foco != nullptr ? foco : &janela, Qt::Key_Tab);
            }
            for (const QWidget *widget : janela.findChildren<QWidget *>()) {
                if ((EhCampo(*widget) || qobject_cast<const QAbstractButton *>(widget)) && widget->isVisible() &&
                    widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) && widget->focusProxy() == nullptr) {
                    EXPECT_EQ(alcancados.count(widget), 1U) << "page " << pagina << ": " << NomeDe(*widget);
                }
            }
        }
    });
}

TEST_F(JanelasTeste, Event_ThatRaises_ShowsTheErrorAndLeavesTheWindow)
{
    ASSERT_TRUE(mesa.Modulo()->ClickMenu("mnuModVOREquiptos"));
    auto *janela = mesa.findChild<JanelaForm *>("frmLista");
    ASSERT_NE(janela, nullptr);
    Ref<IztCombo> combo;
    for (const Ref<IControle> &controle : janela->Form()->Controles()) {
        if (controle->Nome() == "cboTipoEquipto") {
            combo = ComoTipo<IztCombo>(controle);
        }
    }
    ASSERT_FALSE(combo.Nada());
    const Conexao conexao = combo->Change().liga([] { throw Falha(13); });
    QStringList vistos;
    QTimer olho;
    olho.setInterval(1);
    QObject::connect(&olho, &QTimer::timeout, &mesa, [&] {
        if (auto *caixa = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            vistos << caixa->text() + " | " + caixa->informativeText();
            caixa->buttons().first()->click();
        }
    });
    olho.start();
    auto *widget = janela->findChild<QComboBox *>("cboTipoEquipto");
    ASSERT_NE(widget, nullptr);
    ASSERT_TRUE(widget->isEnabled());
    QTest::keyClick(widget, Qt::Key_Down);
    ASSERT_EQ(vistos.size(), 1);
    EXPECT_TRUE(vistos[0].contains("Erro 13 em Mesa")) << S(vistos[0]);
    EXPECT_TRUE(janela->isVisible());
    EXPECT_EQ(mesa.Hospedeiro()->Plataforma()->NroForms(), 1);
}

TEST_F(JanelasTeste, Close_OfTheMainWindow_ClosesAllThroughLogoff)
{
    ASSERT_TRUE(mesa.Modulo()->ClickMenu("mnuModVOREquiptos"));
    ASSERT_TRUE(mesa.Modulo()->ClickMenu("mnuModNABEquiptos"));
    EXPECT_EQ(mesa.Hospedeiro()->Plataforma()->NroForms(), 2);
    const Ref<AcessoMesa> acesso = mesa.Hospedeiro()->objSCA();
    EXPECT_TRUE(mesa.close());
    EXPECT_EQ(mesa.Hospedeiro()->Plataforma()->NroForms(), 0);
    EXPECT_TRUE(mesa.Hospedeiro()->objMTM().Nada());
    EXPECT_FALSE(acesso->Logado());
    EXPECT_FALSE(mesa.Modulo()->HabilitarItem("mnuModVOREquiptos"));
}

} // namespace
