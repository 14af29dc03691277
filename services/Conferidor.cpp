#include "services/Conferidor.h"

#include "host/Conversoes.h"
#include "host/Falha.h"
#include "services/Calendario.h"
#include "services/ErroSql.h"
#include "services/Exame.h"
#include "services/LeitorSQLite.h"
#include "services/TextoQt.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace mesa {

namespace {

using Desfecho = ResultadoDaConferencia::Desfecho;

constexpr std::int64_t UltimasEntradas = 1000; // that the quick check looks through

const std::string NaoProvaSemCabeca =
    "Sem uma cabeça do histórico guardada fora do registro, esta conferência não prova que nada foi cortado do fim do "
    "histórico, nem que o registro não foi refeito por inteiro.";

std::string Contados(std::int64_t quantos, const std::string &um, const std::string &varios)
{
    return CStr(quantos) + " " + (quantos == 1 ? um : varios);
}

std::string ContraACabeca(const CabecaAssinada &cabeca, std::int64_t tamanho)
{
    const std::string ate = "A cabeça de " + TextoDoMomento(cabeca.Quando) +
                            " (UTC) confere: nada foi mudado nem "
                            "cortado até a entrada " +
                            CStr(cabeca.Tamanho) + " do histórico.";
    return tamanho == cabeca.Tamanho
               ? ate
               : ate + " As entradas seguintes só a própria corrente as prova: delas vale o que vale sem cabeça.";
}

std::string FraseDe(const Exame &exame, bool rapida, const CabecaAssinada *desde)
{
    const std::string entradas = Contados(exame.Resultado.Fim.Tamanho, "entrada do histórico", "entradas do histórico");
    std::string frase;
    if (exame.Achados > 0) {
        frase = "A conferência do registro encontrou " + Contados(exame.Achados, "problema", "problemas") + ".";
    } else if (rapida) {
        frase = "A conferência rápida do registro, com " + entradas +
                ", nada encontrou: olhou as guardas, o fim do histórico e as linhas mudadas por último.";
    } else {
        frase = "O registro está inteiro: " + Contados(exame.Linhas, "linha", "linhas") + ", " +
                Contados(exame.Documentos, "documento", "documentos") + " e " + entradas + " conferem.";
    }
    if (desde == nullptr) {
        return frase + " " + NaoProvaSemCabeca;
    }
    return exame.Achados > 0 ? frase : frase + " " + ContraACabeca(*desde, exame.Resultado.Fim.Tamanho);
}

ResultadoDaConferencia NaoConferida(const std::string &frase)
{
    ResultadoDaConferencia resultado;
    resultado.Frase = frase;
    return resultado;
}

ResultadoDaConferencia Examina(const std::string &arquivo, bool parado, bool rapida, const SegueConferencia &segue,
                               const CabecaAssinada *desde)
{
    const QFileInfo lugar(Q(arquivo));
    if (!lugar.exists()) {
        return NaoConferida(ErroSql(MotivoSql::Ausente, arquivo).Descricao);
    }
    if (lugar.size() == 0) {
        return NaoConferida(ErroSql(MotivoSql::Vazio, arquivo).Descricao);
    }
    std::optional<LeitorSQLite> leitor;
    try {
        leitor.emplace(arquivo, parado);
    } catch (const ErroDeLeitura &erro) {
        if (!erro.Danificado) {
            return NaoConferida("O arquivo não pôde ser lido, ou não é um registro (" + std::string(erro.what()) +
                                ").");
        }
        ResultadoDaConferencia danificado = NaoConferida("A conferência do registro encontrou 1 problema.");
        danificado.Como = Desfecho::ComAchados;
        danificado.Achados = {"O arquivo está danificado a ponto de não poder ser lido (" + std::string(erro.what()) +
                              ")."};
        return danificado;
    }
    Exame exame(*leitor, segue);
    try {
        if (!exame.Reconhece()) {
            if (desde != nullptr) {
                exame.RecusaCabeca();
            }
            return exame.Resultado;
        }
        exame.ConfereEsquema();
        exame.ConfereArquivo(rapida);
        if (rapida) {
            exame.ConfereFimDaCorrente(UltimasEntradas);
            exame.ConfereTocadas();
        } else {
            exame.ConfereCorrente();
            exame.ConfereTabelas();
            exame.ConfereReferencias();
            exame.ConfereCondicoes();
            exame.ConfereSobreposicoes();
        }
        if (desde != nullptr) {
            exame.ConfereDesde(*desde);
        }
        exame.Resultado.Como = exame.Achados == 0 ? Desfecho::Inteira : Desfecho::ComAchados;
        exame.Resultado.Frase = FraseDe(exame, rapida, desde);
    } catch (const LeituraCancelada &) {
        exame.Resultado.Como = Desfecho::Cancelada;
        exame.Resultado.Frase =
            "A conferência foi cancelada antes do fim" +
            (exame.Achados == 0 ? ": nada se pode dizer do registro."
                                : ", e até ali encontrou " + Contados(exame.Achados, "problema", "problemas") + ".");
    } catch (const ErroDeLeitura &erro) {
        exame.Resultado.Achados.push_back("O arquivo está danificado (" + std::string(erro.what()) + ").");
        exame.Resultado.Como = Desfecho::ComAchados;
        exame.Resultado.Frase = "A conferência do registro encontrou um dano que a impediu de continuar.";
    }
    return exame.Resultado;
}

} // namespace

int ResultadoDaConferencia::CodigoDeSaida() const
{
    switch (Como) {
    case Desfecho::Inteira:
        return 0;
    case Desfecho::ComAchados:
        return 1;
    default:
        return 2;
    }
}

Conferidor::Conferidor(std::string arquivo, Lugar lugar) : m_Arquivo(std::move(arquivo)), m_Lugar(lugar) {}

ResultadoDaConferencia Conferidor::Confere(const SegueConferencia &segue, const CabecaAssinada *desde) const
{
    return Examina(m_Arquivo, m_Lugar == Lugar::Parado, false, segue, desde);
}

ResultadoDaConferencia Conferidor::ConfereRapido(const SegueConferencia &segue, const CabecaAssinada *desde) const
{
    return Examina(m_Arquivo, m_Lugar == Lugar::Parado, true, segue, desde);
}

std::string Conferidor::Relatorio(const ResultadoDaConferencia &resultado, const Instante &agora) const
{
    std::string texto = "Conferência do registro de equipamentos\n\nArquivo: " + m_Arquivo +
                        "\nQuando: " + TextoDoMomento(Momento(agora.Local)) + "\n";
    if (resultado.Fim.Tamanho > 0) {
        texto += "Histórico: " + Contados(resultado.Fim.Tamanho, "entrada", "entradas") + ", a última com a soma " +
                 resultado.Fim.Elo + "\n";
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

std::vector<std::string> Conferidor::Achados(const std::string &arquivo)
{
    ResultadoDaConferencia resultado = Conferidor(arquivo, Lugar::Parado).Confere();
    if (resultado.Como != Desfecho::Inteira && resultado.Achados.empty()) {
        resultado.Achados.push_back(resultado.Frase);
    }
    return resultado.Achados;
}

ComandoDeConferencia::Saida ComandoDeConferencia::Confere(const std::string &registro, const std::string &desde,
                                                          const Instante &agora)
{
    std::optional<CabecaAssinada> cabeca;
    if (!desde.empty()) {
        try {
            cabeca = CabecaAssinada::LeArquivo(desde);
        } catch (const Falha &falha) {
            return {2, falha.Descricao + "\n"};
        }
    }
    const Conferidor conferidor(registro);
    const ResultadoDaConferencia resultado = conferidor.Confere({}, cabeca ? &*cabeca : nullptr);
    return {resultado.CodigoDeSaida(), conferidor.Relatorio(resultado, agora)};
}

} // namespace mesa
