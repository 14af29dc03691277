#pragma once

#include "dossie/Fatos.h"

#include <QString>

#include <string>

namespace dossie {

// "Dossiê do equipamento R-001"
std::string Titulo(const mesa::ProvaED &prova);
// "15/03/2026, às 14:30"
std::string MomentoDoFato(const mesa::ProvaED &prova);

// What the pages of facts say, as the toolkit's rich text. desenhado: the pages of the certificate follow.
// sha256DosFatos: of what is attached.
QString TextoDoDossie(const mesa::ProvaED &prova, const Certificado &certificado, bool desenhado,
                      const std::string &sha256DosFatos);

} // namespace dossie
