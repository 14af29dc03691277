#include "desk/windows/EstiloDaMesa.h"

#include "desk/windows/Cores.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QPainter>
#include <QStyleOption>

namespace mesa {

void EstiloDaMesa::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (widget->isWindow()) {
        widget->installEventFilter(this);
    }
}

// The toolkit forgets it whenever a window is shown.
bool EstiloDaMesa::eventFilter(QObject *janela, QEvent *evento)
{
    if (evento->type() == QEvent::WindowActivate) {
        static_cast<QWidget *>(janela)->setAttribute(Qt::WA_KeyboardFocusChange);
    }
    return QProxyStyle::eventFilter(janela, evento);
}

void EstiloDaMesa::drawControl(ControlElement elemento, const QStyleOption *opcao, QPainter *pincel,
                               const QWidget *widget) const
{
    QProxyStyle::drawControl(elemento, opcao, pincel, widget);
    if (elemento == CE_ShapedFrame && (opcao->state & State_HasFocus) &&
        qobject_cast<const QAbstractScrollArea *>(widget) != nullptr) {
        pincel->setPen(CorDe(Cor::Foco, opcao->palette));
        pincel->drawRect(opcao->rect.adjusted(0, 0, -1, -1));
    }
}

} // namespace mesa
