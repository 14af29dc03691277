#pragma once

#include <QLabel>
#include <QPointer>
#include <QTimer>

namespace mesa {

// A short word at a field, in front of what is around it: gone with the next key, when the field is left, or by itself.
class Dica : public QLabel {
  public:
    // urgente: what reads the screen to a person says it at once. An empty text takes the present one away.
    static void Mostra(QWidget &campo, const QString &texto, bool urgente);

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

  private:
    explicit Dica(QWidget *janela);
    void Fica(QWidget &campo);
    void Vai();

    QPointer<QWidget> m_Campo;
    QTimer m_Prazo;
};

} // namespace mesa
