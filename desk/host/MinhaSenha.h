#pragma once

#include "desk/host/Ficha.h"
#include "services/SessaoServico.h"

namespace mesa {

// The form by which one's own password is changed. obrigada: somebody else has set the present one, which is good for
// one sign-in only.
Ficha FichaDaMinhaSenha(const Ref<SessaoServico> &sessao, bool obrigada);

} // namespace mesa
