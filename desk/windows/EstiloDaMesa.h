#pragma once

#include <QProxyStyle>

namespace mesa {

// The toolkit's own style, which shows on every control where the keyboard is, also before Tab was pressed. What
// scrolls, lists, texts and documents, has a frame for that: theirs looks the same with the keyboard and without it.
class EstiloDaMesa : public QProxyStyle {
  public:
    EstiloDaMesa() : QProxyStyle("Fusion") {}

    using QProxyStyle::polish;
    void polish(QWidget *widget) override;
    void drawControl(ControlElement elemento, const QStyleOption *opcao, QPainter *pincel,
                     const QWidget *widget) const override;

  protected:
    bool eventFilter(QObject *janela, QEvent *evento) override;
};

} // namespace mesa
