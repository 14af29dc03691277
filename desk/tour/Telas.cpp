#include "desk/tour/Telas.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>

#include <exception>

namespace mesa {

QMainWindow *Principal()
{
    for (QWidget *janela : QApplication::topLevelWidgets()) {
        if (auto *principal = qobject_cast<QMainWindow *>(janela); principal != nullptr && principal->isVisible()) {
            return principal;
        }
    }
    return nullptr;
}

QWidget *JanelaAtiva()
{
    QMainWindow *principal = Principal();
    const auto *area = principal == nullptr ? nullptr : principal->findChild<QMdiArea *>();
    return area != nullptr && area->activeSubWindow() != nullptr ? area->activeSubWindow()->widget() : principal;
}

QWidget *Procura(QWidget *onde, const QString &nome)
{
    for (const QString &parte : nome.split('/')) {
        onde = onde == nullptr ? nullptr : onde->findChild<QWidget *>(parte);
    }
    return onde;
}

QString TextoDe(const QWidget *widget)
{
    if (const auto *linha = qobject_cast<const QLineEdit *>(widget)) {
        return linha->text();
    }
    if (const auto *numero = qobject_cast<const QAbstractSpinBox *>(widget)) {
        return numero->text();
    }
    if (const auto *rotulo = qobject_cast<const QLabel *>(widget)) {
        return rotulo->text();
    }
    if (const auto *combo = qobject_cast<const QComboBox *>(widget)) {
        return combo->currentText();
    }
    if (const auto *corrido = qobject_cast<const QPlainTextEdit *>(widget)) {
        return corrido->toPlainText();
    }
    if (const auto *botao = qobject_cast<const QAbstractButton *>(widget)) {
        return botao->isCheckable() ? (botao->isChecked() ? "marcado" : "desmarcado") : botao->text();
    }
    return widget == nullptr ? QString() : widget->windowTitle();
}

void ExecutaNaTela(const std::function<void()> &acao)
{
    std::exception_ptr problema;
    QMetaObject::invokeMethod(
        qApp,
        [&] {
            try {
                acao();
            } catch (...) {
                problema = std::current_exception();
            }
        },
        Qt::BlockingQueuedConnection);
    if (problema) {
        std::rethrow_exception(problema);
    }
}

} // namespace mesa
