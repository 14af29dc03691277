#include "services/Instante.h"

#include "services/Calendario.h"

namespace mesa {

std::int64_t Instante::Utc() const
{
    return MaisMinutos(Momento(Local), -Fuso);
}

} // namespace mesa
