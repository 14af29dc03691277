#include "desk/windows/TeclaDeAjuda.h"

#include "desk/windows/JanelaForm.h"
#include "services/TextoQt.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QTabWidget>

#include <utility>

namespace mesa {

TeclaDeAjuda::TeclaDeAjuda(Mostra mostra) : m_Mostra(std::move(mostra))
{
    qApp->installEventFilter(this);
}

bool TeclaDeAjuda::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() == QEvent::KeyPress && objeto->isWidgetType()) {
        const auto &tecla = *static_cast<QKeyEvent *>(evento);
        QWidget *janela = static_cast<QWidget *>(objeto)->window();
        if (tecla.key() == Qt::Key_F1 && tecla.modifiers() == Qt::NoModifier && janela->windowType() != Qt::Popup &&
            qobject_cast<QMainWindow *>(janela) == nullptr && FormDa(*janela) == nullptr) {
            m_Mostra(TopicoDaJanela(*janela), janela);
            return true;
        }
    }
    return QObject::eventFilter(objeto, evento);
}

std::string TopicoDaJanela(const QWidget &janela)
{
    const std::string topico = S(janela.objectName());
    const auto *paginas = janela.findChild<QTabWidget *>();
    return paginas == nullptr || paginas->currentWidget() == nullptr
               ? topico
               : topico + "." + S(paginas->currentWidget()->objectName());
}

JanelaForm *FormDa(QWidget &janela)
{
    if (auto *form = dynamic_cast<JanelaForm *>(&janela)) {
        return form;
    }
    for (QWidget *filho : janela.findChildren<QWidget *>()) {
        if (auto *form = dynamic_cast<JanelaForm *>(filho)) {
            return form;
        }
    }
    return nullptr;
}

} // namespace mesa
