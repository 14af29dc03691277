#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

#include <vector>

namespace mesa {

// Covers a window, and takes its title away, until it is opened. What stands behind stays as it is: a window that was
// hidden instead would answer whoever waits for it.
class Cortina : public QWidget {
  public:
    explicit Cortina(QWidget *janela);

    // The window is seen again.
    void Abre();
    // One for each window that is open.
    static std::vector<QPointer<Cortina>> SobreTodas();

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;
    void paintEvent(QPaintEvent *evento) override;

  private:
    QString m_Titulo;
};

} // namespace mesa
