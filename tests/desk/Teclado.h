#pragma once

#include <QString>
#include <Qt>

#include <functional>
#include <stdexcept>

class QWidget;

// A person who has a keyboard and nothing else, and who types without a pause, however long the machine takes. Keys go
// to the window in front as the window system delivers them, from a thread of its own, because a key may open a window
// and come back only when that closes. What a key brings about is waited for, at most ten seconds. Each answers the
// person, for the next.
class Teclado {
  public:
    // Runs the journey while the windows' thread works. Empty when all was as expected, otherwise what was not.
    static std::string Percorre(const std::function<void(Teclado &)> &jornada);

    Teclado &Tecla(Qt::Key tecla, Qt::KeyboardModifiers modificadores = Qt::NoModifier);
    // Until the last key, which opens nothing, is done: what comes next depends on what it did.
    Teclado &Feito();
    // Waits longer with the next key than letters that belong together do.
    Teclado &Descansa();
    Teclado &Ctrl(Qt::Key tecla) { return Tecla(tecla, Qt::ControlModifier); }
    Teclado &Alt(char letra);
    // Letters; "\t" is Tab and "\r" Enter.
    Teclado &Escreve(const QString &texto);
    // Tab until the keyboard is in that widget; "pai/filho" is the child in the parent.
    Teclado &TabAte(const QString &nome);
    // With the keyboard in a combo, the down key until it shows the text.
    Teclado &DesceAte(const QString &texto);
    // With a menu open, the down key until the entry of that text is current; then Enter.
    Teclado &EscolheNoMenu(const QString &texto);

    // What is seen. A name is that of a window, or of a widget in the window in front.
    Teclado &EsperaJanela(const QString &nome);
    Teclado &EsperaFoco(const QString &nome);
    Teclado &EsperaTexto(const QString &nome, const QString &texto);
    Teclado &EsperaPagina(const QString &abas, int pagina);
    Teclado &EsperaMenu();
    // The file dialog.
    Teclado &EsperaEscolhaDeArquivo();
    // A box with this text in front.
    Teclado &EsperaCaixa(const QString &texto);
    // The list's current row, from 1, shows the text in the column; 0: there is no row.
    Teclado &EsperaLinha(const QString &lista, int linha, const QString &texto);
    Teclado &EsperaLinhas(const QString &lista, int quantas);
    Teclado &Espera(const QString &oQue, const std::function<bool()> &condicao);

    // The window in front, and the widget of a name in it. To be asked in the windows' thread.
    static QWidget *Frente();
    static QWidget *Acha(const QString &nome);

  private:
    void Da(Qt::Key tecla, const QString &texto, Qt::KeyboardModifiers modificadores);
};
