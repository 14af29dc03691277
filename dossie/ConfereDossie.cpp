#include "dossie/ConfereDossie.h"

#include "dossie/ArquivoPDF.h"
#include "dossie/Fatos.h"
#include "dossie/Paginas.h"
#include "host/Conversoes.h"
#include "host/Falha.h"
#include "services/ProvaED.h"
#include "services/Resumo.h"
#include "services/TextoQt.h"

#include <QFile>

#include <utility>

namespace dossie {

using namespace mesa;

namespace {

constexpr qint64 MaiorArquivo = 268435456; // far more than a dossier ever takes

const char *const NaoE = "Este arquivo não é um dossiê do registro de equipamentos.";
const char *const FoiMudado = "O dossiê foi mudado ou está danificado: não é o arquivo que foi feito.";

std::string Linha(const EntradaProvadaED &entrada)
{
    const std::string quem = entrada.Quem.Valor().empty() ? "pelo sistema" : "por " + entrada.Quem.Valor();
    return entrada.Momento.Valor() + ", " + quem + ", " + entrada.Assunto.Valor() + ": " + entrada.OQue.Valor() +
           (entrada.Motivo.Valor().empty() ? "" : "; motivo: " + entrada.Motivo.Valor()) + ".";
}

std::string Quando(const ProvaED &prova)
{
    return "O dossiê foi emitido em " + prova.EmitidoEm.Valor() + " por " + prova.EmitidoPor.Valor() + ".";
}

bool Igual(const EntradaProvadaED &uma, const EntradaProvadaED &outra)
{
    return uma.Texto() == outra.Texto();
}

// What the registry has to say now of the facts that a file tells.
ResultadoDaConferencia Compara(const Fatos &fatos, SessaoServico &sessao)
{
    const ProvaED &prova = *fatos.Prova;
    ResultadoDaConferencia resultado;
    auto pergunta = Novo<ConsultaProvaED>();
    pergunta->NroIntEquip = prova.Equipamento.Valor()->Item(1)->NroIntEquip.Valor();
    pergunta->Dia = prova.Dia.Valor();
    pergunta->Hora = prova.Hora.Valor();
    pergunta->AteEntrada = prova.Corte.Valor();
    Ref<Objeto> pedido = pergunta;
    Valor retorno;
    std::string recusa;
    if (!sessao.Executa("ProvaRN", "consultaProva", pedido, retorno, recusa)) {
        return {Situacao::NaoConferido,
                "O arquivo está como foi feito, e o registro não respondeu por ele.",
                {recusa, Quando(prova)}};
    }
    const auto agora = retorno.Como<ProvaED>();
    if (agora->Identificador.Valor() != prova.Identificador.Valor()) {
        return {Situacao::Discorda,
                "O arquivo está como foi feito, e é de outro registro.",
                {"O dossiê é do registro " + prova.Identificador.Valor() + ", e este é o " +
                     agora->Identificador.Valor() + ".",
                 Quando(prova)}};
    }
    if (agora->EloDoCorte.Valor() != prova.EloDoCorte.Valor()) {
        resultado.Detalhes.push_back("O elo da entrada " + CStr(prova.Corte.Valor()) +
                                     " do histórico não é o que o dossiê diz.");
    }
    if (!MesmosFatos(prova, *agora)) {
        resultado.Detalhes.push_back("O que o histórico diz até a entrada " + CStr(prova.Corte.Valor()) +
                                     " não é o que o dossiê diz.");
    }
    if (fatos.Sha256DoCertificado.empty() ? fatos.FaltaDoCertificado.empty() && agora->Documento.Valor() != 0
                                          : fatos.Sha256DoCertificado != agora->Sha256DoDocumento.Valor()) {
        resultado.Detalhes.push_back("O certificado do dossiê não é o que o registro guardou.");
    }
    // What came since stands in the file as far as it had come by then.
    const ListaDe<EntradaProvadaED> &antes = prova.Posteriores;
    const ListaDe<EntradaProvadaED> &depois = agora->Posteriores;
    for (std::int32_t n = 1; n <= antes->Count(); ++n) {
        if (n > depois->Count() || !Igual(*antes->Item(n), *depois->Item(n))) {
            resultado.Detalhes.push_back("O que se escreveu do equipamento depois não é o que o dossiê diz.");
            break;
        }
    }
    if (!resultado.Detalhes.empty()) {
        resultado.Como = Situacao::Discorda;
        resultado.Frase = "O arquivo está com o selo inteiro, e o que diz não é o que este registro diz.";
    } else if (depois->Count() > antes->Count()) {
        resultado.Como = Situacao::SabeMais;
        resultado.Frase = "O dossiê está como foi feito e concorda com o registro de então. Desde então o registro "
                          "escreveu mais deste equipamento:";
        for (std::int32_t n = antes->Count() + 1; n <= depois->Count(); ++n) {
            resultado.Detalhes.push_back(Linha(*depois->Item(n)));
        }
    } else {
        resultado.Como = Situacao::Concorda;
        resultado.Frase = "O dossiê está como foi feito e concorda com o registro.";
    }
    resultado.Detalhes.push_back(Quando(prova));
    return resultado;
}

} // namespace

ResultadoDaConferencia ConfereDossie::Confere(const QByteArray &arquivo)
{
    switch (SeloDe(arquivo)) {
    case Selo::Nenhum:
        return {Situacao::NaoEDossie, NaoE};
    case Selo::Rompido:
        return {Situacao::Mudado, FoiMudado};
    case Selo::Intacto:
        break;
    }
    const std::optional<QByteArray> texto = AnexoDe(arquivo, NomeDosFatos);
    const std::optional<Fatos> fatos = texto ? LeFatos(*texto) : std::nullopt;
    if (!fatos) {
        return {Situacao::Mudado, FoiMudado, {"O que ele anexa não pode ser lido."}};
    }
    const QByteArray certificado = AnexoDe(arquivo, NomeDoCertificado).value_or(QByteArray());
    if ((certificado.isEmpty() ? "" : Resumo(certificado)) != fatos->Sha256DoCertificado) {
        return {Situacao::Mudado, FoiMudado, {"O certificado anexado não é o que o dossiê diz."}};
    }
    const QByteArray deNovo =
        DesenhaPaginas(*fatos->Prova, {certificado, fatos->FaltaDoCertificado}, *texto, Figuras::Omite, {});
    if (TextoDasPaginas(deNovo) != TextoDasPaginas(arquivo)) {
        return {Situacao::Mudado, FoiMudado, {"O que as páginas dizem não é o que os fatos anexados dizem."}};
    }
    if (m_Sessao.Nada()) {
        return {Situacao::NaoConferido,
                "O arquivo está como foi feito. O registro não foi consultado.",
                {Quando(*fatos->Prova)}};
    }
    return Compara(*fatos, *m_Sessao);
}

ResultadoDaConferencia ConfereDossie::ConfereArquivo(const std::string &caminho)
{
    QFile arquivo(Q(caminho));
    if (!arquivo.open(QIODevice::ReadOnly)) {
        return {Situacao::NaoConferido, "O arquivo não pôde ser lido: " + S(arquivo.errorString()) + "."};
    }
    if (arquivo.isSequential() || arquivo.size() > MaiorArquivo) {
        return {Situacao::NaoEDossie, NaoE};
    }
    return Confere(arquivo.readAll());
}

} // namespace dossie
