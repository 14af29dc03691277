#pragma once

#include "desk/services/Servicos.h"

#include <string>

namespace mesa {

// What the windows over a registry say that they are: of a sample, first of all that it is one, and in the end whether
// it may only be looked at.
inline std::string TituloDoRegistro(const Servicos &servicos)
{
    const std::string nome =
        "Registro de Equipamentos" + std::string(servicos.SomenteLeitura().empty() ? "" : " (somente consulta)");
    return servicos.Tipo() == TipoDeRegistro::Amostra ? "AMOSTRA - " + nome : nome;
}

} // namespace mesa
