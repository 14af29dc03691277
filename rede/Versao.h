#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

namespace rede {

// The contract of server/proto that this program speaks, and the earliest that it understands.
inline constexpr std::int32_t Contrato = 1;
inline constexpr std::int32_t ContratoMinimo = 1;

// The versions that a program speaks.
struct Contratos {
    std::int32_t Minimo = ContratoMinimo;
    std::int32_t Ultimo = Contrato;

    // The latest that the other one speaks too; nothing when there is none.
    std::optional<std::int32_t> EmComum(const Contratos &outro) const
    {
        const std::int32_t comum = std::min(Ultimo, outro.Ultimo);
        return comum >= Minimo && comum >= outro.Minimo ? std::optional(comum) : std::nullopt;
    }
};

} // namespace rede
