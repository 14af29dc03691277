#include "desk/windows/LeiauteEmFluxo.h"

#include <algorithm>

namespace mesa {

// One at a time: a layout that goes takes itself out of the one that it stands in.
LeiauteEmFluxo::~LeiauteEmFluxo()
{
    while (count() > 0) {
        delete takeAt(0);
    }
}

void LeiauteEmFluxo::addItem(QLayoutItem *item)
{
    if (QLayout *leiaute = item->layout()) {
        addChildLayout(leiaute);
    }
    m_Itens.emplace_back(item);
}

QLayoutItem *LeiauteEmFluxo::itemAt(int posicao) const
{
    return posicao >= 0 && posicao < count() ? m_Itens[static_cast<std::size_t>(posicao)].get() : nullptr;
}

QLayoutItem *LeiauteEmFluxo::takeAt(int posicao)
{
    if (posicao < 0 || posicao >= count()) {
        return nullptr;
    }
    QLayoutItem *item = m_Itens[static_cast<std::size_t>(posicao)].release();
    m_Itens.erase(m_Itens.begin() + posicao);
    return item;
}

QSize LeiauteEmFluxo::minimumSize() const
{
    QSize maior;
    for (const auto &item : m_Itens) {
        maior = maior.expandedTo(item->minimumSize());
    }
    return maior;
}

// In one row.
QSize LeiauteEmFluxo::sizeHint() const
{
    QSize todos;
    for (const auto &item : m_Itens) {
        if (!item->isEmpty()) {
            todos = QSize(todos.width() + item->sizeHint().width() + (todos.isEmpty() ? 0 : spacing()),
                          std::max(todos.height(), item->sizeHint().height()));
        }
    }
    return todos;
}

void LeiauteEmFluxo::setGeometry(const QRect &lugar)
{
    QLayout::setGeometry(lugar);
    Arruma(lugar, /*move=*/true);
}

int LeiauteEmFluxo::Arruma(const QRect &lugar, bool move) const
{
    int x = lugar.left();
    int y = lugar.top();
    int linha = 0;
    for (const auto &item : m_Itens) {
        if (item->isEmpty()) {
            continue;
        }
        const QSize tamanho = item->sizeHint();
        if (linha > 0 && x + tamanho.width() > lugar.right() + 1) {
            x = lugar.left();
            y += linha + spacing();
            linha = 0;
        }
        if (move) {
            item->setGeometry(QRect(QPoint(x, y), tamanho.boundedTo({lugar.width(), tamanho.height()})));
        }
        x += tamanho.width() + spacing();
        linha = std::max(linha, tamanho.height());
    }
    return y + linha - lugar.top();
}

} // namespace mesa
