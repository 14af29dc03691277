#pragma once

#include <QObject>
#include <QPointer>

#include <map>
#include <memory>
#include <vector>

class QKeyEvent;
class QWidget;

namespace mesa {

// What all windows of the desk owe to each other when they come and go, whatever they show:
// - when one goes that stood in front of another, that one is active again, with the keyboard where it was, without a
//   window system that would see to it;
// - what is typed while a box goes waits until whoever showed it is done, and has led the keyboard where it belongs;
// - a key that closes a menu or the list of a combo is not for the window under it;
// - a button that is pressed by its letter acts at once, and not after it has been seen to go down, so that what is typed
//   next is for what it opens;
// - a key that is held down acts in the window in which it was pressed, and not in those that it opens.
class JanelaDeTras : public QObject {
  public:
    explicit JanelaDeTras(QObject *dono);
    ~JanelaDeTras() override;

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

  private:
    void Apareceu(const QWidget &janela);
    void Sumiu(const QWidget &janela);
    bool Segura(QObject *objeto, QEvent &evento);
    void Solta();
    bool FicouNoMenu(QObject *objeto, const QEvent &evento);
    bool Alheia(const QWidget &janela, const QKeyEvent &tecla);

    std::map<const QWidget *, QPointer<QWidget>> m_Origens; // the window that was active when each came
    QPointer<QWidget> m_Atras;
    std::vector<std::unique_ptr<QKeyEvent>> m_Teclas; // that wait
    int m_Nivel = 0;                                  // of the event loop of the box that goes; 0: none does
    QPointer<const QWidget> m_Caixa;                  // that box, while whoever showed it has it
    int m_NoMenu = 0;                                 // the key that an open menu or list of a combo was asked for
    QPointer<const QWidget> m_Apertada;               // the window in which the last key was pressed
    int m_Tecla = 0;
};

} // namespace mesa
