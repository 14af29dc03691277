#pragma once

#include <cstdint>
#include <string>

namespace nativo {

// What this process holds of the system.
struct Recursos {
    std::int64_t Manipuladores = 0;
    std::int64_t Modulos = 0;
    std::int64_t Janelas = 0;
    std::int64_t Graficos = 0;
    std::int64_t Memoria = 0; // octets in use in the process's heaps

    static Recursos Agora();
    std::string Texto() const;
};

} // namespace nativo
