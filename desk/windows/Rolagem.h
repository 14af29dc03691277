#pragma once

#include <QScrollArea>

class QBoxLayout;

namespace mesa {

// What a window shows when its screen may have too little room for it: as large as that, and with scroll bars where it
// cannot be. What has the keyboard is always in view.
class Rolagem : public QScrollArea {
  public:
    Rolagem(QWidget *conteudo, QWidget *dono);
    ~Rolagem() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

  private:
    QSize Pedida() const;
    // A window of its own grows with what is in it; how far is decided where windows are placed.
    void Cresce();
};

// Puts what a window shows into one of these; a row of buttons at its end stays below it. Null when the window has one
// already, or nothing that could be put into it.
Rolagem *FazRolar(QWidget &janela);

} // namespace mesa
