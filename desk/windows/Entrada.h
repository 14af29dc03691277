#pragma once

#include "desk/host/LugarDoTrabalho.h"
#include "services/Servicos.h"

#include <QDialog>

#include <optional>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;
class QVBoxLayout;

namespace mesa {

class CampoDeSenha;
class Preferencias;

// Sign-in. Accepted once the services gave a session. Over a desk that is locked it takes the password of the one who
// is at work there, and does not go away without it.
class Entrada : public QDialog {
  public:
    // preferencias: outlives the window; they tell by what the services know this desk, and who came in last. travada:
    // who is at work behind it.
    Entrada(Ref<Servicos> servicos, Preferencias &preferencias, std::optional<Operador> travada, QWidget *dono);

    const Ref<SessaoServico> &Sessao() const { return m_Sessao; }
    // The one who is at work gives way to somebody else.
    bool PediuTroca() const { return m_PediuTroca; }

    // Tells where the registry is, and offers to work on another one.
    void OfereceLugar(const LugarDoTrabalho &lugar);
    // The other one that was chosen, for which the window was left.
    const std::optional<LugarDoTrabalho> &OutroLugar() const { return m_OutroLugar; }

    // It is asked for because the session of the one who is at work has ended, as the sentence says; it may be left.
    void TerminouASessao(const QString &frase);

    void reject() override;

  private:
    void Monta();
    void OfereceUltimo();
    void LembraEste();
    void Tenta();
    void Troca();
    void EscolheLugar(const LugarDoTrabalho &agora);
    void Espera(int segundos);

    Ref<Servicos> m_Servicos;
    Preferencias &m_Preferencias;
    std::optional<Operador> m_Travada;
    Ref<SessaoServico> m_Sessao;
    QLineEdit *m_Usuario;
    CampoDeSenha *m_Senha;
    QCheckBox *m_Lembrar;
    QLabel *m_Frase = nullptr;
    QVBoxLayout *m_Tudo = nullptr;
    QLabel *m_Aviso;
    QPushButton *m_Entrar;
    QPushButton *m_Outro;
    QTimer *m_Relogio;
    int m_Restante = 0;
    bool m_PediuTroca = false;
    bool m_Terminada = false;
    std::optional<LugarDoTrabalho> m_OutroLugar;
};

} // namespace mesa
