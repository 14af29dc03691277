#include "desk/host/AtosDoRegistro.h"

#include "host/Conversoes.h"
#include "host/Falha.h"
#include "rede/SessaoDeServidor.h"
#include "services/Conferidor.h"
#include "services/Copia.h"

namespace mesa {

namespace {

// relatorio: of a check that was made.
ResultadoDoAto AtoDe(const ResultadoDaConferencia &resultado, const std::function<std::string()> &relatorio)
{
    using Desfecho = ResultadoDaConferencia::Desfecho;
    if (resultado.Como == Desfecho::NaoConferida) {
        throw Falha(NumeroFalha::ErroDeAcesso, "AtosDoRegistro", resultado.Frase);
    }
    return {resultado.Como != Desfecho::Cancelada, resultado.Frase, resultado.Achados, resultado.Avisos, relatorio()};
}

} // namespace

AtosDoRegistro FazAtosDoRegistro(const std::string &registro, const Relogio &agora)
{
    AtosDoRegistro atos;
    atos.Confere = [=] {
        return [=](const Segue &segue) {
            const Conferidor conferidor(registro);
            const ResultadoDaConferencia resultado = conferidor.Confere(segue);
            return AtoDe(resultado, [&] { return conferidor.Relatorio(resultado, agora()); });
        };
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

AtosDoRegistro AtosNoServidor(std::function<Ref<SessaoServico>()> sessao)
{
    const auto dela = [sessao = std::move(sessao)] { return ComoTipo<rede::SessaoDeServidor>(sessao()); };
    AtosDoRegistro atos;
    atos.Confere = [dela] {
        return [confere = dela()->PreparaConferencia({})](const Segue &segue) {
            return AtoDe(confere(segue), [] { return std::string(); });
        };
    };
    atos.Cabeca = [dela] { return dela()->Cabeca(); };
    atos.SoLa = "As cópias são feitas, e restauradas, na máquina do servidor, por quem o administra.";
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
