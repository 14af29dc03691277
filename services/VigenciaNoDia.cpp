#include "services/VigenciaNoDia.h"

namespace mesa {

Vigencia VigenciaNoDia(const PeriodoDaAfericao &afericao, std::int32_t dia)
{
    if (dia < afericao.De) {
        return Vigencia::NaoComecou;
    }
    if (dia > afericao.Ate) {
        return Vigencia::Acabou;
    }
    return afericao.ComDocumento ? Vigencia::EmVigor : Vigencia::SemDocumento;
}

} // namespace mesa
