#include "desk/host/Ferramentas.h"

#include <vector>

namespace mesa {

std::span<const Ferramenta> Ferramentas()
{
    static const std::vector<Ferramenta> ferramentas = {
        {"mnuModVOREquiptos",
         "Equipamentos com trabalho &fotográfico...",
         "Ctrl+1",
         {"fotografico", "trabalho fotográfico"}},
        {"mnuModNABEquiptos", "&Demais equipamentos...", "Ctrl+2", {"demais", "demais"}},
    };
    return ferramentas;
}

} // namespace mesa
