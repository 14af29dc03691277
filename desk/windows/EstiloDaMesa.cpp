#include "desk/windows/EstiloDaMesa.h"

#include "desk/windows/Cores.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QStyleOption>

namespace mesa {

void EstiloDaMesa::polish(QApplication *aplicacao)
{
    QProxyStyle::polish(aplicacao);
    aplicacao->installEventFilter(this);
}

// The toolkit forgets it whenever a window is shown.
bool EstiloDaMesa::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() == QEvent::WindowActivate && objeto->isWidgetType()) {
        static_cast<QWidget *>(objeto)->window()->setAttribute(Qt::WA_KeyboardFocusChange);
    }
    return QProxyStyle::eventFilter(objeto, evento);
}

void EstiloDaMesa::drawControl(ControlElement elemento, const QStyleOption *opcao, QPainter *pincel,
                               const QWidget *widget) const
{
    QProxyStyle::drawControl(elemento, opcao, pincel, widget);
    if ((opcao->state & State_HasFocus) == 0) {
        return;
    }
    constexpr int Dentro = 2;
    if (elemento == CE_ShapedFrame && qobject_cast<const QAbstractScrollArea *>(widget) != nullptr) {
        pincel->setPen(CorDe(Cor::Foco, opcao->palette));
        pincel->drawRect(opcao->rect.adjusted(0, 0, -1, -1));
    } else if (elemento == CE_PushButton) {
        pincel->setPen(CorDe(Cor::Foco, opcao->palette));
        pincel->drawRect(opcao->rect.adjusted(Dentro, Dentro, -Dentro - 1, -Dentro - 1));
    }
}

} // namespace mesa
