#pragma once

#include "desk/host/PainelDePrazos.h"

#include <QWidget>

#include <cstdint>
#include <functional>
#include <vector>

class QHBoxLayout;

namespace mesa {

// The calibrations that end in each month, as bars. One of them at a time is on the way of Tab, and the arrows, Home
// and End go from bar to bar; each is a button that says its month and number.
class GraficoDeMeses : public QWidget {
  public:
    // abre: what a bar does.
    GraficoDeMeses(std::function<void(const MesNoPainel &)> abre, QWidget *dono);

    // depoisDe: behind which they are on the way of Tab.
    void Mostra(const std::vector<MesNoPainel> &meses, QWidget *depoisDe);

    // They are being counted: no number is shown.
    void Espera();

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

  private:
    class Barra;

    void VaiPara(int posicao);

    std::function<void(const MesNoPainel &)> m_Abre;
    QHBoxLayout *m_Barras;
    std::vector<Barra *> m_DosMeses;
};

} // namespace mesa
