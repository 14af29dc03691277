#pragma once

#include "desk/services/Segredo.h"

#include <QLineEdit>

namespace mesa {

// A field for a password: what was typed is handed out as a secret, and its memory wiped as far as the toolkit has it
// in one place.
class CampoDeSenha : public QLineEdit {
  public:
    CampoDeSenha(const QString &nome, QWidget *dono);
    ~CampoDeSenha() override;

    Segredo Senha() const;
    void Limpa();
};

} // namespace mesa
