#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace rede {

// Where a server is.
struct Endereco {
    static constexpr std::uint16_t PortaPadrao = 50443;

    std::string Maquina; // name or number
    std::uint16_t Porta = PortaPadrao;

    // "maquina", "maquina:porta", "[::1]:porta". Nothing with the reason, a sentence, in recusa.
    static std::optional<Endereco> Le(const std::string &texto, std::string &recusa);
    std::string Texto() const;
    bool DestaMaquina() const; // the loopback

    bool operator==(const Endereco &) const = default;
};

} // namespace rede
