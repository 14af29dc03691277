#include "desk/host/AtosDoRegistro.h"

#include "host/Conversoes.h"
#include "host/Falha.h"
#include "services/Conferidor.h"
#include "services/Copia.h"

namespace mesa {

AtosDoRegistro FazAtosDoRegistro(const std::string &registro, const Relogio &agora)
{
    AtosDoRegistro atos;
    atos.Confere = [=](const Segue &segue) {
        using Desfecho = ResultadoDaConferencia::Desfecho;
        const Conferidor conferidor(registro);
        const ResultadoDaConferencia resultado = conferidor.Confere(segue);
        if (resultado.Como == Desfecho::NaoConferida) {
            throw Falha(NumeroFalha::ErroDeAcesso, "AtosDoRegistro", resultado.Frase);
        }
        return ResultadoDoAto{resultado.Como != Desfecho::Cancelada, resultado.Frase, resultado.Achados,
                              resultado.Avisos, conferidor.Relatorio(resultado, agora())};
    };
    atos.Copia = [=](const std::string &pasta, const Segue &segue) {
        const DesfechoDaCopia copia =
            Copia(registro, Conferidor::Achados).Faz(pasta, agora(), Copia::QuantasPadrao, [&](double parte) {
                return segue(parte, "");
            });
        std::vector<std::string> achados = copia.Achados;
        if (!copia.Feita && !copia.Cancelada && achados.empty()) {
            achados.push_back(copia.Frase);
        }
        return ResultadoDoAto{!copia.Cancelada, copia.Frase, achados};
    };
    atos.Cabeca = [=] { return ExportacaoDeCabeca::Le(registro, agora()); };
    return atos;
}

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
