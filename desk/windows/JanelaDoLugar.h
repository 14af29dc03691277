#pragma once

#include "desk/host/LugarDoTrabalho.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace mesa {

// Takes where the registry is: on this computer, or at a server. Accepted once what was typed can be a place.
class JanelaDoLugar : public QDialog {
  public:
    // agora: what the fields begin with; a server without a machine is one that has still to be told.
    JanelaDoLugar(const LugarDoTrabalho &agora, QWidget *dono);

    const LugarDoTrabalho &Lugar() const { return m_Lugar; }

  private:
    void Monta();
    void Habilita();
    void EscolheAutoridade();
    void Tenta();

    LugarDoTrabalho m_Lugar;
    QRadioButton *m_EsteComputador;
    QRadioButton *m_NoServidor;
    QLineEdit *m_Endereco;
    QLineEdit *m_Digital;
    QLineEdit *m_Autoridade;
    QPushButton *m_Escolher;
    QLabel *m_Aviso;
};

} // namespace mesa
