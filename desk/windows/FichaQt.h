#pragma once

#include "desk/host/Ficha.h"

#include <QDialog>

#include <functional>

class QLabel;

namespace mesa {

class PainelDaFicha;

// Runs what came from a person; a fault that comes out of it is shown and ends there.
using BordaDaJanela = std::function<void(const std::function<void()> &)>;

// The window of a form. Accepted once the form was taken.
class FichaQt : public QDialog {
  public:
    // ficha: outlives the window.
    FichaQt(Ficha &ficha, BordaDaJanela borda, QWidget *dono);
    ~FichaQt() override;

  private:
    void Tenta();
    void Comanda(const ComandoDaFicha &comando);

    Ficha &m_Ficha;
    BordaDaJanela m_Borda;
    PainelDaFicha *m_Campos;
    QLabel *m_Aviso;
};

} // namespace mesa
