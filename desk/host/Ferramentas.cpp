#include "desk/host/Ferramentas.h"

#include <vector>

namespace mesa {

std::span<const Ferramenta> Ferramentas()
{
    static const std::vector<Ferramenta> ferramentas = {
        {"mnuModVOREquiptos",
         "Equipamentos com trabalho &fotográfico...",
         "Equipamentos com trabalho &fotográfico",
         "Radares, lombadas, pardais e outros que fotografam a infração.",
         "Ctrl+1",
         {"fotografico", "trabalho fotográfico"}},
        {"mnuModNABEquiptos",
         "&Demais equipamentos...",
         "&Demais equipamentos",
         "Etilômetros, luxímetros e outros sem trabalho fotográfico.",
         "Ctrl+2",
         {"demais", "demais"}},
    };
    return ferramentas;
}

} // namespace mesa
