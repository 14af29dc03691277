#pragma once

#include "dossie/Fatos.h"
#include "services/Segue.h"

#include <QByteArray>
#include <QString>

namespace dossie {

// Pages of a certificate that are drawn; those beyond stand in what is attached alone.
inline constexpr int MaisPaginasDoCertificado = 100;

// Somebody who was told how far it is has given it up.
struct Desistencia {};

enum class Figuras { Desenha, Omite };

// The pages of the dossier on A4, as a PDF that is made for archives: the facts, and then the pages of the certificate
// as pictures, one at a time in memory, or without them for whoever asks for the texts alone. fatos: what is attached,
// of which the pages tell the hash. Raises Desistencia when it was given up on the way. Needs the toolkit's
// application.
QByteArray DesenhaPaginas(const mesa::ProvaED &prova, const Certificado &certificado, const QByteArray &fatos,
                          Figuras figuras, const mesa::Segue &segue);

// What stands on the pages, without blanks and the pages' numbers: the same for the same facts wherever lines and pages
// break. Empty when it cannot be read.
QString TextoDasPaginas(const QByteArray &pdf);

} // namespace dossie
