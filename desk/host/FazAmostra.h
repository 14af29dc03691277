#pragma once

#include "desk/host/Inicio.h"
#include "services/sample/Amostra.h"

namespace mesa {

// By which the desk's beginning makes a sample of a new registry: that of today.
inline auto FazAmostra(const Relogio &agora)
{
    return [agora](Servicos &servicos, const Inicio::Progresso &progresso) {
        CadastraUsuariosDaAmostra(servicos);
        PreencheAmostra(servicos, agora().Local, progresso);
    };
}

} // namespace mesa
