#include "desk/tour/Condutor.h"

#include "desk/tour/Cortes.h"
#include "desk/tour/Telas.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QPixmap>
#include <QScreen>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QThread>

#include <algorithm>

namespace mesa {

namespace {

constexpr int EsperaMaxima = 60000; // ms
constexpr int Pausa = 15;           // ms, of the waiting thread between two looks
constexpr int Escuro = 90;          // grey level of letters; frames and shadows are lighter
constexpr int PoucasLetras = 500;   // pixels

// The window that the person looks at: the topmost modal one, else the active child window.
QWidget *Frente()
{
    if (QWidget *modal = QApplication::activeModalWidget()) {
        return modal;
    }
    for (QWidget *janela : QApplication::topLevelWidgets()) {
        if (janela->isVisible() && janela->objectName() == "VisorPDF") {
            return janela;
        }
    }
    return JanelaAtiva();
}

QWidget *Visivel(const QString &nome)
{
    QWidget *achado = Procura(Frente(), nome);
    if (achado == nullptr) {
        achado = Procura(Principal(), nome);
    }
    return achado != nullptr && achado->isVisible() ? achado : nullptr;
}

QTableView *Linhas(const QString &lista)
{
    return qobject_cast<QTableView *>(Visivel(lista + "/linhas"));
}

int Coluna(const QTableView &tabela, const QString &titulo)
{
    for (int coluna = 0; coluna < tabela.model()->columnCount(); ++coluna) {
        if (tabela.model()->headerData(coluna, Qt::Horizontal).toString() == titulo) {
            return coluna;
        }
    }
    return -1;
}

// The windows on the screen, each behind those that were opened from it.
QList<QWidget *> NaTelaAgora()
{
    QList<QWidget *> janelas;
    for (QWidget *janela : QApplication::topLevelWidgets()) {
        if (janela->isVisible() && janela->width() > 1) {
            janelas << janela;
        }
    }
    const auto profundidade = [](const QWidget *janela) {
        int nivel = 0;
        for (const QWidget *dono = janela->parentWidget(); dono != nullptr; dono = dono->parentWidget()) {
            ++nivel;
        }
        return nivel;
    };
    std::stable_sort(janelas.begin(), janelas.end(),
                     [&](const QWidget *a, const QWidget *b) { return profundidade(a) < profundidade(b); });
    return janelas;
}

// Presses and releases the key of each letter, accented ones included.
void Tecla(QWidget *widget, const QString &texto)
{
    for (const QChar letra : texto) {
        for (const QEvent::Type tipo : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent evento(tipo, letra.toUpper().unicode(), Qt::NoModifier, letra);
            QApplication::sendEvent(widget, &evento);
        }
    }
}

} // namespace

Condutor::Condutor(const QString &pasta) : m_Pasta(pasta)
{
    QDir().mkpath(pasta);
}

void Condutor::Posta(const std::function<void()> &acao)
{
    QMetaObject::invokeMethod(qApp, acao, Qt::QueuedConnection);
}

void Condutor::Relata(const QString &linha)
{
    m_Relato << linha;
}

QString Condutor::GravaRelato() const
{
    const QString caminho = m_Pasta + "/relato.md";
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::WriteOnly)) {
        throw Diferenca("Não foi possível gravar " + caminho);
    }
    arquivo.write(m_Relato.join('\n').toUtf8() + "\n");
    return caminho;
}

void Condutor::Passo(const QString &titulo, const std::function<void()> &acoes)
{
    ++m_Passos;
    m_Caixas = 0;
    Relata(QString("\n## %1. %2\n").arg(m_Passos).arg(titulo));
    try {
        acoes();
    } catch (...) {
        Retrato("diferenca");
        throw;
    }
    QString nome;
    for (const QChar letra : titulo.normalized(QString::NormalizationForm_D).toLower()) {
        if (letra.isLetterOrNumber()) {
            nome += letra;
        } else if (letra == ' ' && !nome.endsWith('-')) {
            nome += '-';
        }
    }
    Retrato(QString("%1-%2").arg(m_Passos, 2, 10, QChar('0')).arg(nome));
}

void Condutor::RetratoDaCaixa()
{
    ++m_Caixas;
    Retrato(QString("%1-caixa-%2").arg(m_Passos, 2, 10, QChar('0')).arg(m_Caixas));
}

// What is on the screen: each window where it stands, behind those that were opened from it.
void Condutor::Retrato(const QString &nome)
{
    NaTela([&] {
        // Layouts that the first round asks for are made in the second.
        QApplication::processEvents();
        QApplication::processEvents();
        Mede();
        const QScreen &tela = *QGuiApplication::primaryScreen();
        QPixmap foto(tela.size() * tela.devicePixelRatio());
        foto.setDevicePixelRatio(tela.devicePixelRatio());
        foto.fill(QColor("#5b6b7c"));
        QPainter pincel(&foto);
        for (QWidget *janela : NaTelaAgora()) {
            const QPoint onde = janela->mapToGlobal(QPoint());
            if (janela->windowType() != Qt::Popup && !janela->isMaximized()) {
                // Windows are drawn without the frame that a desktop gives them: a title bar stands in for it.
                const int altura = QFontMetrics(pincel.font()).height() + 8;
                const QRect barra(onde.x(), onde.y() - altura, janela->width(), altura);
                pincel.fillRect(barra.adjusted(-1, -1, 1, janela->height() + 1), QColor("#2b4a6f"));
                pincel.setPen(Qt::white);
                pincel.drawText(barra.adjusted(8, 0, -8, 0), Qt::AlignVCenter | Qt::AlignLeft, janela->windowTitle());
            }
            pincel.drawPixmap(onde, janela->grab());
        }
        pincel.end();
        if (!foto.save(m_Pasta + "/" + nome + ".png")) {
            throw Diferenca("Não foi possível gravar a imagem " + nome);
        }
    });
    Relata(QString("![%1](%1.png)").arg(nome));
}

void Condutor::Mede()
{
    for (const QWidget *janela : NaTelaAgora()) {
        QStringList cortes = TextosCortados(*janela) + ForaDoLugar(*janela);
        const QRect onde(janela->mapToGlobal(QPoint()), janela->size());
        if (!janela->screen()->availableGeometry().contains(onde)) {
            cortes << QString("off the screen: %1 at %2, %3, %4x%5")
                          .arg(janela->objectName())
                          .arg(onde.x())
                          .arg(onde.y())
                          .arg(onde.width())
                          .arg(onde.height());
        }
        for (const QString &corte : cortes) {
            if (!m_Cortes.contains(corte)) {
                m_Cortes << corte;
                Relata("- **corte**: " + corte);
            }
        }
    }
}

void Condutor::Alcanca(const QString &nome)
{
    const bool alcancado = NaTela([=] {
        QWidget *widget = Visivel(nome);
        for (QWidget *dono = widget; dono != nullptr; dono = dono->parentWidget()) {
            if (auto *rolagem = qobject_cast<QScrollArea *>(dono); rolagem != nullptr && dono != widget) {
                rolagem->ensureWidgetVisible(widget);
            }
        }
        if (widget == nullptr || widget->visibleRegion().isEmpty()) {
            return false;
        }
        const QRect visto = widget->visibleRegion().boundingRect();
        return widget->screen()->availableGeometry().contains(widget->mapToGlobal(visto.center()));
    });
    if (!alcancado) {
        throw Diferenca(nome + " está na janela, e não se chega até lá");
    }
}

void Condutor::Espera(const QString &oQue, const std::function<bool()> &condicao)
{
    QElapsedTimer relogio;
    relogio.start();
    while (!NaTela(condicao)) {
        if (relogio.elapsed() > EsperaMaxima) {
            throw Diferenca("Esperava-se: " + oQue);
        }
        QThread::msleep(Pausa);
    }
    ++m_Conferencias;
    Relata("- confere: " + oQue);
}

void Condutor::Clica(const QString &nome)
{
    Espera(nome + " pode ser clicado", [=] {
        QWidget *widget = Visivel(nome);
        return widget != nullptr && widget->isEnabled();
    });
    Alcanca(nome);
    Relata("- clica em " + nome);
    Posta([=] {
        if (QWidget *widget = Visivel(nome)) {
            // A box or option is clicked on its mark, which may be narrower than the widget.
            const bool marca = qobject_cast<QAbstractButton *>(widget) != nullptr &&
                               qobject_cast<QAbstractButton *>(widget)->isCheckable();
            QTest::mouseClick(widget, Qt::LeftButton, {}, marca ? QPoint(10, widget->height() / 2) : QPoint());
        }
    });
}

void Condutor::ClicaMenu(const QString &menu, const QString &acao)
{
    Relata("- escolhe no menu " + menu + " > " + acao);
    Espera("o menu oferece " + acao, [=] {
        for (const QAction *item : Principal()->menuBar()->actions()) {
            if (item->text().remove('&') == menu) {
                for (QAction *opcao : item->menu()->actions()) {
                    if (opcao->text().remove('&') == acao && opcao->isEnabled()) {
                        return true;
                    }
                }
            }
        }
        return false;
    });
    NaTela([=] {
        for (const QAction *item : Principal()->menuBar()->actions()) {
            if (item->text().remove('&') == menu) {
                item->menu()->popup(Principal()->menuBar()->mapToGlobal(
                    Principal()->menuBar()->actionGeometry(const_cast<QAction *>(item)).bottomLeft()));
            }
        }
    });
    RetratoDaCaixa();
    Posta([=] {
        for (const QAction *item : Principal()->menuBar()->actions()) {
            if (item->text().remove('&') == menu) {
                QMenu *aberto = item->menu();
                for (QAction *opcao : aberto->actions()) {
                    if (opcao->text().remove('&') == acao) {
                        QTest::mouseClick(aberto, Qt::LeftButton, {}, aberto->actionGeometry(opcao).center());
                        return;
                    }
                }
            }
        }
    });
}

void Condutor::Digita(const QString &nome, const QString &texto)
{
    Espera(nome + " aceita o que se digita", [=] {
        QWidget *widget = Visivel(nome);
        return widget != nullptr && widget->isEnabled();
    });
    Alcanca(nome);
    Relata("- digita \"" + texto + "\" em " + nome);
    NaTela([=] {
        QWidget *widget = Visivel(nome);
        QTest::mouseClick(widget, Qt::LeftButton);
        QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(widget, Qt::Key_Delete);
        mesa::Tecla(widget, texto);
    });
}

void Condutor::Tecla(Qt::Key tecla, Qt::KeyboardModifiers modificadores)
{
    Relata("- tecla " + QKeySequence(static_cast<int>(tecla) | static_cast<int>(modificadores)).toString());
    Posta([=] {
        QWidget *alvo = QApplication::focusWidget();
        QTest::keyClick(alvo == nullptr ? Frente() : alvo, tecla, modificadores);
    });
}

void Condutor::Escolhe(const QString &nome, const QString &texto)
{
    Espera(nome + " oferece \"" + texto + "\"", [=] {
        auto *combo = qobject_cast<QComboBox *>(Visivel(nome));
        return combo != nullptr && combo->isEnabled() && combo->findText(texto) >= 0;
    });
    Alcanca(nome);
    Relata("- escolhe \"" + texto + "\" em " + nome);
    Posta([=] {
        auto *combo = qobject_cast<QComboBox *>(Visivel(nome));
        combo->setFocus();
        combo->showPopup();
        combo->view()->setCurrentIndex(combo->model()->index(combo->findText(texto), 0));
        QTest::keyClick(combo->view(), Qt::Key_Return);
    });
    Espera("\"" + texto + "\" está escolhido", [=] {
        auto *combo = qobject_cast<QComboBox *>(Visivel(nome));
        return combo != nullptr && combo->currentText() == texto;
    });
}

void Condutor::EsperaAba(const QString &nome, int pagina)
{
    Espera(QString("a página %1 de %2 está disponível").arg(pagina).arg(nome), [=] {
        auto *abas = qobject_cast<QTabWidget *>(Visivel(nome));
        return abas != nullptr && abas->isTabEnabled(pagina);
    });
}

void Condutor::AbreAba(const QString &nome, int pagina)
{
    EsperaAba(nome, pagina);
    Posta([=] {
        auto *abas = qobject_cast<QTabWidget *>(Visivel(nome));
        QTest::mouseClick(abas->tabBar(), Qt::LeftButton, {}, abas->tabBar()->tabRect(pagina).center());
    });
    Espera(QString("a página %1 está aberta").arg(pagina), [=] {
        auto *abas = qobject_cast<QTabWidget *>(Visivel(nome));
        return abas != nullptr && abas->currentIndex() == pagina;
    });
}

void Condutor::ClicaLinha(const QString &lista, int linha)
{
    Espera(QString("%1 tem a linha %2").arg(lista).arg(linha), [=] {
        const QTableView *tabela = Linhas(lista);
        return tabela != nullptr && tabela->model()->rowCount() >= linha;
    });
    Relata(QString("- clica na linha %1 de %2").arg(linha).arg(lista));
    Posta([=] {
        QTableView *tabela = Linhas(lista);
        int coluna = 0;
        while (tabela->isColumnHidden(coluna)) {
            ++coluna;
        }
        QTest::mouseClick(tabela->viewport(), Qt::LeftButton, {},
                          tabela->visualRect(tabela->model()->index(linha - 1, coluna)).center());
    });
    Espera(QString("a linha %1 é a atual").arg(linha),
           [=] { return Linhas(lista) != nullptr && Linhas(lista)->currentIndex().row() == linha - 1; });
}

void Condutor::Responde(const QString &texto, const QString &botao)
{
    Espera("pergunta ou aviso: \"" + texto + "\"", [=] {
        auto *caixa = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        return caixa != nullptr && caixa->isVisible() && caixa->text().contains(texto);
    });
    RetratoDaCaixa();
    Relata("- responde \"" + botao + "\"");
    Posta([=] {
        auto *caixa = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        for (QAbstractButton *opcao : caixa->buttons()) {
            if (opcao->text().remove('&') == botao) {
                QTest::mouseClick(opcao, Qt::LeftButton);
                return;
            }
        }
    });
    Espera("a caixa foi fechada", [=] {
        auto *caixa = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        return caixa == nullptr || !caixa->text().contains(texto);
    });
}

void Condutor::EscolheArquivo(const QString &caminho)
{
    Espera("a escolha de arquivo está aberta", [] {
        auto *dialogo = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        return dialogo != nullptr && dialogo->isVisible();
    });
    RetratoDaCaixa();
    Relata("- escolhe o arquivo");
    Posta([=] {
        auto *nome = QApplication::activeModalWidget()->findChild<QLineEdit *>("fileNameEdit");
        nome->clear();
        mesa::Tecla(nome, caminho);
        QTest::keyClick(nome, Qt::Key_Return);
    });
    Espera("a escolha de arquivo foi fechada",
           [] { return qobject_cast<QFileDialog *>(QApplication::activeModalWidget()) == nullptr; });
}

void Condutor::FechaJanela(const QString &nome)
{
    EsperaJanela(nome);
    Relata("- fecha a janela " + nome);
    Posta([] { Frente()->close(); });
    EsperaSemJanela(nome);
}

void Condutor::EsperaJanela(const QString &nome)
{
    Espera("a janela " + nome + " está na frente", [=] {
        const QWidget *frente = Frente();
        return frente != nullptr && frente->objectName() == nome && frente->isVisible();
    });
}

void Condutor::EsperaSemJanela(const QString &nome)
{
    Espera("a janela " + nome + " não está mais na frente", [=] {
        const QWidget *frente = Frente();
        return frente == nullptr || frente->objectName() != nome;
    });
}

void Condutor::EsperaPaginas(const QString &nome)
{
    Espera(nome + " mostra as letras do documento", [=] {
        QWidget *widget = Visivel(nome);
        if (widget == nullptr) {
            return false;
        }
        const QImage imagem = widget->grab().toImage();
        int escuros = 0;
        for (int y = 0; y < imagem.height(); ++y) {
            for (int x = 0; x < imagem.width(); ++x) {
                escuros += qGray(imagem.pixel(x, y)) < Escuro ? 1 : 0;
            }
        }
        return escuros > PoucasLetras;
    });
}

void Condutor::ConfereTexto(const QString &nome, const QString &esperado)
{
    try {
        Espera(nome + " mostra \"" + esperado + "\"",
               [=] { return Visivel(nome) != nullptr && TextoDe(Visivel(nome)) == esperado; });
    } catch (const Diferenca &) {
        const QString visto = NaTela([=] { return TextoDe(Visivel(nome)); });
        throw Diferenca(nome + " devia mostrar \"" + esperado + "\" e mostra \"" + visto + "\"");
    }
}

void Condutor::ConfereLinhas(const QString &lista, int quantas)
{
    Espera(QString("%1 tem %2 linha(s)").arg(lista).arg(quantas), [=] {
        const QTableView *tabela = Linhas(lista);
        return tabela != nullptr && tabela->model()->rowCount() == quantas;
    });
}

void Condutor::ConfereCelula(const QString &lista, int linha, const QString &coluna, const QString &esperado)
{
    Espera(QString("%1, linha %2, %3 é \"%4\"").arg(lista).arg(linha).arg(coluna, esperado), [=] {
        const QTableView *tabela = Linhas(lista);
        return tabela != nullptr &&
               tabela->model()->index(linha - 1, Coluna(*tabela, coluna)).data().toString() == esperado;
    });
}

void Condutor::ConfereHabilitado(const QString &nome, bool esperado)
{
    Espera(nome + (esperado ? " está habilitado" : " está desabilitado"),
           [=] { return Visivel(nome) != nullptr && Visivel(nome)->isEnabled() == esperado; });
}

void Condutor::ConfereTravado(const QString &nome)
{
    const auto combo = [=] { return qobject_cast<QComboBox *>(Visivel(nome)); };
    Espera(nome + " está na tela", [=] { return combo() != nullptr; });
    const QString antes = NaTela([=] { return combo()->currentText(); });
    Posta([=] {
        combo()->setFocus();
        for (const auto tecla : {Qt::Key_Up, Qt::Key_Home, Qt::Key_Down}) {
            QTest::keyClick(combo(), tecla);
        }
    });
    const QString depois = NaTela([=] { return combo()->currentText(); });
    if (depois != antes) {
        throw Diferenca(nome + " devia continuar com \"" + antes + "\" e tem \"" + depois + "\"");
    }
}

void Condutor::ConfereFerramenta(const QString &nome, bool habilitada)
{
    Espera(nome + (habilitada ? " está habilitada" : " está desabilitada"), [=] {
        const auto *acao = Principal()->findChild<QAction *>(nome);
        return acao != nullptr && acao->isEnabled() == habilitada;
    });
}

void Condutor::Confere(const QString &oQue, const QString &visto, const QString &esperado)
{
    if (visto != esperado) {
        throw Diferenca(oQue + " devia ser \"" + esperado + "\" e é \"" + visto + "\"");
    }
    ++m_Conferencias;
    Relata("- confere no banco de dados: " + oQue + " é \"" + esperado + "\"");
}

} // namespace mesa
