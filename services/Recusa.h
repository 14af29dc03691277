#pragma once

#include <stdexcept>
#include <string>

namespace mesa {

// A refusal on its way out of an operation, whose transaction rolls back as it passes. It ends in the session, as the
// sentence that the person reads; no caller of the services ever sees it.
class Recusa : public std::runtime_error {
  public:
    explicit Recusa(const std::string &frase) : std::runtime_error(frase) {}
};

// The sign-in no longer stands: the user was deactivated, or has another password. Whoever keeps sessions by itself
// (ServicosSql::Retoma) gets this one as it is, and ends the session.
class RecusaDeEntrada : public Recusa {
  public:
    using Recusa::Recusa;
};

} // namespace mesa
