#pragma once

#include "services/Resumo.h"

#include <QByteArray>
#include <QString>

#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFEmbeddedFileDocumentHelper.hh>
#include <qpdf/QPDFFileSpecObjectHelper.hh>

#include <map>
#include <string>

// What is attached to a PDF, by its name, as any reader of the format has it.
inline std::map<std::string, QByteArray> AnexosDoPdf(const QByteArray &pdf)
{
    QPDF arquivo;
    arquivo.processMemoryFile("pdf", pdf.constData(), static_cast<std::size_t>(pdf.size()));
    std::map<std::string, QByteArray> anexos;
    for (const auto &[nome, especificacao] : QPDFEmbeddedFileDocumentHelper(arquivo).getEmbeddedFiles()) {
        const auto octetos = especificacao->getEmbeddedFileStream().getStreamData();
        anexos[especificacao->getFilename()] = QByteArray(reinterpret_cast<const char *>(octetos->getBuffer()),
                                                          static_cast<qsizetype>(octetos->getSize()));
    }
    return anexos;
}

// A changed file with a seal over the change, as somebody makes it who knows how.
inline QByteArray Reselado(QByteArray arquivo)
{
    const QByteArray linha = "selo: ";
    const qsizetype lugar = arquivo.indexOf(linha) + linha.size();
    arquivo.replace(lugar, 64, QByteArray(64, '0'));
    return arquivo.replace(lugar, 64, QByteArray::fromStdString(mesa::Resumo(arquivo)));
}
