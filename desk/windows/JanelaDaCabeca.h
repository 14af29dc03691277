#pragma once

#include "services/Cabeca.h"

#include <QDialog>

namespace mesa {

// The signed end of the history, to be carried away: as a text, as a picture that a telephone reads, as a file.
class JanelaDaCabeca : public QDialog {
  public:
    JanelaDaCabeca(CabecaAssinada cabeca, QWidget *dono);

  private:
    void Salva();

    CabecaAssinada m_Cabeca;
};

} // namespace mesa
