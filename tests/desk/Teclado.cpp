#include "tests/desk/Teclado.h"

#include "desk/tour/Telas.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QThread>
#include <QWindow>

#include <array>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <utility>

using namespace mesa;

namespace {

constexpr int EsperaMaxima = 60000; // ms
constexpr int Pausa = 2;            // ms
constexpr int MuitasTeclas = 300;

// The moments of the keys, by the person's own clock.
class Relogio : public QObject {
  public:
    static constexpr quint64 EntreTeclas = 100; // ms
    static constexpr quint64 PausaLonga = 5000;

    void Anda(quint64 tempo) { m_Agora += tempo; }

  protected:
    bool eventFilter(QObject *, QEvent *evento) override
    {
        if (evento->type() == QEvent::KeyPress) {
            static_cast<QKeyEvent *>(evento)->setTimestamp(m_Agora);
        }
        return false;
    }

  private:
    quint64 m_Agora = 1000;
};

Relogio &DaPessoa()
{
    static Relogio relogio;
    return relogio;
}

constexpr std::array<std::pair<Qt::KeyboardModifier, Qt::Key>, 3> Modificadoras{{
    {Qt::ShiftModifier, Qt::Key_Shift},
    {Qt::ControlModifier, Qt::Key_Control},
    {Qt::AltModifier, Qt::Key_Alt},
}};

// What the keys do, one thing after the other. What comes of one may be an event loop of its own, and in that, as while
// its events are seen to, the next one is done: never one before those that were given earlier.
class Fila {
  public:
    void Poe(std::function<void()> ato) { m_Atos.push_back(std::move(ato)); }
    void Faz()
    {
        while (!m_Atos.empty()) {
            const std::function<void()> ato = std::move(m_Atos.front());
            m_Atos.pop_front();
            ato();
        }
    }
    void Esquece() { m_Atos.clear(); }
    bool Vazia() const { return m_Atos.empty(); }

  private:
    std::deque<std::function<void()>> m_Atos;
};

Fila &Teclas()
{
    static Fila teclas;
    return teclas;
}

// Puts in the queue one thing that a key does, and what comes of it, in which the window may go: nothing further
// reaches it then.
void Manda(const std::shared_ptr<QPointer<QWindow>> &janela, QEvent::Type oQue, int tecla,
           Qt::KeyboardModifiers modificadores, const QString &texto)
{
    Teclas().Poe([=] {
        if (!janela->isNull()) {
            qt_handleKeyEvent(*janela, oQue, tecla, modificadores, texto);
            QCoreApplication::processEvents();
        }
    });
}

// The top-level window that has the keyboard, or that a window manager would give it to.
QWidget *Topo()
{
    if (QWidget *modal = QApplication::activeModalWidget()) {
        QWidget *ativa = QApplication::activeWindow();
        for (const QWidget *dono = ativa; dono != nullptr; dono = dono->parentWidget()) {
            if (dono == modal) {
                return ativa; // the modal window itself, or one that stands in front of it
            }
        }
        return modal;
    }
    QWidget *ativa = QApplication::activeWindow();
    return ativa != nullptr && ativa->isVisible() ? ativa : Principal();
}

QMenu *MenuAberto()
{
    return qobject_cast<QMenu *>(QApplication::activePopupWidget());
}

QTableView *Linhas(const QString &lista)
{
    return qobject_cast<QTableView *>(Teclado::Acha(lista + "/linhas"));
}

// Where everybody is, for the one who reads that something was not as expected.
QString Situacao()
{
    const auto nome = [](const QWidget *widget) { return widget == nullptr ? QString("-") : widget->objectName(); };
    QString caixa;
    if (const auto *aberta = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
        caixa = ", box \"" + aberta->text() + "\"";
    }
    return " (in front: " + nome(Teclado::Frente()) + ", keyboard: " + nome(QApplication::focusWidget()) + caixa + ")";
}

} // namespace

std::string Teclado::Percorre(const std::function<void(Teclado &)> &jornada)
{
    QEventLoop telas;
    std::string diferenca;
    qApp->installEventFilter(&DaPessoa());
    const std::unique_ptr<QThread> pessoa(QThread::create([&] {
        Teclado teclado;
        try {
            jornada(teclado);
        } catch (const std::exception &problema) {
            diferenca = problema.what();
        }
        // Whatever still waits for an answer is closed, so that the windows' thread comes back.
        bool aberta = true;
        for (int vez = 0; aberta && vez < MuitasTeclas; ++vez) {
            aberta = NaTela([] {
                QWidget *janela = QApplication::activePopupWidget();
                janela = janela == nullptr ? QApplication::activeModalWidget() : janela;
                if (janela != nullptr) {
                    QMetaObject::invokeMethod(janela, &QWidget::close, Qt::QueuedConnection);
                }
                return janela != nullptr;
            });
        }
    }));
    QObject::connect(pessoa.get(), &QThread::finished, &telas, &QEventLoop::quit);
    pessoa->start();
    telas.exec();
    pessoa->wait();
    Teclas().Esquece();
    qApp->removeEventFilter(&DaPessoa());
    return diferenca;
}

Teclado &Teclado::Espera(const QString &oQue, const std::function<bool()> &condicao)
{
    QElapsedTimer relogio;
    relogio.start();
    while (!NaTela(condicao)) {
        if (relogio.elapsed() > EsperaMaxima) {
            throw std::runtime_error((oQue + NaTela(Situacao)).toStdString());
        }
        QThread::msleep(Pausa);
    }
    return *this;
}

void Teclado::Da(Qt::Key tecla, const QString &texto, Qt::KeyboardModifiers modificadores)
{
    QMetaObject::invokeMethod(
        qApp,
        [=] {
            const auto janela = std::make_shared<QPointer<QWindow>>();
            Teclas().Poe([janela] {
                QWidget *topo = Topo();
                if (topo == nullptr) {
                    return;
                }
                if (!topo->isActiveWindow()) {
                    topo->activateWindow(); // as a window manager does when another one goes
                    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
                }
                DaPessoa().Anda(Relogio::EntreTeclas);
                *janela = topo->windowHandle();
            });
            for (const auto &[modificador, propria] : Modificadoras) {
                if (modificadores.testFlag(modificador)) {
                    Manda(janela, QEvent::KeyPress, propria, {}, {});
                }
            }
            Manda(janela, QEvent::KeyPress, tecla, modificadores, texto);
            Manda(janela, QEvent::KeyRelease, tecla, modificadores, texto);
            for (const auto &[modificador, propria] : Modificadoras) {
                if (modificadores.testFlag(modificador)) {
                    Manda(janela, QEvent::KeyRelease, propria, modificador, {});
                }
            }
            Teclas().Faz();
        },
        Qt::QueuedConnection);
    NaTela([] {}); // it is on its way
}

Teclado &Teclado::Tecla(Qt::Key tecla, Qt::KeyboardModifiers modificadores)
{
    const bool espaco = tecla == Qt::Key_Space && modificadores == Qt::NoModifier;
    Da(tecla, tecla == Qt::Key_Return ? "\r" : espaco ? " " : "", modificadores);
    return *this;
}

Teclado &Teclado::Feito()
{
    return Espera("the key is done", [] { return Teclas().Vazia(); });
}

Teclado &Teclado::Descansa()
{
    NaTela([] { DaPessoa().Anda(Relogio::PausaLonga); });
    return *this;
}

Teclado &Teclado::Alt(char letra)
{
    const QChar maiuscula = QChar(letra).toUpper();
    Da(static_cast<Qt::Key>(maiuscula.unicode()), QString(maiuscula.toLower()), Qt::AltModifier);
    return *this;
}

Teclado &Teclado::Escreve(const QString &texto)
{
    for (const QChar letra : texto) {
        if (letra == '\t' || letra == '\r') {
            Tecla(letra == '\t' ? Qt::Key_Tab : Qt::Key_Return);
        } else {
            Da(static_cast<Qt::Key>(letra.toUpper().unicode()), letra,
               letra.isUpper() ? Qt::ShiftModifier : Qt::NoModifier);
        }
    }
    return *this;
}

Teclado &Teclado::TabAte(const QString &nome)
{
    for (int vez = 0; vez < MuitasTeclas; ++vez) {
        if (NaTela([&] { return Acha(nome) != nullptr && Acha(nome)->hasFocus(); })) {
            return *this;
        }
        Tecla(Qt::Key_Tab).Feito();
    }
    return Espera("Tab leads to " + nome, [] { return false; });
}

Teclado &Teclado::DesceAte(const QString &texto)
{
    QPointer<QComboBox> combo;
    Espera("the keyboard is in a combo", [&] {
        combo = qobject_cast<QComboBox *>(QApplication::focusWidget());
        return !combo.isNull();
    });
    const auto mostra = [&] { return !combo.isNull() && combo->currentText() == texto; };
    Tecla(Qt::Key_Home).Feito();
    for (int vez = 0; vez < MuitasTeclas && !NaTela(mostra); ++vez) {
        Tecla(Qt::Key_Down).Feito();
    }
    return Espera("the down key leads to \"" + texto + "\"", mostra);
}

Teclado &Teclado::EscolheNoMenu(const QString &texto)
{
    EsperaMenu();
    const auto atual = [&] {
        const QMenu *menu = MenuAberto();
        const QAction *acao = menu == nullptr ? nullptr : menu->activeAction();
        return acao != nullptr && acao->text().remove('&').contains(texto);
    };
    for (int vez = 0; vez < MuitasTeclas && !NaTela(atual); ++vez) {
        Tecla(Qt::Key_Down).Feito();
    }
    Espera("the menu offers \"" + texto + "\"", atual);
    return Tecla(Qt::Key_Return);
}

QWidget *Teclado::Frente()
{
    QWidget *topo = Topo();
    return topo != nullptr && topo == Principal() ? JanelaAtiva() : topo;
}

QWidget *Teclado::Acha(const QString &nome)
{
    for (QWidget *onde : {Frente(), static_cast<QWidget *>(Principal())}) {
        onde = Procura(onde, nome);
        if (onde != nullptr && onde->isVisible()) {
            return onde;
        }
    }
    return nullptr;
}

Teclado &Teclado::EsperaJanela(const QString &nome)
{
    return Espera("the window " + nome + " is in front",
                  [=] { return Frente() != nullptr && Frente()->objectName() == nome && Frente()->isVisible(); });
}

Teclado &Teclado::EsperaFoco(const QString &nome)
{
    return Espera("the keyboard is in " + nome, [=] { return Acha(nome) != nullptr && Acha(nome)->hasFocus(); });
}

Teclado &Teclado::EsperaTexto(const QString &nome, const QString &texto)
{
    return Espera(nome + " shows \"" + texto + "\"",
                  [=] { return Acha(nome) != nullptr && TextoDe(Acha(nome)) == texto; });
}

Teclado &Teclado::EsperaPagina(const QString &abas, int pagina)
{
    return Espera(QString("page %1 of %2").arg(pagina).arg(abas), [=] {
        const auto *aberta = qobject_cast<QTabWidget *>(Acha(abas));
        return aberta != nullptr && aberta->currentIndex() == pagina;
    });
}

Teclado &Teclado::EsperaMenu()
{
    return Espera("a menu is open", [] { return MenuAberto() != nullptr; });
}

Teclado &Teclado::EsperaEscolhaDeArquivo()
{
    return Espera("the file dialog waits for a name", [] {
        const QWidget *foco = QApplication::focusWidget();
        return qobject_cast<QFileDialog *>(QApplication::activeModalWidget()) != nullptr && foco != nullptr &&
               foco->objectName() == "fileNameEdit";
    });
}

Teclado &Teclado::EsperaCaixa(const QString &texto)
{
    return Espera("a box says \"" + texto + "\"", [=] {
        const auto *caixa = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        return caixa != nullptr && caixa->isVisible() && caixa->text().contains(texto);
    });
}

Teclado &Teclado::EsperaLinha(const QString &lista, int linha, const QString &texto)
{
    return Espera(QString("row %1 of %2 is current and has \"%3\"").arg(linha).arg(lista, texto), [=] {
        const QTableView *tabela = Linhas(lista);
        if (tabela == nullptr || tabela->currentIndex().row() != linha - 1) {
            return false;
        }
        for (int coluna = 0; coluna < tabela->model()->columnCount(); ++coluna) {
            if (!tabela->isColumnHidden(coluna) &&
                tabela->model()->index(linha - 1, coluna).data().toString() == texto) {
                return true;
            }
        }
        return false;
    });
}

Teclado &Teclado::EsperaLinhas(const QString &lista, int quantas)
{
    return Espera(QString("%1 has %2 rows").arg(lista).arg(quantas),
                  [=] { return Linhas(lista) != nullptr && Linhas(lista)->model()->rowCount() == quantas; });
}
