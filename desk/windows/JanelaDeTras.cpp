#include "desk/windows/JanelaDeTras.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QThread>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <utility>

namespace mesa {

namespace {

int Nivel()
{
    return QThread::currentThread()->loopLevel();
}

// The nearest window behind it that is seen.
QWidget *DeTras(const QWidget &janela)
{
    for (QWidget *dono = janela.parentWidget(); dono != nullptr; dono = dono->parentWidget()) {
        if (dono->isWindow() && dono->isVisible()) {
            return dono;
        }
    }
    return nullptr;
}

// Whether the person can go there now.
bool Livre(const QWidget *janela)
{
    if (janela == nullptr || !janela->isVisible()) {
        return false;
    }
    const QWidget *modal = QApplication::activeModalWidget();
    const QWidget *dono = janela; // what stands in front of a modal window is free with it
    while (dono != nullptr && dono != modal) {
        dono = dono->parentWidget();
    }
    return dono == modal;
}

bool ApertaPelaLetra(QObject *objeto, const QEvent &evento)
{
    auto *botao = qobject_cast<QAbstractButton *>(objeto);
    if (botao == nullptr || evento.type() != QEvent::Shortcut ||
        static_cast<const QShortcutEvent &>(evento).isAmbiguous()) {
        return false;
    }
    if (botao->isEnabled() && botao->isCheckable() && (botao->focusPolicy() & Qt::ClickFocus) != 0) {
        botao->setFocus();
    }
    botao->click();
    return true;
}

} // namespace

JanelaDeTras::JanelaDeTras(QObject *dono) : QObject(dono)
{
    qApp->installEventFilter(this);
}

JanelaDeTras::~JanelaDeTras()
{
    qApp->removeEventFilter(this);
}

void JanelaDeTras::Apareceu(const QWidget &janela)
{
    m_Origens[&janela] = QApplication::activeWindow();
    if (janela.isModal()) { // what was typed before is not for what nobody had seen
        m_Nivel = 0;
        m_Teclas.clear();
    }
}

void JanelaDeTras::Sumiu(const QWidget &janela)
{
    const auto origem = m_Origens.extract(&janela);
    QWidget *atras = origem ? origem.mapped().data() : nullptr;
    atras = Livre(atras) ? atras : DeTras(janela);
    if (atras == nullptr || QApplication::activeWindow() != nullptr) {
        return;
    }
    atras->activateWindow();
    m_Atras = atras;
    if (janela.isModal() && m_Nivel == 0) {
        m_Nivel = Nivel();
        m_Caixa = &janela;
        QTimer::singleShot(0, this, [this] { Solta(); });
    }
}

// As the keys come from the window system: first the question whether anything but the shortcuts wants one, then the
// key, for the window.
bool JanelaDeTras::Segura(QObject *objeto, QEvent &evento)
{
    if (m_Nivel == 0 || !evento.spontaneous()) {
        return false;
    }
    if (evento.type() == QEvent::ShortcutOverride) {
        evento.accept();
        return true;
    }
    if ((evento.type() == QEvent::KeyPress || evento.type() == QEvent::KeyRelease) && objeto->isWindowType()) {
        m_Teclas.emplace_back(static_cast<QKeyEvent &>(evento).clone());
        return true;
    }
    return false;
}

void JanelaDeTras::Solta()
{
    if (m_Nivel == 0) {
        return;
    }
    // Who showed the box is not back. One whose box is gone is, though another loop as deep may have begun.
    if (!m_Caixa.isNull() && Nivel() >= m_Nivel) {
        QTimer::singleShot(0, this, [this] { Solta(); });
        return;
    }
    m_Nivel = 0;
    for (const auto &tecla : std::exchange(m_Teclas, {})) {
        QWidget *modal = QApplication::activeModalWidget();
        QWidget *janela = modal != nullptr ? modal : m_Atras.data();
        if (janela == nullptr || janela->windowHandle() == nullptr) {
            continue;
        }
        if (QObject *foco = janela->windowHandle()->focusObject();
            foco != nullptr && tecla->type() == QEvent::KeyPress) {
            QKeyEvent pergunta(QEvent::ShortcutOverride, tecla->key(), tecla->modifiers(), tecla->text());
            pergunta.ignore();
            QCoreApplication::sendEvent(foco, &pergunta);
        }
        QCoreApplication::sendEvent(janela->windowHandle(), tecla.get());
    }
}

// The toolkit closes the list of a combo when it asks whether anything wants the key, and then has nobody for the key.
bool JanelaDeTras::FicouNoMenu(QObject *objeto, const QEvent &evento)
{
    const bool aberto = QApplication::activePopupWidget() != nullptr;
    if (evento.type() == QEvent::ShortcutOverride && aberto) {
        m_NoMenu = static_cast<const QKeyEvent &>(evento).key();
    }
    if (evento.type() != QEvent::KeyPress || !objeto->isWindowType()) {
        return false;
    }
    return std::exchange(m_NoMenu, 0) == static_cast<const QKeyEvent &>(evento).key() && !aberto;
}

bool JanelaDeTras::Alheia(const QWidget &janela, const QKeyEvent &tecla)
{
    if (!tecla.isAutoRepeat()) {
        m_Apertada = &janela;
        m_Tecla = tecla.key();
    }
    return tecla.key() == m_Tecla && m_Apertada != &janela;
}

bool JanelaDeTras::eventFilter(QObject *objeto, QEvent *evento)
{
    if (Segura(objeto, *evento) || FicouNoMenu(objeto, *evento) || ApertaPelaLetra(objeto, *evento)) {
        return true;
    }
    const auto *widget = qobject_cast<QWidget *>(objeto);
    if (widget == nullptr) {
        return false;
    }
    if (evento->type() == QEvent::KeyPress) {
        return Alheia(*widget->window(), *static_cast<const QKeyEvent *>(evento));
    }
    if (evento->spontaneous() || widget->windowType() != Qt::Dialog) {
        return false;
    }
    if (evento->type() == QEvent::Show) {
        Apareceu(*widget);
    } else if (evento->type() == QEvent::Hide) {
        Sumiu(*widget);
    }
    return false;
}

} // namespace mesa
