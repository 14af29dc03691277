#pragma once

#include "services/Segredo.h"

#include <string>

namespace comando {

// The person at a terminal.
class ITerminal {
  public:
    virtual ~ITerminal() = default;

    // A line that is typed without being shown. Fim when it was interrupted, or none came.
    virtual mesa::Segredo Senha(const std::string &pergunta) = 0;
    // A question of yes or no; anything but a plain yes is no.
    virtual bool Aceita(const std::string &pergunta) = 0;
};

} // namespace comando
