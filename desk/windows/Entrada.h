#pragma once

#include "desk/services/Servicos.h"

#include <QDialog>

#include <optional>
#include <string>

class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

namespace mesa {

class CampoDeSenha;

// Sign-in. Accepted once the services gave a session. Over a desk that is locked it takes the password of the one who
// is at work there, and does not go away without it.
class Entrada : public QDialog {
  public:
    // estacao: by what the services tell this desk from others. travada: who is at work behind it.
    Entrada(Ref<Servicos> servicos, std::string estacao, std::optional<Operador> travada, QWidget *dono);

    const Ref<SessaoServico> &Sessao() const { return m_Sessao; }
    // The one who is at work gives way to somebody else.
    bool PediuTroca() const { return m_PediuTroca; }

    void reject() override;

  private:
    void Monta();
    void Tenta();
    void Troca();
    void Espera(int segundos);

    Ref<Servicos> m_Servicos;
    std::string m_Estacao;
    std::optional<Operador> m_Travada;
    Ref<SessaoServico> m_Sessao;
    QLineEdit *m_Usuario;
    CampoDeSenha *m_Senha;
    QLabel *m_Aviso;
    QPushButton *m_Entrar;
    QPushButton *m_Outro;
    QTimer *m_Relogio;
    int m_Restante = 0;
    bool m_PediuTroca = false;
};

} // namespace mesa
