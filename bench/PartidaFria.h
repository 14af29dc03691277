#pragma once

#include "bench/Medida.h"

#include <cstddef>
#include <ctime>
#include <malloc.h>
#include <utility>
#include <vector>

// For work in memory that is over within milliseconds, where the caches, the memory that an earlier subject has left
// over and whatever else runs on the machine would decide.

// Clock of the processor time spent by the process.
inline double SegundosDoProcessador()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// The same procedure, prepared so that it starts with no free memory at hand and with none of its data in the caches.
inline Preparo AFrio(Preparo preparo)
{
    return [preparo = std::move(preparo)](std::size_t trabalho) {
        constexpr std::size_t Varredura = 64U << 20U;
        constexpr std::size_t Linha = 64;
        static std::vector<unsigned char> varrida(Varredura);
        auto procedimento = preparo(trabalho);
        malloc_trim(0);
        for (std::size_t i = 0; i < Varredura; i += Linha) {
            ++varrida[i];
        }
        Usa(varrida);
        return procedimento;
    };
}
