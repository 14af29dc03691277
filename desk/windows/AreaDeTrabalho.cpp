#include "desk/windows/AreaDeTrabalho.h"

#include <QEvent>
#include <QMdiSubWindow>
#include <QTabBar>
#include <QTimer>

#include <algorithm>

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

void AreaDeTrabalho::DefineFundo(QWidget *fundo)
{
    m_Fundo = fundo;
    fundo->setParent(this);
    fundo->hide();
}

void AreaDeTrabalho::MostraFundo(bool valor)
{
    m_ComFundo = valor;
    AtualizaFundo();
}

bool AreaDeTrabalho::NoFundo() const
{
    return !m_Fundo.isNull() && m_Fundo->isVisibleTo(this);
}

bool AreaDeTrabalho::Vazia() const
{
    return std::ranges::none_of(subWindowList(),
                                [](const QMdiSubWindow *filha) { return filha->isVisibleTo(filha->parentWidget()); });
}

void AreaDeTrabalho::AtualizaFundo()
{
    if (m_Fundo.isNull() || NoFundo() == (m_ComFundo && Vazia())) {
        return;
    }
    m_Fundo->setGeometry(rect());
    m_Fundo->setVisible(!NoFundo());
    if (NoFundo()) {
        m_Fundo->raise();
        m_Fundo->setFocus();
    }
}

bool AreaDeTrabalho::eventFilter(QObject *objeto, QEvent *evento)
{
    const bool tratado = QMdiArea::eventFilter(objeto, evento);
    if (qobject_cast<QMdiSubWindow *>(objeto) != nullptr) {
        if (evento->type() == QEvent::Show) {
            AtualizaFundo(); // before it gets the keyboard
        } else if (evento->type() == QEvent::Hide) {
            QTimer::singleShot(0, this, [this] { AtualizaFundo(); }); // once it has gone
        }
    }
    return tratado;
}

void AreaDeTrabalho::resizeEvent(QResizeEvent *evento)
{
    QMdiArea::resizeEvent(evento);
    if (!m_Fundo.isNull()) {
        m_Fundo->setGeometry(rect());
    }
}

} // namespace mesa
