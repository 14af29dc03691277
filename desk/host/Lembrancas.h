#pragma once

#include "tela/ILembrancas.h"

#include <QString>

#include <string>

namespace mesa {

class Preferencias;

// What the user's settings remember of one who works in one registry, whatever the data directory.
class Lembrancas : public ILembrancas {
  public:
    // preferencias: outlives this object. registro: its identifier. usuario: the name of the sign-in, whose case does
    // not count.
    Lembrancas(Preferencias &preferencias, const std::string &registro, const std::string &usuario);
    std::string_view NomeTipo() const override { return "Lembrancas"; }

    std::string Lembranca(const std::string &chave) const override;
    void Lembra(const std::string &chave, const std::string &texto) override;
    void Esquece(const std::string &comeco) override;

  private:
    Preferencias &m_Preferencias;
    QString m_Grupo;
};

} // namespace mesa
