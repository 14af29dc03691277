#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace servidor {

// Where something listens: the number of one of this machine's addresses, and a port.
struct LugarDeEscuta {
    std::string Maquina; // without brackets
    std::uint16_t Porta = 0;

    // "127.0.0.1:50443", "[::]:50443", "localhost:0"; nothing when it is none of these.
    static std::optional<LugarDeEscuta> Le(const std::string &texto);
    bool SoNestaMaquina() const;
    std::string Texto() const;
};

// The other end of a call as the library tells it, "ipv4:10.0.0.1:4711" or "ipv6:%5B::1%5D:4711", without its port. Of
// the longer kind of address the first half: a line has the other half to itself.
std::string EnderecoDeQuem(const std::string &ponta);

} // namespace servidor
