#pragma once

#include "desk/services/Servicos.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

namespace mesa {

// Sign-in. Accepted once the services gave a session.
class Entrada : public QDialog {
  public:
    Entrada(Ref<Servicos> servicos, QWidget *dono);

    const Ref<SessaoServico> &Sessao() const { return m_Sessao; }

  private:
    void Tenta();
    void Espera(int segundos);

    Ref<Servicos> m_Servicos;
    Ref<SessaoServico> m_Sessao;
    QLineEdit *m_Usuario;
    QLineEdit *m_Senha;
    QLabel *m_Aviso;
    QPushButton *m_Entrar;
    QTimer *m_Relogio;
    int m_Restante = 0;
};

} // namespace mesa
