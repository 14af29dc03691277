#pragma once

#include <QString>
#include <Qt>

#include <functional>
#include <stdexcept>

class QWidget;

// A person who has a keyboard and nothing else. Keys go to the window in front as the window system delivers them, from
// a thread of its own, because a key may open a window and come back only when that closes. What a key brings about is
// waited for, at most ten seconds.
class Teclado {
  public:
    // Runs the journey while the windows' thread works. Empty when all was as expected, otherwise what was not.
    static std::string Percorre(const std::function<void(Teclado &)> &jornada);

    void Tecla(Qt::Key tecla, Qt::KeyboardModifiers modificadores = Qt::NoModifier);
    void Alt(char letra);
    void Escreve(const QString &texto);
    // Tab until the keyboard is in that widget; "pai/filho" is the child in the parent.
    void TabAte(const QString &nome);
    // With the keyboard in a combo, the down key until it shows the text.
    void DesceAte(const QString &texto);
    // With a menu open, the down key until the entry of that text is current; then Enter.
    void EscolheNoMenu(const QString &texto);

    // What is seen. A name is that of a window, or of a widget in the window in front.
    void EsperaJanela(const QString &nome);
    void EsperaFoco(const QString &nome);
    void EsperaTexto(const QString &nome, const QString &texto);
    void EsperaMenu();
    // The file dialog.
    void EsperaEscolhaDeArquivo();
    // A box with this text in front.
    void EsperaCaixa(const QString &texto);
    // The list's current row, from 1, shows the text in the column; 0: there is no row.
    void EsperaLinha(const QString &lista, int linha, const QString &texto);
    void EsperaLinhas(const QString &lista, int quantas);
    void Espera(const QString &oQue, const std::function<bool()> &condicao);

    // The window in front, and the widget of a name in it. To be asked in the windows' thread.
    static QWidget *Frente();
    static QWidget *Acha(const QString &nome);

  private:
    void Da(Qt::Key tecla, const QString &texto, Qt::KeyboardModifiers modificadores);
    bool NaTela(const std::function<bool()> &pergunta);
};
