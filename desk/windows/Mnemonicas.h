#pragma once

#include <QSet>
#include <QString>

class QWidget;

// The letters that Alt answers to in one window, so that each leads to one place only.
class Mnemonicas {
  public:
    // Those that the main window's menus have, everywhere.
    Mnemonicas();

    // Takes the letters of all captions in the window.
    void Toma(const QWidget &janela);
    void Toma(QChar letra) { m_Tomadas << letra; }
    // A letter of the caption that is still free, now taken; null when none is. The beginnings of words come first.
    QChar Acha(const QString &texto);

    // The letter that a caption marks with "&", in lower case; null when it marks none.
    static QChar De(const QString &texto);
    // The caption with the letter marked, wherever it first stands.
    static QString Marca(const QString &texto, QChar letra);

  private:
    QSet<QChar> m_Tomadas;
};
