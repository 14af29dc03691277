#include "desk/windows/Cortina.h"

#include "desk/windows/Cores.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>

namespace mesa {

Cortina::Cortina(QWidget *janela) : QWidget(janela), m_Titulo(janela->windowTitle())
{
    setObjectName("cortina");
    setGeometry(janela->rect());
    janela->setWindowTitle("Travado");
    janela->installEventFilter(this);
    show();
    raise();
}

void Cortina::Abre()
{
    parentWidget()->setWindowTitle(m_Titulo);
    delete this;
}

std::vector<QPointer<Cortina>> Cortina::SobreTodas()
{
    while (QWidget *aberto = QApplication::activePopupWidget()) {
        aberto->close();
    }
    std::vector<QPointer<Cortina>> cortinas;
    for (QWidget *janela : QApplication::topLevelWidgets()) {
        if (janela->isVisible() && janela->windowType() != Qt::ToolTip && janela->windowType() != Qt::Popup) {
            cortinas.emplace_back(new Cortina(janela));
        }
    }
    return cortinas;
}

bool Cortina::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() == QEvent::Resize) {
        setGeometry(parentWidget()->rect());
    }
    return QWidget::eventFilter(objeto, evento);
}

void Cortina::paintEvent(QPaintEvent *)
{
    QPainter pincel(this);
    pincel.fillRect(rect(), CorDe(Cor::Area));
}

} // namespace mesa
