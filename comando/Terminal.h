#pragma once

#include "comando/ITerminal.h"

#include <functional>

namespace comando {

// The terminal of the standard input. What is asked is written to the standard error.
class Terminal : public ITerminal {
  public:
    // interrompido: asked before each wait for a key.
    explicit Terminal(std::function<bool()> interrompido) : m_Interrompido(std::move(interrompido)) {}

    // Whether somebody is there who can be asked.
    static bool Ha();

    mesa::Segredo Senha(const std::string &pergunta) override;
    bool Aceita(const std::string &pergunta) override;

  private:
    // Until the end of the line. Fim when interrupted, or when the input ends before it.
    mesa::Segredo Linha() const;

    std::function<bool()> m_Interrompido;
};

} // namespace comando
