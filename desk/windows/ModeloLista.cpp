#include "desk/windows/ModeloLista.h"

#include "desk/windows/Renderizador.h"

#include <QString>

namespace mesa {

void ModeloLista::Rearranja()
{
    beginResetModel();
    endResetModel();
}

int ModeloLista::rowCount(const QModelIndex &pai) const
{
    return pai.isValid() ? 0 : m_Lista.NroVistas();
}

int ModeloLista::columnCount(const QModelIndex &pai) const
{
    return pai.isValid() ? 0 : static_cast<int>(m_Lista.Colunas().size());
}

QVariant ModeloLista::data(const QModelIndex &indice, int papel) const
{
    if (!indice.isValid() || indice.row() >= m_Lista.NroVistas() || indice.column() >= columnCount()) {
        return {};
    }
    if (papel == Qt::DisplayRole || papel == Qt::ToolTipRole) {
        const QString texto = Q(m_Lista.TextoCelula(indice.row() + 1, indice.column() + 1));
        return papel == Qt::DisplayRole ? texto : TextoDeDica(texto);
    }
    return {};
}

QVariant ModeloLista::headerData(int secao, Qt::Orientation orientacao, int papel) const
{
    if (orientacao != Qt::Horizontal || secao >= columnCount()) {
        return {};
    }
    if (papel == Qt::DisplayRole) {
        return QString::fromStdString(m_Lista.Colunas()[static_cast<std::size_t>(secao)].Titulo);
    }
    if (papel == Qt::TextAlignmentRole) {
        return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
    }
    return {};
}

} // namespace mesa
