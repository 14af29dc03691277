#include "desk/host/AtosDoRegistro.h"

#include "host/Conversoes.h"

namespace mesa {

std::string ResumoDaConferencia(const ResultadoDoAto &conferido, const std::string &quando)
{
    const auto achados = static_cast<std::int32_t>(conferido.Achados.size());
    const std::string oQue = !conferido.Inteiro && achados == 0 ? "não terminou"
                             : achados == 0                     ? "sem problemas"
                             : achados == 1                     ? "1 problema"
                                                                : CStr(achados) + " problemas";
    return "Conferido em " + quando + ": " + oQue;
}

} // namespace mesa
