#include "services/Conferidor.h"

#include "host/Conversoes.h"
#include "host/Falha.h"
#include "services/Calendario.h"
#include "services/CatalogoPostgres.h"
#include "services/Disco.h"
#include "services/ErroSql.h"
#include "services/Exame.h"
#include "services/LeitorSQLite.h"
#include "services/LigacaoPostgres.h"
#include "services/RelatorioDaConferencia.h"
#include "services/TextoQt.h"
#include "services/Transporte.h"

#include <QFileInfo>
#include <QTemporaryDir>

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

void Conclui(Exame &exame, bool rapida, const CabecaAssinada *desde)
{
    if (desde != nullptr) {
        exame.ConfereDesde(*desde);
    }
    exame.Resultado.Como = exame.Achados == 0 ? Desfecho::Inteira : Desfecho::ComAchados;
    exame.Resultado.Frase = FraseDe(exame, rapida, desde);
}

ResultadoDaConferencia Cancelada(ResultadoDaConferencia resultado, std::int64_t achados)
{
    resultado.Como = Desfecho::Cancelada;
    resultado.Frase = "A conferência foi cancelada antes do fim" +
                      (achados == 0 ? ": nada se pode dizer do registro."
                                    : ", e até ali encontrou " + Contados(achados, "problema", "problemas") + ".");
    return resultado;
}

// Runs what looks through it; giving up, and what stops it, become its result.
template <class Partes> ResultadoDaConferencia Roda(Exame &exame, Partes &&partes)
{
    try {
        partes();
    } catch (const LeituraCancelada &) {
        return Cancelada(exame.Resultado, exame.Achados);
    } catch (const ErroDeLeitura &erro) {
        exame.Resultado.Achados.push_back("O arquivo está danificado (" + std::string(erro.what()) + ").");
        exame.Resultado.Como = Desfecho::ComAchados;
        exame.Resultado.Frase = "A conferência do registro encontrou um dano que a impediu de continuar.";
    }
    return exame.Resultado;
}

void ConfereLinhas(Exame &exame)
{
    exame.ConfereCorrente();
    exame.ConfereTabelas();
    exame.ConfereReferencias();
    exame.ConfereCondicoes();
    exame.ConfereSobreposicoes();
}

ResultadoDaConferencia ExaminaArquivo(const std::string &arquivo, bool parado, bool rapida,
                                      const SegueConferencia &segue, const CabecaAssinada *desde)
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
    return Roda(exame, [&] {
        if (!exame.Reconhece()) {
            if (desde != nullptr) {
                exame.RecusaCabeca();
            }
            return;
        }
        exame.ConfereEsquema();
        exame.ConfereArquivo(rapida);
        if (rapida) {
            exame.ConfereFimDaCorrente(UltimasEntradas);
            exame.ConfereTocadas();
        } else {
            ConfereLinhas(exame);
        }
        Conclui(exame, rapida, desde);
    });
}

// Where the rows of a registry on a server stand while they are looked at: closed to others, and gone afterwards.
class LugarDeExame {
  public:
    LugarDeExame()
    {
        if (!m_Pasta.isValid()) {
            throw Falha(NumeroFalha::ErroDeAcesso, "Servicos",
                        "Não foi possível fazer uma pasta temporária (" + S(m_Pasta.errorString()) + ").");
        }
        CriaArquivoPrivado(Arquivo());
    }

    std::string Arquivo() const { return S(m_Pasta.filePath("registro.db")); }
    std::string Pasta() const { return S(m_Pasta.path()); }

  private:
    QTemporaryDir m_Pasta;
};

ResultadoDaConferencia ExaminaServidor(const std::string &onde, bool rapida, const SegueConferencia &segue,
                                       const CabecaAssinada *desde)
try {
    constexpr double daCopia = 0.4; // of the whole, what bringing the rows takes
    const LugarDeExame lugar;
    const AndamentoDaCopia trazendo = [&](double parte) {
        return !segue || segue(parte, "As linhas do registro, que são trazidas para cá");
    };
    const SegueConferencia olhando = [&](double parte, const std::string &oQue) {
        return !segue || segue(daCopia + (1 - daCopia) * parte, oQue);
    };
    ResultadoDoCatalogo catalogo;
    RegistroTrazido trazido;
    try {
        LigacaoPostgres ligacao(onde);
        Transporte::ExigeRegistro(ligacao);
        catalogo = ConfereCatalogo(ligacao);
        const std::int64_t versao = ligacao.Inteiro("SELECT MAX(Versao) FROM ESQUEMA");
        if (versao > Esquema::Versao && !catalogo.Achados.empty()) {
            return NaoConferida(Exame::FraseDeMaisNova(versao));
        }
        const ParteDoAndamento parte(trazendo, 0.02, daCopia);
        trazido = rapida ? Transporte::TrazFim(ligacao, lugar.Arquivo(), UltimasEntradas,
                                               desde == nullptr ? std::nullopt : std::optional(desde->Tamanho), parte)
                         : Transporte::Traz(ligacao, lugar.Arquivo(), parte);
    } catch (const Desistencia &) {
        return Cancelada({}, static_cast<std::int64_t>(catalogo.Achados.size()));
    } catch (const ErroSql &erro) {
        return NaoConferida("Em " + lugar.Pasta() + ", para onde as linhas são trazidas, não foi possível gravar. " +
                            (erro.Motivo == MotivoSql::DiscoCheio
                                 ? "O disco ficou cheio: libere espaço, ou aponte TMPDIR para outro."
                                 : erro.Descricao));
    }
    LeitorSQLite leitor(lugar.Arquivo(), true);
    Exame exame(leitor, olhando);
    return Roda(exame, [&] {
        exame.Recebe(catalogo.Achados, {});
        exame.Resultado.Avisos = catalogo.Avisos;
        exame.Resultado.Palavras = catalogo.Palavras;
        exame.Resultado.Palavras.insert(exame.Resultado.Palavras.end(), trazido.Palavras.begin(),
                                        trazido.Palavras.end());
        if (!exame.Reconhece()) {
            return;
        }
        exame.Recebe(trazido.Achados, trazido.NaoLidas);
        exame.ConfereVersoes();
        if (rapida) {
            for (const ReferenciaSolta &solta : trazido.Soltas) {
                exame.AchaSolta(solta.Tabela, solta.Chave, solta.Para);
            }
            exame.ConfereFimDaCorrente(UltimasEntradas, trazido.Entradas);
            exame.ConfereTocadas();
        } else {
            if (trazido.NaoLidas.empty()) { // rows that did not come would seem to be missing everywhere
                exame.ConfereArquivo(false);
            }
            ConfereLinhas(exame);
        }
        Conclui(exame, rapida, desde);
    });
} catch (const ErroDoServidor &erro) {
    ResultadoDaConferencia resultado = NaoConferida(erro.Descricao);
    resultado.Palavras = {erro.Detalhe};
    return resultado;
} catch (const Falha &falha) {
    return NaoConferida(falha.Descricao);
}

ResultadoDaConferencia Examina(const std::string &registro, bool parado, bool rapida, const SegueConferencia &segue,
                               const CabecaAssinada *desde)
{
    return EhDeServidor(registro) ? ExaminaServidor(registro, rapida, segue, desde)
                                  : ExaminaArquivo(registro, parado, rapida, segue, desde);
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

Conferidor::Conferidor(std::string registro, Lugar lugar) : m_Registro(std::move(registro)), m_Lugar(lugar) {}

ResultadoDaConferencia Conferidor::Confere(const SegueConferencia &segue, const CabecaAssinada *desde) const
{
    return Examina(m_Registro, m_Lugar == Lugar::Parado, false, segue, desde);
}

ResultadoDaConferencia Conferidor::ConfereRapido(const SegueConferencia &segue, const CabecaAssinada *desde) const
{
    return Examina(m_Registro, m_Lugar == Lugar::Parado, true, segue, desde);
}

std::string Conferidor::Relatorio(const ResultadoDaConferencia &resultado, const Instante &agora) const
{
    return RelatorioDaConferencia(EhDeServidor(m_Registro) ? ComecoDeFrase(NomeDoServidor(m_Registro))
                                                           : "Arquivo: " + m_Registro,
                                  resultado, agora);
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
