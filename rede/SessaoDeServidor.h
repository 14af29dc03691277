#pragma once

#include "services/Cabeca.h"
#include "services/Conferidor.h"
#include "services/Segue.h"
#include "services/SessaoServico.h"

#include <functional>
#include <optional>

namespace rede {

// A session of a server, which looks its registry through for whoever has the right to. What is refused, and what is
// not answered, is a Falha with a sentence.
class SessaoDeServidor : public mesa::SessaoServico {
  public:
    // The check, once, on any thread, whatever the session does meanwhile: it goes a way of its own, and blocks until
    // all is looked through or `segue`, which is called on the same thread, gives up. It is not made again, and nobody
    // is asked.
    using Conferencia = std::function<mesa::ResultadoDaConferencia(const mesa::Segue &segue)>;
    // Of all of the registry. desde: a head of the history that was kept elsewhere, to hold it against. A session that
    // has ended is found out here.
    virtual Conferencia PreparaConferencia(const std::optional<mesa::CabecaAssinada> &desde) = 0;
    // The signed end of the history.
    virtual mesa::CabecaAssinada Cabeca() = 0;
};

} // namespace rede
