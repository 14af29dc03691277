#pragma once

#include "host/Data.h"

#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

// A count of what was active when, that knows nothing of how the services count it.
namespace contagem {

// When a row was active, as who changed it remembers: seconds of the place's clock, each with what it then was.
using Memoria = std::vector<std::pair<std::int64_t, bool>>;

inline std::int64_t Segundos(Data data)
{
    return std::llround(data.Valor * 86400.0);
}

// In which place the row is believed for the day that begins at that second, by looking at the day second by second
// where something happened; -1 when it does not count.
inline std::int64_t Lugar(const Memoria &memoria, std::int64_t inicio)
{
    const std::int64_t fim = inicio + 86399;
    const auto em = [&](std::int64_t segundo) { // 0 unknown yet, 1 active, 2 not
        int estado = 0;
        for (const auto &[quando, ativa] : memoria) {
            if (quando <= segundo) {
                estado = ativa ? 1 : 2;
            }
        }
        return estado;
    };
    bool ativa = em(inicio - 1) == 1; // the day on which it ends counts, at whatever moment it does
    for (const auto &[quando, agora] : memoria) {
        ativa = ativa || (quando >= inicio && quando <= fim && agora);
    }
    if (ativa) {
        return 0;
    }
    if (memoria.front().first <= fim || !memoria.front().second) {
        return -1;
    }
    return memoria.front().first / 86400 * 2 + (memoria.back().second ? 0 : 1);
}

} // namespace contagem
