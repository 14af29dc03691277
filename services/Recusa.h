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

} // namespace mesa
