#pragma once

#include <QLineEdit>

class QTableView;

namespace mesa {

// The line above or below a table in which a person types what is to be seen of its rows. Esc empties it; Enter and the
// down key lead to the rows.
class CampoDeFiltro : public QLineEdit {
  public:
    CampoDeFiltro(const QString &nome, QTableView *tabela, QWidget *dono);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void keyPressEvent(QKeyEvent *evento) override;

  private:
    QTableView *m_Tabela;
};

} // namespace mesa
