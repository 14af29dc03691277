#pragma once

#include "services/SessaoServico.h"

#include <functional>
#include <string>

namespace mesa {

// The person on this side of the connection with a server.
class ILigacao {
  public:
    virtual ~ILigacao() = default;

    // Runs the wait for an answer. What the wait is handed is told now and then that it goes on, and its false gives
    // the answer up.
    virtual void Espera(const std::function<void(const Segue &)> &espera) = 0;
    // The server did not answer, as the sentence says; whether it is tried again.
    virtual bool TentaDeNovo(const std::string &frase) = 0;
    // An answer has come.
    virtual void Respondeu() = 0;
    // The session of the one who is at work has ended, as the sentence says. A new one of the same person, or Nothing.
    virtual Ref<SessaoServico> EntraDeNovo(const Operador &quem, const std::string &frase) = 0;
};

} // namespace mesa
