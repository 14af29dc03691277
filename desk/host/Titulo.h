#pragma once

#include "services/Servicos.h"

#include <string>

namespace mesa {

// What all boxes are called, whether the module or the desk says something, and what those that ask are called.
constexpr const char *TituloDosAvisos = "Registro de Equipamentos";
constexpr const char *TituloDasPerguntas = "Atenção";

// What the windows over a registry say that they are: of a sample, first of all that it is one, and in the end whether
// it may only be looked at.
inline std::string TituloDoRegistro(const Servicos &servicos)
{
    const std::string nome =
        std::string(TituloDosAvisos) + std::string(servicos.SomenteLeitura().empty() ? "" : " (somente consulta)");
    return servicos.Tipo() == TipoDeRegistro::Amostra ? "AMOSTRA - " + nome : nome;
}

} // namespace mesa
