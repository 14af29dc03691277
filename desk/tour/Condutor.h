#pragma once

#include <QString>
#include <QStringList>
#include <Qt>

#include <functional>
#include <stdexcept>
#include <string>

class QWidget;

namespace mesa {

// What was seen differs from what was to be seen.
class Diferenca : public std::runtime_error {
  public:
    explicit Diferenca(const QString &texto) : std::runtime_error(texto.toStdString()) {}
};

// Drives the real windows from a thread of its own, with mouse and keyboard events and nothing else. Everything that
// looks at a window runs in the windows' thread; an action is posted to it, because it may open a window and come back
// only when that closes. What an action brings about is waited for, at most ten seconds.
class Condutor {
  public:
    // pasta: where pictures and the account of the way go.
    explicit Condutor(const QString &pasta);

    // A step of the way: its heading in the account and the name of its picture, taken at the end of it.
    void Passo(const QString &titulo, const std::function<void()> &acoes);
    int Passos() const { return m_Passos; }
    int Conferencias() const { return m_Conferencias; }
    // What in the windows on the way was cut, over something else or off the screen, each once.
    const QStringList &Cortes() const { return m_Cortes; }

    // Actions on the window in front, on the widget of a name; "pai/filho" finds the child in the parent.
    void Clica(const QString &nome);
    void ClicaMenu(const QString &menu, const QString &acao);
    // Replaces the text of a field, key by key.
    void Digita(const QString &nome, const QString &texto);
    void Tecla(Qt::Key tecla, Qt::KeyboardModifiers modificadores = Qt::NoModifier);
    // Opens a combo and chooses the item of that text with the keyboard.
    void Escolhe(const QString &nome, const QString &texto);
    void EsperaAba(const QString &nome, int pagina);
    void AbreAba(const QString &nome, int pagina);
    void ClicaLinha(const QString &lista, int linha);
    // Answers a box that has this text with the button of this caption.
    void Responde(const QString &texto, const QString &botao);
    // The file dialog.
    void EscolheArquivo(const QString &caminho);
    void FechaJanela(const QString &nome);

    // Checks; each is counted, and written down.
    void EsperaJanela(const QString &nome);
    void EsperaSemJanela(const QString &nome);
    void ConfereTexto(const QString &nome, const QString &esperado);
    // The pages of a document are drawn some time after the viewer has opened.
    void EsperaPaginas(const QString &nome);
    void ConfereLinhas(const QString &lista, int quantas);
    void ConfereCelula(const QString &lista, int linha, const QString &coluna, const QString &esperado);
    void ConfereHabilitado(const QString &nome, bool esperado);
    // A combo in which nothing else can be chosen.
    void ConfereTravado(const QString &nome);
    // A tool of the menus, by its name.
    void ConfereFerramenta(const QString &nome, bool habilitada);
    void Confere(const QString &oQue, const QString &visto, const QString &esperado);
    // Waits until it holds; `oQue` says what in the account.
    void Espera(const QString &oQue, const std::function<bool()> &condicao);

    void Relata(const QString &linha);
    // Writes the account; returns its path.
    QString GravaRelato() const;

  private:
    void Posta(const std::function<void()> &acao);
    // What stands in something that scrolls is scrolled to first, as a person does.
    void Alcanca(const QString &nome);
    // Looks for what is cut in all windows, and takes a picture of the screen.
    void Retrato(const QString &nome);
    void Mede();
    // Of a box or a dialog, in the middle of a step.
    void RetratoDaCaixa();

    QString m_Pasta;
    QStringList m_Relato;
    QStringList m_Cortes;
    int m_Caixas = 0; // in this step
    int m_Passos = 0;
    int m_Conferencias = 0;
};

} // namespace mesa
