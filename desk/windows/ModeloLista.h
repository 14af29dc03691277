#pragma once

#include "controls/ztList.h"

#include <QAbstractTableModel>

namespace mesa {

// The rows of a list as a table view reads them. Nothing is copied: cells are read when they are shown.
class ModeloLista : public QAbstractTableModel {
  public:
    ModeloLista(ztList &lista, QObject *dono) : QAbstractTableModel(dono), m_Lista(lista) {}

    // Rows or columns are others now.
    void Rearranja();

    int rowCount(const QModelIndex &pai = {}) const override;
    int columnCount(const QModelIndex &pai = {}) const override;
    QVariant data(const QModelIndex &indice, int papel) const override;
    QVariant headerData(int secao, Qt::Orientation orientacao, int papel) const override;

  private:
    ztList &m_Lista;
};

} // namespace mesa
