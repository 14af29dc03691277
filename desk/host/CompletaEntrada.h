#pragma once

#include "services/SessaoServico.h"

#include <functional>
#include <string>

namespace mesa {

// What a sign-in takes besides name and password, before anybody works with its session: the server's clock is learnt,
// what is wrong with it is told to the person (avisa), and a password that somebody else has set gives way to one's own
// (trocaSenha, false when the person leaves it). Gives whether the session is good for work.
bool CompletaEntrada(SessaoServico &sessao, const std::function<void(const std::string &aviso)> &avisa,
                     const std::function<bool()> &trocaSenha);

} // namespace mesa
