#pragma once

#include <QLayout>

#include <memory>
#include <vector>

namespace mesa {

// Puts widgets beside each other, and into a further row when the window is too narrow for them.
class LeiauteEmFluxo : public QLayout {
  public:
    using QLayout::QLayout;
    ~LeiauteEmFluxo() override;

    void addItem(QLayoutItem *item) override { m_Itens.emplace_back(item); }
    int count() const override { return static_cast<int>(m_Itens.size()); }
    QLayoutItem *itemAt(int posicao) const override;
    QLayoutItem *takeAt(int posicao) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int largura) const override { return Arruma(QRect(0, 0, largura, 0), /*move=*/false); }
    QSize minimumSize() const override;
    QSize sizeHint() const override;
    void setGeometry(const QRect &lugar) override;

  private:
    int Arruma(const QRect &lugar, bool move) const;

    std::vector<std::unique_ptr<QLayoutItem>> m_Itens;
};

} // namespace mesa
