#include "services/Instante.h"

#include "services/Calendario.h"

namespace mesa {

std::int64_t Instante::Utc() const
{
    return MaisMinutos(Momento(Local), -Fuso);
}

Instante Instante::NoFuso(std::int32_t fuso) const
{
    const std::int64_t la = MaisMinutos(Utc(), fuso);
    const auto parte = [&](std::int64_t de, int ate) { return static_cast<int>(la / de % ate); };
    return {DataDe(parte(1000000, 100), parte(100000000, 100), parte(10000000000, 10000), parte(10000, 100),
                   parte(100, 100), parte(1, 100)),
            fuso};
}

} // namespace mesa
