#include "desk/windows/Traducao.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Teclado.h"

#include <QAbstractItemModel>
#include <QCalendarWidget>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QSpinBox>
#include <QTest>
#include <QTextBrowser>
#include <QTranslator>
#include <QTreeView>

#include <gtest/gtest.h>

#include <memory>
#include <set>

using namespace mesa;

namespace {

// Writes down what the toolkit asks to be translated.
class Escuta : public QTranslator {
  public:
    bool isEmpty() const override { return false; }
    QString translate(const char *contexto, const char *original, const char *, int) const override
    {
        m_Pedidos.emplace(contexto, original);
        return {};
    }
    // Of these, what is shown as it stands in the toolkit's source.
    std::set<std::string> SemTraducao() const
    {
        std::set<std::string> faltam;
        for (const auto &[contexto, original] : m_Pedidos) {
            if (QCoreApplication::translate(contexto.c_str(), original.c_str()) == QString::fromStdString(original)) {
                faltam.insert(contexto + ": " + original);
            }
        }
        return faltam;
    }
    std::size_t Pedidos() const { return m_Pedidos.size(); }

  private:
    mutable std::set<std::pair<std::string, std::string>> m_Pedidos;
};

class TraducaoTeste : public testing::Test {
  protected:
    TraducaoTeste()
    {
        Traduz(dono);
        QCoreApplication::installTranslator(&escuta);
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    }
    ~TraducaoTeste() override { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs, false); }
    void Mostra(QWidget &janela)
    {
        janela.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&janela));
        QCoreApplication::processEvents();
    }
    // Words that are the same in Portuguese, names of keys and sizes of paper apart.
    void NadaEmIngles()
    {
        EXPECT_GT(escuta.Pedidos(), 0U);
        std::set<std::string> faltam = escuta.SemTraducao();
        std::erase_if(faltam, [](const std::string &falta) {
            static const std::set<std::string> iguais = {"OK", "&OK", "Menu", "Didot (DD)", "mm", "...", "Backup"};
            return iguais.contains(falta.substr(falta.find(": ") + 2)) || falta.starts_with("QShortcut: ") ||
                   falta.starts_with("QPageSize: ") ||
                   falta.find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", falta.find(": ") + 2) ==
                       std::string::npos;
        });
        EXPECT_EQ(faltam, std::set<std::string>());
    }

    QTemporaryDir pasta;
    QObject dono;
    Escuta escuta;
};

} // namespace

TEST_F(TraducaoTeste, FileDialog_KindsOfFiles_InPortuguese)
{
    QDir(pasta.path()).mkdir("dentro");
    QFile arquivo(pasta.filePath("certificado.pdf"));
    ASSERT_TRUE(arquivo.open(QIODevice::WriteOnly));
    arquivo.close();
    QFileDialog dialogo(nullptr, "Selecione", pasta.path());
    dialogo.setViewMode(QFileDialog::Detail);
    Mostra(dialogo);
    const auto *lista = dialogo.findChild<QTreeView *>();
    const QAbstractItemModel *linhas = lista->model();
    ASSERT_TRUE(QTest::qWaitFor([&] { return linhas->rowCount(lista->rootIndex()) == 2; }));
    QStringList tipos;
    for (int linha = 0; linha < 2; ++linha) {
        tipos << linhas->index(linha, 2, lista->rootIndex()).data().toString();
    }
    EXPECT_TRUE(tipos.contains("Pasta")) << tipos.join(", ").toStdString();
    EXPECT_FALSE(tipos.contains("Folder"));
    NadaEmIngles();
}

TEST_F(TraducaoTeste, DialogsOfFilesAndPrinting_NoEnglishWord)
{
    for (const auto modo : {QFileDialog::AcceptOpen, QFileDialog::AcceptSave}) {
        QFileDialog dialogo(nullptr, "Selecione", pasta.path());
        dialogo.setAcceptMode(modo);
        Mostra(dialogo);
    }
    QFileDialog pastas;
    pastas.setFileMode(QFileDialog::Directory);
    Mostra(pastas);
    QPrinter impressora(QPrinter::HighResolution);
    QPrintDialog impressao(&impressora);
    impressao.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange |
                         QAbstractPrintDialog::PrintCurrentPage);
    Mostra(impressao);
    NadaEmIngles();
}

TEST_F(TraducaoTeste, StandardButtonsAndMenusOfFields_NoEnglishWord)
{
    QDialogButtonBox botoes(QDialogButtonBox::StandardButtons(
        QDialogButtonBox::Ok | QDialogButtonBox::Open | QDialogButtonBox::Save | QDialogButtonBox::Cancel |
        QDialogButtonBox::Close | QDialogButtonBox::Discard | QDialogButtonBox::Apply | QDialogButtonBox::Reset |
        QDialogButtonBox::RestoreDefaults | QDialogButtonBox::Help | QDialogButtonBox::SaveAll | QDialogButtonBox::Yes |
        QDialogButtonBox::YesToAll | QDialogButtonBox::No | QDialogButtonBox::NoToAll | QDialogButtonBox::Abort |
        QDialogButtonBox::Retry | QDialogButtonBox::Ignore));
    Mostra(botoes);
    QLineEdit campo;
    campo.setClearButtonEnabled(true);
    const std::unique_ptr<QMenu> doCampo(campo.createStandardContextMenu());
    EXPECT_GT(doCampo->actions().size(), 5);
    QPlainTextEdit linhas;
    const std::unique_ptr<QMenu> dasLinhas(linhas.createStandardContextMenu());
    QTextBrowser texto;
    const std::unique_ptr<QMenu> doTexto(texto.createStandardContextMenu());
    QCalendarWidget calendario;
    Mostra(calendario);
    QSpinBox numero;
    Mostra(numero);
    QMdiArea area;
    area.addSubWindow(new QWidget);
    Mostra(area);
    QMessageBox caixa;
    caixa.setDetailedText("detalhes");
    Mostra(caixa);
    NadaEmIngles();
}

class TitulosTeste : public MesaTeste {};

// Whether the module says something, refuses, or the desk does: one title, and the mark of warning only where something
// has to be mended.
TEST_F(TitulosTeste, Boxes_OfModuleAndDesk_HaveOneTitleAndTheIconOfWhatTheySay)
{
    const auto caixa = [](const QString &texto, const QString &titulo, QMessageBox::Icon icone) {
        return [=] {
            const auto *aberta = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            return aberta != nullptr && aberta->text().contains(texto) && aberta->windowTitle() == titulo &&
                   aberta->icon() == icone;
        };
    };
    Entra();
    EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                  t.Ctrl(Qt::Key_1).EsperaJanela("frmLista").Alt('L');
                  t.Espera("nothing found", caixa("Não foram encontrados registros", "Registro de Equipamentos",
                                                  QMessageBox::Information));
                  t.Tecla(Qt::Key_Return).EsperaJanela("frmLista");
                  t.Alt('E').EscolheNoMenu("Preferências...").EsperaJanela("Preferencias").Alt('E');
                  t.Espera("the desk's question", caixa("Esquecer?", "Atenção", QMessageBox::Question));
                  t.Alt('S').Espera("done", caixa("O que foi lembrado foi esquecido.", "Registro de Equipamentos",
                                                  QMessageBox::Information));
                  t.Tecla(Qt::Key_Return).EsperaJanela("Preferencias").Tecla(Qt::Key_Escape);
              }),
              "");
}

TEST_F(TitulosTeste, About_TellsTheVersionAndCopiesIt)
{
    Entra();
    EXPECT_EQ(Teclado::Percorre([](Teclado &t) {
                  t.Alt('U').EscolheNoMenu("Sobre").EsperaJanela("Sobre").Alt('C');
                  t.Espera("the text is copied", [] {
                      const QString copiado = QApplication::clipboard()->text();
                      return copiado.contains("Versão 1.00.0047") && copiado.contains(QString("Qt ") + qVersion()) &&
                             copiado.contains("SQLite 3.") && copiado.contains("Dados: /") &&
                             copiado.contains("Licença: MIT");
                  });
                  t.Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
              }),
              "");
}
