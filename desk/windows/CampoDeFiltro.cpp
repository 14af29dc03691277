#include "desk/windows/CampoDeFiltro.h"

#include <QHeaderView>
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
        VaiAsLinhas();
        break;
    default:
        QLineEdit::keyPressEvent(evento);
    }
}

// To the current row, or to the first that is seen.
void CampoDeFiltro::VaiAsLinhas()
{
    m_Tabela->setFocus(Qt::OtherFocusReason);
    const QModelIndex atual = m_Tabela->currentIndex();
    if (atual.isValid() && !m_Tabela->isRowHidden(atual.row())) {
        return;
    }
    const int coluna = m_Tabela->horizontalHeader()->logicalIndexAt(0);
    for (int linha = 0; linha < m_Tabela->model()->rowCount(); ++linha) {
        if (!m_Tabela->isRowHidden(linha)) {
            m_Tabela->setCurrentIndex(m_Tabela->model()->index(linha, coluna));
            return;
        }
    }
}

} // namespace mesa
