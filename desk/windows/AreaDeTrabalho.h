#pragma once

#include <QMdiArea>
#include <QPointer>

namespace mesa {

// Where the windows of the desk's work stand, each on a tab of its own that shows it whole.
class AreaDeTrabalho : public QMdiArea {
  public:
    explicit AreaDeTrabalho(QWidget *dono);

    // What is seen while no window is open, as long as somebody has a use for it.
    void DefineFundo(QWidget *fundo);
    void MostraFundo(bool valor);
    // Whether it is what is seen now.
    bool NoFundo() const;

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;
    void resizeEvent(QResizeEvent *evento) override;

  private:
    bool Vazia() const;
    void AtualizaFundo();

    QPointer<QWidget> m_Fundo;
    bool m_ComFundo = false;
};

} // namespace mesa
