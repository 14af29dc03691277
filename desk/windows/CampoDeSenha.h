#pragma once

#include "desk/host/VigiaDeMaiusculas.h"
#include "services/Segredo.h"

#include <QLineEdit>

class QAction;
class QLabel;

namespace mesa {

// A field for a password: what was typed is handed out as a secret, and its memory wiped as far as the toolkit has it
// in one place. Whoever types may look at it, and is told of Caps Lock.
class CampoDeSenha : public QLineEdit {
  public:
    CampoDeSenha(const QString &nome, QWidget *dono);
    ~CampoDeSenha() override;

    Segredo Senha() const;
    // Empties it, and hides what comes next.
    void Limpa();
    void Esconde();
    // Where it says that Caps Lock is on: the window puts it under the field.
    QLabel *AvisoDeMaiusculas() const { return m_AvisoDeMaiusculas; }

  protected:
    void keyPressEvent(QKeyEvent *evento) override;

  private:
    void Mostra(bool valor);
    void ContaMaiusculas();

    QAction *m_Mostrar;
    QLabel *m_AvisoDeMaiusculas;
    VigiaDeMaiusculas m_Vigia;
};

} // namespace mesa
