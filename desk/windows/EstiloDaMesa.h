#pragma once

#include <QProxyStyle>

namespace mesa {

// The toolkit's own style, which shows on every control where the keyboard is, also before Tab was pressed. What
// scrolls, lists, texts and documents, has a frame for that, and so have buttons, of which the default one always looks
// as if it had the keyboard.
class EstiloDaMesa : public QProxyStyle {
  public:
    EstiloDaMesa() : QProxyStyle("Fusion") {}

    using QProxyStyle::polish;
    void polish(QApplication *aplicacao) override;
    void drawControl(ControlElement elemento, const QStyleOption *opcao, QPainter *pincel,
                     const QWidget *widget) const override;

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;
};

} // namespace mesa
