#include "dossie/ArquivoPDF.h"

#include "host/Falha.h"
#include "services/Resumo.h"

#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFEFStreamObjectHelper.hh>
#include <qpdf/QPDFEmbeddedFileDocumentHelper.hh>
#include <qpdf/QPDFFileSpecObjectHelper.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>

#include <memory>

namespace dossie {

namespace {

const char *const LinhaDoSelo = "% Dossie do registro de equipamentos, selo: ";
constexpr qsizetype DigitosDoSelo = 64;
constexpr qsizetype OndeHaSelo = 1024; // of the file's first bytes
const char *const Programa = "Registro de Equipamentos";

// Where the digits of the seal begin; -1 where there is none, or more than one.
qsizetype LugarDoSelo(const QByteArray &arquivo)
{
    const QByteArray comeco = QByteArray::fromRawData(arquivo.constData(), std::min(arquivo.size(), OndeHaSelo));
    const QByteArray linha(LinhaDoSelo);
    const qsizetype lugar = comeco.indexOf(linha);
    if (lugar < 0 || lugar + linha.size() + DigitosDoSelo > arquivo.size()) {
        return -1;
    }
    return lugar + linha.size();
}

std::string SeloPara(QByteArray arquivo, qsizetype lugar)
{
    arquivo.replace(lugar, DigitosDoSelo, QByteArray(DigitosDoSelo, '0'));
    return mesa::Resumo(arquivo);
}

std::string DataDoPdf(const std::string &criado)
{
    return "D:" + criado + "Z";
}

} // namespace

QByteArray MontaPDF(const QByteArray &paginas, const std::vector<Anexo> &anexos, const std::string &titulo,
                    const std::string &criado)
try {
    QPDF pdf;
    pdf.setSuppressWarnings(true);
    pdf.processMemoryFile("dossie", paginas.constData(), static_cast<std::size_t>(paginas.size()));
    QPDFEmbeddedFileDocumentHelper anexados(pdf);
    QPDFObjectHandle associados = QPDFObjectHandle::newArray();
    for (const Anexo &anexo : anexos) {
        auto conteudo = QPDFEFStreamObjectHelper::createEFStream(pdf, anexo.Octetos.toStdString());
        conteudo.setSubtype(anexo.Tipo).setCreationDate(DataDoPdf(criado)).setModDate(DataDoPdf(criado));
        auto especificacao = QPDFFileSpecObjectHelper::createFileSpec(pdf, anexo.Nome, conteudo);
        especificacao.setDescription(anexo.Descricao);
        especificacao.getObjectHandle().replaceKey("/AFRelationship", QPDFObjectHandle::newName(anexo.Relacao));
        anexados.replaceEmbeddedFile(anexo.Nome, especificacao);
        associados.appendItem(especificacao.getObjectHandle());
    }
    pdf.getRoot().replaceKey("/AF", associados);
    QPDFObjectHandle propriedades = QPDFObjectHandle::newDictionary();
    propriedades.replaceKey("/Title", QPDFObjectHandle::newUnicodeString(titulo));
    propriedades.replaceKey("/Creator", QPDFObjectHandle::newUnicodeString(Programa));
    propriedades.replaceKey("/Producer", QPDFObjectHandle::newUnicodeString(Programa));
    propriedades.replaceKey("/CreationDate", QPDFObjectHandle::newString(DataDoPdf(criado)));
    pdf.getTrailer().replaceKey("/Info", pdf.makeIndirectObject(propriedades));
    pdf.getTrailer().removeKey("/ID"); // the pages have one by chance

    QPDFWriter escritor(pdf);
    escritor.setOutputMemory();
    escritor.setStreamDataMode(qpdf_s_preserve); // what is attached stands in the file as it is
    escritor.setObjectStreamMode(qpdf_o_disable);
    escritor.setNewlineBeforeEndstream(true);
    escritor.setMinimumPDFVersion("1.7");
    escritor.setDeterministicID(true);
    escritor.setExtraHeaderText(LinhaDoSelo + std::string(DigitosDoSelo, '0'));
    escritor.write();
    const std::unique_ptr<Buffer> feito(escritor.getBuffer());
    QByteArray arquivo(reinterpret_cast<const char *>(feito->getBuffer()), static_cast<qsizetype>(feito->getSize()));
    const qsizetype lugar = LugarDoSelo(arquivo);
    if (lugar < 0) {
        throw Falha(NumeroFalha::ErroInterno);
    }
    arquivo.replace(lugar, DigitosDoSelo, QByteArray::fromStdString(SeloPara(arquivo, lugar)));
    return arquivo;
} catch (const Falha &) {
    throw;
} catch (const std::exception &) { // what the library says is not for a person
    throw Falha(NumeroFalha::ArgumentoInvalido, "Dossie", "As páginas do dossiê não puderam ser montadas.");
}

Selo SeloDe(const QByteArray &arquivo)
{
    const qsizetype lugar = LugarDoSelo(arquivo);
    if (lugar < 0) {
        // The line itself may be what was changed.
        return arquivo.contains("Dossie do registro") || arquivo.contains("de equipamentos, selo") ? Selo::Rompido
                                                                                                   : Selo::Nenhum;
    }
    return arquivo.mid(lugar, DigitosDoSelo) == QByteArray::fromStdString(SeloPara(arquivo, lugar)) ? Selo::Intacto
                                                                                                    : Selo::Rompido;
}

std::optional<QByteArray> AnexoDe(const QByteArray &arquivo, const std::string &nome)
try {
    QPDF pdf;
    pdf.setSuppressWarnings(true);
    pdf.setAttemptRecovery(false);
    pdf.processMemoryFile("dossie", arquivo.constData(), static_cast<std::size_t>(arquivo.size()));
    QPDFEmbeddedFileDocumentHelper anexados(pdf);
    const auto especificacao = anexados.getEmbeddedFile(nome);
    if (!especificacao) {
        return std::nullopt;
    }
    QPDFObjectHandle conteudo = especificacao->getEmbeddedFileStream();
    if (!conteudo.isStream() || conteudo.getDict().hasKey("/Filter")) {
        return std::nullopt;
    }
    const std::shared_ptr<Buffer> octetos = conteudo.getRawStreamData();
    return QByteArray(reinterpret_cast<const char *>(octetos->getBuffer()), static_cast<qsizetype>(octetos->getSize()));
} catch (const std::exception &) {
    return std::nullopt;
}

} // namespace dossie
