#pragma once

#include "desk/host/Administracao.h"
#include "desk/windows/FichaQt.h"

#include "desk/windows/QuemUsa.h"

#include <QDialog>

namespace mesa {

// Users, clients and tables of the registry, a page each; those to which the operator has the right.
class JanelaAdministracao : public QDialog {
  public:
    // pagina: the one in front, from 0.
    JanelaAdministracao(const Administracao &administracao, int pagina, const BordaDaJanela &borda, const QuemUsa &quem,
                        QWidget *dono);
};

} // namespace mesa
