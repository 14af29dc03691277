#pragma once

#include "services/ProvaED.h"

#include <QByteArray>

#include <optional>
#include <string>

namespace dossie {

// The certificate of the calibration in force: its bytes, or why they are not there. Both are empty when no calibration
// is in force.
struct Certificado {
    QByteArray Octetos = {};
    std::string Falta = {};
};

// What a dossier tells, as it stands in its file.
struct Fatos {
    Ref<mesa::ProvaED> Prova;
    std::string Sha256DoCertificado; // of the bytes that are attached; empty for none
    std::string FaltaDoCertificado;
};

// Names of what is attached to the file.
inline constexpr const char *NomeDosFatos = "fatos.json";
inline constexpr const char *NomeDoCertificado = "certificado.pdf";

// The facts as JSON for other programs, in the order of the records. The same facts have the same text.
QByteArray TextoDosFatos(const mesa::ProvaED &prova, const Certificado &certificado);
// Nothing when it is no such text: of another version, cut, or with something of another kind where a fact stands.
std::optional<Fatos> LeFatos(const QByteArray &texto);

// Whether the registry would tell the same again when it is asked by the same entry of its history: all but what is
// told of the asking itself, and of what came since.
bool MesmosFatos(const mesa::ProvaED &um, const mesa::ProvaED &outro);

} // namespace dossie
