#include "desk/windows/TextoQueCede.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QToolTip>

namespace mesa {

TextoQueCede::TextoQueCede(QWidget *dono) : QLabel(dono)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
}

QSize TextoQueCede::minimumSizeHint() const
{
    constexpr int Letras = 6;
    return {qMin(Letras * fontMetrics().averageCharWidth(), QLabel::sizeHint().width()),
            QLabel::minimumSizeHint().height()};
}

QString TextoQueCede::Visto() const
{
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

bool TextoQueCede::event(QEvent *evento)
{
    if (evento->type() == QEvent::ToolTip) {
        QToolTip::showText(static_cast<QHelpEvent *>(evento)->globalPos(), Visto() == text() ? QString() : text(),
                           this);
        return true;
    }
    return QLabel::event(evento);
}

void TextoQueCede::paintEvent(QPaintEvent *)
{
    QPainter pincel(this);
    style()->drawItemText(&pincel, contentsRect(), static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), palette(),
                          isEnabled(), Visto(), foregroundRole());
}

} // namespace mesa
