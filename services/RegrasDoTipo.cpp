#include "services/RegrasDoTipo.h"

namespace mesa {

RegrasDoTipo RegrasDe(std::string_view tipoEquip)
{
    const auto um = [tipoEquip](std::string_view tipos) { return tipos.find(tipoEquip) != std::string_view::npos; };
    return {.PedeMunicipio = !um("EAUB"),
            .TemLayout = !um("EAUB"),
            .TemVelocidade = !um("MEUBFV"),
            .TemLimites = !um("MAEUBFV"),
            .TemHorariosProibidos = um("F"),
            .TemObservacao = um("FV"),
            .ViaNaGeracao = um("M"),
            .TemAfericoes = !um("V"),
            .TemDeclaracoes = um("PCLM"),
            .TemSensores = !um("MAEUBV")};
}

} // namespace mesa
