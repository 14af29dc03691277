#pragma once

#include <QDate>
#include <QDateEdit>
#include <QFrame>
#include <QToolButton>

#include <functional>

class QKeyEvent;
class QLineEdit;

namespace mesa {

using EscolheDia = std::function<void(const QDate &dia)>;

// The days of a month below a field, until the person has taken one, or gone away with Esc or the mouse.
class Calendario : public QFrame {
  public:
    static void Abre(QWidget &campo, const QDate &dia, const EscolheDia &escolhe);
    // Alt with the down key, or F4.
    static bool Pede(const QKeyEvent &tecla);

  private:
    Calendario(QWidget &campo, const QDate &dia, const EscolheDia &escolhe);
};

// Opens the calendar of a line of text; in the line, at its end. Not seen where nothing can be typed.
class BotaoDeCalendario : public QToolButton {
  public:
    // dia: where the calendar begins.
    BotaoDeCalendario(QLineEdit *campo, std::function<QDate()> dia, EscolheDia escolhe);

    QSize sizeHint() const override;

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

  private:
    void Abre();
    void Cabe();

    QLineEdit *m_Campo;
    std::function<QDate()> m_Dia;
    EscolheDia m_Escolhe;
};

// A date with its calendar, in a window of the desk's own.
class CampoDeDia : public QDateEdit {
  public:
    CampoDeDia(const QDate &dia, QWidget *dono);

  protected:
    void keyPressEvent(QKeyEvent *evento) override;
    void mousePressEvent(QMouseEvent *evento) override;

  private:
    void Abre();
};

} // namespace mesa
