#include "desk/windows/RodaDoMouse.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QTabBar>

namespace mesa {

namespace {

class RodaQuieta : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override
    {
        const bool muda = evento->type() == QEvent::Wheel && (qobject_cast<QComboBox *>(objeto) != nullptr ||
                                                              qobject_cast<QAbstractSpinBox *>(objeto) != nullptr ||
                                                              qobject_cast<QTabBar *>(objeto) != nullptr);
        if (muda) {
            evento->ignore(); // and so it goes on to what they are on
        }
        return muda;
    }
};

} // namespace

void AquietaRoda(QCoreApplication &aplicacao)
{
    aplicacao.installEventFilter(new RodaQuieta(&aplicacao));
}

} // namespace mesa
