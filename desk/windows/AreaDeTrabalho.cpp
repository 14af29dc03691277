#include "desk/windows/AreaDeTrabalho.h"

#include <QTabBar>

namespace mesa {

AreaDeTrabalho::AreaDeTrabalho(QWidget *dono) : QMdiArea(dono)
{
    setObjectName("area");
    setViewMode(QMdiArea::TabbedView);
    setTabsClosable(true);
    setTabsMovable(true);
    setDocumentMode(true);
    if (auto *abas = findChild<QTabBar *>()) {
        abas->setObjectName("abas");
        abas->setAccessibleName("Janelas abertas");
        abas->setUsesScrollButtons(true);
        abas->setElideMode(Qt::ElideNone);
        abas->setExpanding(false);
        abas->setFocusPolicy(Qt::NoFocus);
    }
}

} // namespace mesa
