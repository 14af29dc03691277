#include "services/PeriodoDaAfericao.h"

namespace mesa {

Alcance AlcanceNoDia(const PeriodoDaAfericao &afericao, std::int32_t dia)
{
    if (dia < afericao.De) {
        return Alcance::NaoComecou;
    }
    if (dia > afericao.Ate) {
        return Alcance::Acabou;
    }
    return afericao.ComDocumento ? Alcance::EmVigor : Alcance::SemDocumento;
}

} // namespace mesa
