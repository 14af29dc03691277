#include "controls/ztList.h"
#include "desk/windows/Entrada.h"
#include "desk/windows/VisorPDF.h"
#include "equipment/frmEquipDetalhes.h"
#include "limits/frmLimitesDif.h"
#include "limits/frmLimitesDifDetalhes.h"
#include "search/frmLista.h"
#include "sensors/frmEquipAfericoes.h"
#include "sensors/frmEquipSensores.h"
#include "services/sample/CertificadoPDF.h"
#include "tela/Mnemonicas.h"
#include "tela/OrdemDeTab.h"
#include "tela/Pessoa.h"
#include "tests/desk/FormCarregado.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/VoltaDeTab.h"
#include "tests/services/DiscoApertado.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPdfDocument>
#include <QPlainTextEdit>
#include <QPointer>
#include <QRegularExpression>
#include <QScreen>
#include <QTabWidget>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

using namespace mesa;

namespace {

class JanelasTeste : public MesaTeste {
  protected:
    JanelasTeste() { Entra(); }

    JanelaForm *Janela(const Ref<IForm> &form)
    {
        PedidosDaJanela pedidos;
        pedidos.NaBorda = [](const std::function<void()> &acao) { acao(); };
        pedidos.Fecha = pedidos.Ajuda = pedidos.Redimensionou = [] {};
        return new JanelaForm(form,
                              {pedidos, [] { return std::vector<ClienteOferecido>{}; }, mesa.Hospedeiro()->Logradouros,
                               Novo<MemoriaDeEnderecos>()},
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
    JanelaForm *AbreLista()
    {
        EXPECT_TRUE(mesa.Modulo()->ClickMenu("mnuModVOREquiptos"));
        return mesa.findChild<JanelaForm *>("frmLista");
    }
    // Each of them active on the screen.
    template <class F> void CadaFormNaTela(F &&confere)
    {
        CadaForm([&](IForm &form, JanelaForm &janela) {
            janela.setWindowFlags(Qt::Dialog);
            janela.show();
            janela.activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&janela));
            confere(form, janela);
        });
    }
    template <class C> static Ref<C> Controle(const IForm &form, const std::string &nome)
    {
        for (const Ref<IControle> &controle : form.Controles()) {
            if (controle->Nome() == nome) {
                return ComoTipo<C>(controle);
            }
        }
        throw Falha(NumeroFalha::ErroInterno);
    }
    // While the action runs, what is told of each box that comes up, which is then answered with its first button.
    template <class Acao, class Olha> void ComCaixas(Acao &&acao, Olha &&olha)
    {
        QTimer olho;
        olho.setInterval(1);
        QObject::connect(&olho, &QTimer::timeout, &mesa, [&] {
            if (auto *caixa = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                olha(*caixa);
                caixa->buttons().first()->click();
            }
        });
        olho.start();
        acao();
    }
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

// Letters that Alt leads to from more than one place that is seen, with the captions.
QStringList MnemonicasRepetidas(const QWidget &janela, const QStringList &outras = {})
{
    QMap<QString, QStringList> lugares;
    const auto anota = [&](const QString &texto) {
        if (const QString letra = Q(Mnemonica(S(texto))); !letra.isEmpty()) {
            lugares[letra] << texto;
        }
    };
    for (const QString &texto : outras) {
        anota(texto);
    }
    for (const QWidget *widget : janela.findChildren<QWidget *>()) {
        if (!widget->isVisible()) {
            continue;
        }
        if (const auto *abas = qobject_cast<const QTabWidget *>(widget)) {
            for (int pagina = 0; pagina < abas->count(); ++pagina) {
                anota(abas->tabText(pagina));
            }
        } else if (const auto *grupo = qobject_cast<const QGroupBox *>(widget)) {
            anota(grupo->title());
        } else if (qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QLabel *>(widget)) {
            anota(widget->property("text").toString());
        }
    }
    QStringList repetidas;
    for (const QStringList &textos : lugares) {
        if (textos.size() > 1) {
            repetidas << textos.join(" | ");
        }
    }
    return repetidas;
}

QStringList TextosDe(const QList<QAction *> &acoes)
{
    QStringList textos;
    for (const QAction *acao : acoes) {
        textos << acao->text();
    }
    return textos;
}

TEST_F(JanelasTeste, Mnemonics_OfEveryFormAndPage_LeadToOnePlace)
{
    CadaForm([](IForm &form, JanelaForm &janela) {
        janela.show();
        for (const char *cancelar : {"&Cancelar", "&Fechar"}) {
            for (const Ref<IControle> &controle : form.Controles()) {
                if (controle->Nome() == "cmdCancelar" && form.NomeTipo() != "frmLista") {
                    controle->DefineCaption(cancelar); // a form that only shows calls it so
                }
            }
            CadaPagina(
                janela,
                [&](int pagina) {
                    EXPECT_EQ(MnemonicasRepetidas(janela), QStringList()) << cancelar << ", page " << pagina;
                },
                true);
        }
    });
}

TEST_F(JanelasTeste, Mnemonics_OfTheMainWindow_LeadToOnePlace)
{
    const QStringList menus = TextosDe(mesa.menuBar()->actions());
    const auto *lista = AbreLista();
    ASSERT_NE(lista, nullptr);
    EXPECT_EQ(MnemonicasRepetidas(*lista, menus), QStringList());
    for (const char *botao :
         {"mnuZTLObjNovo", "mnuZTLObjEditar", "mnuZTLObjDetalhes", "mnuZTLObjAtualizar", "mnuZTLObjReativar",
          "mnuZTLObjLimitesDif", "mnuZTLObjDiasEspec", "mnuZTLObjHorarioProib"}) {
        EXPECT_NE(Mnemonica(S(lista->findChild<QAbstractButton *>(botao)->text())), "") << botao;
    }
    mesa.findChild<QAction *>("consultaAutuacao")->trigger();
    const auto *consulta = mesa.findChild<QWidget *>("ConsultaAutuacao");
    ASSERT_NE(consulta, nullptr);
    EXPECT_EQ(MnemonicasRepetidas(*consulta, menus), QStringList());
    for (const QAction *menu : mesa.menuBar()->actions()) {
        Q_EMIT menu->menu()->aboutToShow();
        const QWidget vazia;
        EXPECT_EQ(MnemonicasRepetidas(vazia, TextosDe(menu->menu()->actions())), QStringList()) << S(menu->text());
    }
}

// The registry's clock, and not that of the computer.
TEST_F(JanelasTeste, ConsultaAutuacao_BeginsWithTheDayOfTheRegistry)
{
    mesa.findChild<QAction *>("consultaAutuacao")->trigger();
    EXPECT_EQ(mesa.findChild<QWidget *>("ConsultaAutuacao")->findChild<QDateEdit *>("data")->date(),
              QDate(2026, 11, 20));
}

TEST_F(JanelasTeste, Mnemonics_OfTheDesksOwnDialogs_LeadToOnePlace)
{
    const auto servicos = Servicos::Abre(registro.Caminho(), Agora());
    for (const auto &travada : {std::optional<Operador>(), std::optional<Operador>(Operador())}) {
        Entrada entrada(servicos, preferencias, travada, nullptr);
        entrada.show();
        EXPECT_EQ(MnemonicasRepetidas(entrada), QStringList());
    }
    VisorPDF visor(nullptr);
    visor.show();
    EXPECT_EQ(MnemonicasRepetidas(visor), QStringList());
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

TEST_F(JanelasTeste, Forms_TabKey_ReachesEverythingThatCanBeUsedInTheOrderOfTheControls)
{
    CadaFormNaTela([](IForm &form, JanelaForm &janela) {
        const auto ordemDe = [&](const QWidget *widget) {
            for (; widget != nullptr && widget != &janela; widget = widget->parentWidget()) {
                for (const Ref<IControle> &controle : form.Controles()) {
                    const QString indice = controle->Indice() < 0 ? "" : "_" + QString::number(controle->Indice());
                    // The search list holds its criteria, and its rows come behind them.
                    const bool fora = controle->Especie() == EspecieControle::ztFrame || controle->Nome() == "ztlLista";
                    if (!fora && widget->objectName() == Q(controle->Nome()) + indice) {
                        return int{controle->TabIndex()};
                    }
                }
            }
            return -1; // what belongs to no control, such as the search button
        };
        const auto confere = [&](int pagina) {
            std::set<const QWidget *> alcancados;
            std::vector<int> ordem;
            QStringList nomes;
            bool voltou = false; // to the first of them
            for (int tecla = 0; tecla < 200; ++tecla) {
                QWidget *foco = QApplication::focusWidget();
                if (foco != nullptr) {
                    alcancados.insert(foco);
                }
                const int numero = ordemDe(foco);
                if (!voltou && numero >= 0 && (ordem.empty() || ordem.back() != numero)) {
                    voltou = !ordem.empty() && numero == ordem.front();
                    if (!voltou) {
                        ordem.push_back(numero);
                        nomes << QString("%1=%2").arg(foco->objectName()).arg(numero);
                    }
                }
                QTest::keyClick(foco != nullptr ? foco : &janela, Qt::Key_Tab);
            }
            std::rotate(ordem.begin(), std::min_element(ordem.begin(), ordem.end()), ordem.end());
            EXPECT_TRUE(std::is_sorted(ordem.begin(), ordem.end())) << "page " << pagina << ": " << S(nomes.join(" "));
            for (const QWidget *widget : janela.findChildren<QWidget *>()) {
                if ((EhCampo(*widget) || qobject_cast<const QAbstractButton *>(widget)) && widget->isVisible() &&
                    widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) && widget->focusProxy() == nullptr) {
                    EXPECT_EQ(alcancados.count(widget), 1U) << "page " << pagina << ": " << NomeDe(*widget);
                }
            }
        };
        CadaPagina(janela, confere, true);
    });
}

TEST_F(JanelasTeste, Forms_TabKey_LeadsWhereItLeadsAPersonWithoutAScreen)
{
    std::size_t lugares = 0;
    CadaFormNaTela([&](IForm &form, JanelaForm &janela) {
        form.DefineVisible(true);
        VaiAoPrimeiro(janela);
        const auto semTela = VoltaSemTela(janela);
        EXPECT_EQ(VoltaNaTela(janela), semTela);
        lugares += semTela.size();
    });
    EXPECT_GE(lugares, 30U);
}

TEST_F(JanelasTeste, Forms_TabKey_FollowsAnOrderThatChangesWhileTheWindowIsOpen)
{
    CadaFormNaTela([&](IForm &form, JanelaForm &janela) {
        form.DefineVisible(true);
        VaiAoPrimeiro(janela);
        const auto antes = VoltaSemTela(janela);
        if (antes.size() > 3) {
            EmOrdemDeTab(form).front()->DefineTabIndex(static_cast<std::int16_t>(form.Controles().size()));
            for (const Ref<IControle> &controle : form.Controles()) {
                if (controle == form.ControleAtivo()) {
                    controle->DefineTabIndex(static_cast<std::int16_t>(form.Controles().size() / 2));
                    break;
                }
            }
            const auto depois = VoltaSemTela(janela);
            EXPECT_NE(depois, antes);
            EXPECT_EQ(VoltaNaTela(janela), depois);
        }
    });
}

TEST_F(JanelasTeste, Forms_TextsOfAllLabels_AreShownAsTheyAre)
{
    CadaForm([](IForm &form, JanelaForm &janela) {
        for (const Ref<IControle> &controle : form.Controles()) {
            if (controle->Especie() == EspecieControle::Label) {
                controle->DefineCaption("Arquivo C:\\<b>a</b>&b.pdf");
                if (const auto *rotulo = janela.findChild<QLabel *>(Q(controle->Nome()))) {
                    EXPECT_EQ(S(rotulo->text()), "Arquivo C:\\<b>a</b>&b.pdf");
                }
            }
        }
        for (const QLabel *rotulo : janela.findChildren<QLabel *>()) {
            if (!rotulo->text().isEmpty() && !rotulo->inherits("QTipLabel")) {
                EXPECT_EQ(rotulo->textFormat(), Qt::PlainText) << NomeDe(*rotulo) << ": " << S(rotulo->text());
            }
        }
    });
}

TEST_F(JanelasTeste, Box_OfAnError_ShowsTagsInItsTextsAsTheyAre)
{
    std::vector<Qt::TextFormat> formatos;
    ComCaixas([&] { mesa.Hospedeiro()->CriaMensagem()->ExibeErro("frmA", 5, "Falhou <b>", "Raiz < <b>", "Título"); },
              [&](const QMessageBox &caixa) {
                  for (const QLabel *rotulo : caixa.findChildren<QLabel *>()) {
                      if (rotulo->text().contains("<b>")) {
                          formatos.push_back(rotulo->textFormat());
                      }
                  }
              });
    EXPECT_EQ(formatos, (std::vector<Qt::TextFormat>{Qt::PlainText, Qt::PlainText}));
}

TEST_F(JanelasTeste, Screen_IsTheWholeOne)
{
    const QSize tela = QGuiApplication::primaryScreen()->size();
    EXPECT_EQ(mesa.Hospedeiro()->Plataforma()->LarguraTela(), tela.width() * 15);
    EXPECT_EQ(mesa.Hospedeiro()->Plataforma()->AlturaTela(), tela.height() * 15);
}

// The certificates of printed calibrations in the directory of temporary documents.
class CertificadosTeste : public JanelasTeste {
  protected:
    CertificadosTeste()
    {
        const Ref<SessaoServico> ana = registro.Sessao("ana");
        double numero = 0;
        std::string recusa;
        EXPECT_TRUE(ana->GuardaDocumento(documento, numero, recusa)) << recusa;
        const auto afericao = AfericaoDe("111", DataDe(10, 1, 2026), DataDe(10, 1, 2027), numero);
        Inclui(ana, Poe(EquipamentoDe("A1"), Poe(SensorDe(1), afericao)));
        mesa.Hospedeiro()->BancoLocal->AtualizaReplica(*ana);
        arquivo = temporarios.filePath("~VORAFER" + Q(registro.Sql("SELECT NroIntAfericao FROM AFERICAO")) + "-A1.pdf");
    }

    void Grava(const QString &caminho, const QByteArray &bytes)
    {
        QFile destino(caminho);
        ASSERT_TRUE(destino.open(QIODevice::WriteOnly));
        destino.write(bytes);
    }
    QStringList Certificados() const { return QDir(temporarios).entryList({"~VORAFER*"}, QDir::Files); }
    // The query window, with the calibration whose certificate it may print.
    QWidget *Consultada()
    {
        mesa.findChild<QAction *>("consultaAutuacao")->trigger();
        auto *consulta = mesa.findChild<QWidget *>("ConsultaAutuacao");
        consulta->findChild<QLineEdit *>("codigo")->setText("A1");
        consulta->findChild<QAbstractButton *>("comData")->setChecked(false);
        consulta->findChild<QAbstractButton *>("buscar")->click();
        QTest::keyClicks(consulta->findChild<QLineEdit *>("codOat"),
                         Q(registro.Sql("SELECT NroIntAfericao FROM AFERICAO")));
        return consulta;
    }
    QDialog *Imprime()
    {
        Consultada()->findChild<QAbstractButton *>("imprimir")->click();
        return mesa.findChild<QDialog *>("VisorPDF");
    }

    const Bytes documento = FazCertificadoPDF("Certificado", {"Equipamento: A1"});
    QDir temporarios{pasta.filePath("temporarios")};
    QString arquivo;
};

TEST_F(CertificadosTeste, Printed_OverALongerFile_IsTheDocumentAlone)
{
    Grava(arquivo, QByteArray(static_cast<qsizetype>(documento.size()) + 1000, 'x'));
    ASSERT_NE(Imprime(), nullptr);
    QFile impresso(arquivo);
    ASSERT_TRUE(impresso.open(QIODevice::ReadOnly));
    EXPECT_EQ(impresso.readAll(),
              QByteArray(reinterpret_cast<const char *>(documento.data()), static_cast<qsizetype>(documento.size())));
}

TEST_F(CertificadosTeste, Printed_WhenTheViewerIsDone_IsGone)
{
    QDialog *visor = Imprime();
    ASSERT_NE(visor, nullptr);
    EXPECT_EQ(Certificados().size(), 1);
    Grava(temporarios.filePath("outro.pdf"), "x");
    visor->close();
    EXPECT_EQ(Certificados(), QStringList());
    EXPECT_TRUE(QFile::exists(temporarios.filePath("outro.pdf")));
}

TEST_F(CertificadosTeste, Printed_WhileTheViewerIsOpen_CanBeSavedThoughTheFileIsGone)
{
    ASSERT_NE(Imprime(), nullptr);
    QFile::remove(arquivo);
    EXPECT_EQ(mesa.findChild<QPdfDocument *>()->pageCount(), 1);
    EXPECT_FALSE(mesa.findChild<QPdfDocument *>()->render(0, {100, 140}).isNull());
}

TEST_F(CertificadosTeste, Printed_OfWhoSignsOut_IsNoLongerSeen)
{
    const QPointer<QDialog> visor = Imprime();
    ASSERT_FALSE(visor.isNull());
    mesa.Sai();
    EXPECT_TRUE(visor.isNull() || !visor->isVisible());
    EXPECT_EQ(Certificados(), QStringList());
}

TEST_F(CertificadosTeste, Printed_OnADiskThatTakesNoMore_LeavesNoPart)
{
    auto *imprimir = Consultada()->findChild<QAbstractButton *>("imprimir");
    int erros = 0;
    ComCaixas(
        [&] {
            const DiscoApertado apertado(100);
            imprimir->click();
        },
        [&](const QMessageBox &) { ++erros; });
    EXPECT_EQ(erros, 1);
    EXPECT_EQ(mesa.findChild<QDialog *>("VisorPDF"), nullptr);
    EXPECT_EQ(Certificados(), QStringList());
}

TEST_F(CertificadosTeste, LeftBehind_AtSignInAndSignOut_AreGone)
{
    Grava(arquivo, "x");
    mesa.Sai();
    EXPECT_EQ(Certificados(), QStringList());
    Grava(arquivo, "x");
    mesa.Entra(registro.Sessao("ana"));
    EXPECT_EQ(Certificados(), QStringList());
}

TEST(CertificadosDeAntes, AtTheStart_AreGone)
{
    const QTemporaryDir pasta;
    const QDir temporarios(pasta.filePath("temporarios"));
    ASSERT_TRUE(temporarios.mkpath("."));
    QFile deixado(temporarios.filePath("~VORAFER1-A.pdf"));
    ASSERT_TRUE(deixado.open(QIODevice::WriteOnly));
    deixado.close();
    const Instante manha = DataDe(20, 11, 2026, 9, 30, 0);
    Preferencias preferencias(pasta.filePath("preferencias.ini").toStdString());
    const Mesa mesa(
        Servicos::Cria(pasta.filePath("registro.db").toStdString(), TipoDeRegistro::Registro,
                       [manha] { return manha; }),
        pasta.path().toStdString(), [manha] { return manha.Local; }, preferencias);
    EXPECT_EQ(temporarios.entryList({"~VORAFER*"}, QDir::Files), QStringList());
}

TEST_F(JanelasTeste, FrameOfTheCriteria_HasTheColourOfButtons)
{
    ASSERT_TRUE(mesa.Modulo()->ClickMenu("mnuModVOREquiptos"));
    const auto *quadro = mesa.findChild<QGroupBox *>("fraDados_0");
    ASSERT_NE(quadro, nullptr);
    EXPECT_EQ(quadro->backgroundRole(), QPalette::Button);
    EXPECT_TRUE(quadro->autoFillBackground());
}

TEST_F(JanelasTeste, Event_ThatRaises_ShowsTheErrorAndLeavesTheWindow)
{
    auto *janela = AbreLista();
    ASSERT_NE(janela, nullptr);
    const Conexao conexao =
        Controle<IztCombo>(*janela->Form(), "cboTipoEquipto")->Change().liga([] { throw Falha(13); });
    QStringList vistos;
    auto *widget = janela->findChild<QComboBox *>("cboTipoEquipto");
    ASSERT_NE(widget, nullptr);
    ASSERT_TRUE(widget->isEnabled());
    ComCaixas([&] { QTest::keyClick(widget, Qt::Key_Down); },
              [&](const QMessageBox &caixa) { vistos << caixa.text() + " | " + caixa.informativeText(); });
    ASSERT_EQ(vistos.size(), 1);
    EXPECT_TRUE(vistos[0].contains("Erro 13 em Mesa")) << S(vistos[0]);
    EXPECT_TRUE(janela->isVisible());
    EXPECT_EQ(mesa.Hospedeiro()->Plataforma()->NroForms(), 1);
}

TEST_F(JanelasTeste, StatusBar_OfTheOneWhoIsIn_TellsWhoWhereAndHowFresh)
{
    const auto texto = [this](const char *nome) { return S(mesa.findChild<QLabel *>(nome)->text()); };
    EXPECT_EQ(texto("estadoUsuario"), "Usuário: Ana Souza");
    EXPECT_EQ(texto("estadoCliente"), "Cliente: Autoridade Estadual de Trânsito   Setor: Fiscalização");
    EXPECT_EQ(texto("estadoReplica"), "Dados considerados até 20/11/2026 10:00:00");
    EXPECT_FALSE(mesa.findChild<QWidget *>("estadoForcar")->isVisible());
    mesa.Sai();
    EXPECT_EQ(texto("estadoUsuario"), "Ninguém entrou");
    EXPECT_EQ(texto("estadoCliente") + texto("estadoReplica"), "");
}

TEST_F(JanelasTeste, Pointer_OfWaiting_IsSeenUntilTheEndOrTheFirstBox)
{
    const Ref<IPlataforma> plataforma = mesa.Hospedeiro()->Plataforma();
    ASSERT_EQ(QApplication::overrideCursor(), nullptr);
    plataforma->DefinePonteiro(PonteiroAmpulheta);
    plataforma->DefinePonteiro(PonteiroAmpulheta);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    plataforma->DefinePonteiro(PonteiroNormal);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(JanelasTeste, Search_UntilItsRowsAreThere_ShowsTheWaitPointer)
{
    Inclui(registro.Sessao("ana"), EquipamentoDe("A1"));
    auto *janela = AbreLista();
    ASSERT_NE(janela, nullptr);
    std::map<std::int32_t, bool> esperava; // by number of rows, at their arrival
    const auto lista = Controle<ztList>(*janela->Form(), "ztlLista");
    const Conexao conexao = lista->Mudou().liga([&] {
        const QCursor *cursor = QApplication::overrideCursor();
        esperava.emplace(lista->NroItens(), cursor != nullptr && cursor->shape() == Qt::WaitCursor);
    });
    janela->findChild<QAbstractButton *>("ztlLista_localizar")->click();
    ASSERT_EQ(esperava.count(1), 1U);
    EXPECT_TRUE(esperava[1]);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
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
