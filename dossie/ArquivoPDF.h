#pragma once

#include <QByteArray>

#include <optional>
#include <string>
#include <vector>

namespace dossie {

struct Anexo {
    std::string Nome;
    QByteArray Octetos;
    std::string Tipo;      // "application/pdf"
    std::string Descricao; // in words
    std::string Relacao;   // to the pages: "/Source", "/Data"
};

// The pages with what is attached, byte for byte, and a seal in the first lines: a hash over all other bytes of the
// file. criado: "20261120143210", of the document's properties; the same input has the same bytes. Falha 5 when the
// pages are no PDF.
QByteArray MontaPDF(const QByteArray &paginas, const std::vector<Anexo> &anexos, const std::string &titulo,
                    const std::string &criado);

// What the seal says of bytes that may be anything; nothing of them is interpreted.
enum class Selo { Nenhum, Intacto, Rompido };
Selo SeloDe(const QByteArray &arquivo);

// What is attached under that name, byte for byte; nothing when there is none, or the file is none. Never more than the
// file's own size is read.
std::optional<QByteArray> AnexoDe(const QByteArray &arquivo, const std::string &nome);

} // namespace dossie
