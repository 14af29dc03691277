#include "desk/windows/CampoDeFiltro.h"

#include <QKeyEvent>
#include <QTableView>

namespace mesa {

namespace {

constexpr int Letras = 24;
constexpr int PoucasLetras = 10;

} // namespace

CampoDeFiltro::CampoDeFiltro(const QString &nome, QTableView *tabela, QWidget *dono) : QLineEdit(dono), m_Tabela(tabela)
{
    setObjectName(nome);
    setPlaceholderText("Filtrar");
    setAccessibleName("Filtrar as linhas");
    setToolTip("Mostra só as linhas que têm estas palavras, sem olhar acentos nem maiúsculas. Esc limpa.");
    setClearButtonEnabled(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize CampoDeFiltro::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * Letras, QLineEdit::sizeHint().height()};
}

QSize CampoDeFiltro::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * PoucasLetras, QLineEdit::minimumSizeHint().height()};
}

void CampoDeFiltro::keyPressEvent(QKeyEvent *evento)
{
    switch (evento->key()) {
    case Qt::Key_Escape:
        if (text().isEmpty()) { // the window's then
            evento->ignore();
        } else {
            clear();
        }
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        m_Tabela->setFocus(Qt::OtherFocusReason);
        break;
    default:
        QLineEdit::keyPressEvent(evento);
    }
}

} // namespace mesa
