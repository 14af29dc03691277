#pragma once

#include "tela/ILembrancas.h"
#include "tela/LugarDeJanela.h"

#include <QObject>
#include <QRect>

#include <functional>

class QScreen;
class QWidget;

namespace mesa {

// Where the program's windows open: each within the free area of its screen, in front of the one that it was opened
// from, as large as it was left, and with scroll bars when it cannot be as large as it would have to be. Sees every
// window of the program as it is shown.
class LugarDasJanelas : public QObject {
  public:
    // The one of the program, made when it is first asked for.
    static LugarDasJanelas &DaAplicacao();

    // Of who is at work; Nothing while nobody is, and nothing is remembered then.
    void DefineLembrancas(Ref<ILembrancas> lembrancas) { m_Lembrancas = std::move(lembrancas); }
    // A window that was shown before it was known who works.
    void Restaura(QWidget &janela);
    // A window that stays while whoever worked leaves.
    void Guarda(QWidget &janela);
    // What is free on the screens is another area now.
    void ContemTodas();

    // What is free of a screen for windows. Replaced by tests.
    std::function<QRect(const QScreen &)> Livre;

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

  private:
    explicit LugarDasJanelas(QObject *dono);

    Retangulo LivrePara(const QWidget &janela) const;
    // The frame that the desktop puts around it.
    Retangulo SemMoldura(const QScreen &tela, const QWidget &janela) const;
    std::optional<LugarDeJanela> Lembrado(const QWidget &janela) const;
    void Poe(QWidget &janela);
    void Contem(QWidget &janela);
    void SegueTela(QScreen *tela);

    Ref<ILembrancas> m_Lembrancas;
};

// By which what is remembered of a window is known; without one, it is by the object's name.
void DefineIdentidade(QWidget &janela, const std::string &identidade);

} // namespace mesa
