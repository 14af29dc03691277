#include "dossie/FazDossie.h"

#include "dossie/ArquivoPDF.h"
#include "dossie/Fatos.h"
#include "dossie/Paginas.h"
#include "dossie/TextoDoDossie.h"
#include "host/Falha.h"
#include "services/Calendario.h"
#include "services/Resumo.h"
#include "services/TextoQt.h"

#include <QSaveFile>

#include <algorithm>
#include <utility>

namespace dossie {

namespace {

// "20/11/2026 às 14:32:10" as "20261120143210".
std::string Digitos(const std::string &momento)
{
    std::string digitos;
    std::ranges::copy_if(momento, std::back_inserter(digitos), [](char letra) { return letra >= '0' && letra <= '9'; });
    return digitos.size() == 14 ? digitos.substr(4, 4) + digitos.substr(2, 2) + digitos.substr(0, 2) + digitos.substr(8)
                                : "19700101000000";
}

// The certificate as the history has it, or why it is not there.
Certificado Conferido(const mesa::ProvaED &prova, const QByteArray &octetos, const std::string &falta)
{
    if (prova.Vigente.Valor()->Count() == 0) {
        return {};
    }
    if (!falta.empty()) {
        return {{}, falta};
    }
    if (prova.Sha256DoDocumento.Valor().empty()) {
        return {{}, "O histórico não tem a entrada do documento."};
    }
    if (mesa::Resumo(octetos) != prova.Sha256DoDocumento.Valor()) {
        return {{}, "O documento guardado não é o que o histórico diz que foi guardado."};
    }
    return {octetos, ""};
}

} // namespace

std::optional<QByteArray> FazDossie::Faz(const Ref<mesa::ConsultaProvaED> &pergunta, const mesa::Segue &segue,
                                         std::string &recusa)
{
    recusa.clear();
    const std::string cancelado = "O dossiê foi cancelado: nada foi gravado.";
    if (segue && !segue(0, "Consultando o registro")) {
        recusa = cancelado;
        return std::nullopt;
    }
    Ref<Objeto> pedido = pergunta;
    Valor retorno;
    if (!m_Sessao->Executa("ProvaRN", "consultaProva", pedido, retorno, recusa)) {
        return std::nullopt;
    }
    const auto prova = retorno.Como<mesa::ProvaED>();
    QByteArray certificado;
    std::string falta;
    if (prova->Documento.Valor() != 0) {
        Bytes octetos;
        if (m_Sessao->LeDocumento(prova->Documento, octetos, falta)) {
            certificado =
                QByteArray(reinterpret_cast<const char *>(octetos.data()), static_cast<qsizetype>(octetos.size()));
        }
    }
    try {
        return Monta(*prova, certificado, falta, segue);
    } catch (const Desistencia &) {
        recusa = cancelado;
        return std::nullopt;
    }
}

QByteArray FazDossie::Monta(const mesa::ProvaED &prova, const QByteArray &octetos, const std::string &falta,
                            const mesa::Segue &segue)
{
    const Certificado certificado = Conferido(prova, octetos, falta);
    const QByteArray fatos = TextoDosFatos(prova, certificado);
    const QByteArray paginas = DesenhaPaginas(prova, certificado, fatos, Figuras::Desenha, segue);
    std::vector<Anexo> anexos = {
        {NomeDosFatos, fatos, "application/json", "O que o dossiê diz, para outros programas", "/Data"}};
    if (!certificado.Octetos.isEmpty()) {
        anexos.push_back({NomeDoCertificado, certificado.Octetos, "application/pdf",
                          "O certificado como foi guardado no registro", "/Source"});
    }
    return MontaPDF(paginas, anexos, Titulo(prova), Digitos(prova.EmitidoEm));
}

void FazDossie::Grava(const QByteArray &arquivo, const std::string &caminho)
{
    QSaveFile onde(mesa::Q(caminho));
    if (!onde.open(QIODevice::WriteOnly) || onde.write(arquivo) != arquivo.size() || !onde.commit()) {
        throw Falha(NumeroFalha::ErroDeAcesso, "FazDossie.Grava",
                    "O dossiê não pôde ser gravado em " + caminho + ": " + mesa::S(onde.errorString()) + ".");
    }
}

std::string FazDossie::NomeSugerido(const std::string &codigo, Data dia)
{
    std::string nome = "dossie-";
    for (const char letra : codigo) {
        const bool boa = (letra >= '0' && letra <= '9') || (letra >= 'A' && letra <= 'Z') ||
                         (letra >= 'a' && letra <= 'z') || letra == '-' || letra == '_';
        nome += boa ? letra : '-';
    }
    return nome + "-" + std::to_string(mesa::DiaCivil(dia)) + ".pdf";
}

} // namespace dossie
