#pragma once

#include "tela/ColunasArrumadas.h"

#include <QDialog>
#include <QStringList>

class QListWidget;
class QPushButton;
class QSpinBox;

namespace mesa {

// Which columns of a table are seen, in which order and how wide, for the keyboard as well.
class JanelaDasColunas : public QDialog {
  public:
    // larguras: of each column now, in pixels, in the order of `colunas`.
    JanelaDasColunas(const ColunasArrumadas &colunas, const QStringList &titulos, std::vector<int> larguras,
                     QWidget *dono);

    // What the person has made of it.
    const ColunasArrumadas &Colunas() const { return m_Colunas; }

  private:
    void Mostra(int linha);
    void Move(int passo);
    void MudouLinha();

    ColunasArrumadas m_Colunas;
    QStringList m_Titulos;       // by number, from 1
    std::vector<int> m_Larguras; // by number, from 1
    QListWidget *m_Lista;
    QPushButton *m_Acima;
    QPushButton *m_Abaixo;
    QSpinBox *m_Largura;
    bool m_Mostrando = false;
};

} // namespace mesa
