#pragma once

#include <QLabel>

namespace mesa {

// A line of text that gives way where room is short: what does not fit is told by an ellipsis, and by the tip whole.
class TextoQueCede : public QLabel {
  public:
    explicit TextoQueCede(QWidget *dono);

    QSize minimumSizeHint() const override;

  protected:
    bool event(QEvent *evento) override;
    void paintEvent(QPaintEvent *evento) override;

  private:
    QString Visto() const;
};

} // namespace mesa
