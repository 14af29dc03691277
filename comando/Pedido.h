#pragma once

#include "comando/Fim.h"
#include "services/SessaoServico.h"

#include <string>
#include <type_traits>

namespace comando {

// Asks an operation, and gives its answer of that kind. Fim with the reason when it is refused.
template <class R, class P>
Ref<R> Pede(const Ref<mesa::SessaoServico> &sessao, const std::string &classeRN, const std::string &metodo,
            const Ref<P> &pedido)
{
    Ref<Objeto> objeto = pedido;
    Valor retorno;
    std::string recusa;
    if (!sessao->Executa(classeRN, metodo, objeto, retorno, recusa)) {
        throw Fim(Codigo::Recusado, recusa);
    }
    if constexpr (std::is_same_v<R, Objeto>) {
        return objeto;
    } else {
        return retorno.Como<R>();
    }
}

} // namespace comando
