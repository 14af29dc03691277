#include "services/RelatorioDaConferencia.h"

#include "host/Conversoes.h"
#include "services/Calendario.h"

#include <vector>

namespace mesa {

std::string RelatorioDaConferencia(const std::string &lugar, const ResultadoDaConferencia &resultado,
                                   const Instante &agora)
{
    std::string texto = "Conferência do registro de equipamentos\n\n" + lugar +
                        "\nQuando: " + TextoDoMomento(Momento(agora.Local)) + "\n";
    if (resultado.Fim.Tamanho > 0) {
        texto += "Histórico: " + CStr(resultado.Fim.Tamanho) + (resultado.Fim.Tamanho == 1 ? " entrada" : " entradas") +
                 ", a última com a soma " + resultado.Fim.Elo + "\n";
    }
    texto += "\n" + resultado.Frase + "\n";
    const auto lista = [&](const std::string &titulo, const std::vector<std::string> &frases) {
        if (!frases.empty()) {
            texto += "\n" + titulo + "\n";
        }
        for (std::size_t n = 0; n < frases.size(); ++n) {
            texto += CStr(n + 1) + ". " + frases[n] + "\n";
        }
    };
    lista("Problemas:", resultado.Achados);
    lista("Avisos, que não são danos:", resultado.Avisos);
    return texto;
}

} // namespace mesa
