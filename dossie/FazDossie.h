#pragma once

#include "services/ProvaED.h"
#include "services/Segue.h"
#include "services/SessaoServico.h"

#include <QByteArray>

#include <optional>
#include <string>

namespace dossie {

// The dossier of an equipment: a file for the appeal, with what the registry knows of it as of a day, now or as it was
// known, the original certificate, and by what all of it can be proved.
class FazDossie {
  public:
    explicit FazDossie(Ref<mesa::SessaoServico> sessao) : m_Sessao(std::move(sessao)) {}

    // The file's bytes; nothing with the reason in recusa. A certificate that is not there, or is damaged, is told in
    // it. The same answer of the registry has the same bytes. segue: may be empty. Needs the toolkit's application.
    std::optional<QByteArray> Faz(const Ref<mesa::ConsultaProvaED> &pergunta, const mesa::Segue &segue,
                                  std::string &recusa);

    // Of the answer and the certificate that were had already.
    static QByteArray Monta(const mesa::ProvaED &prova, const QByteArray &certificado, const std::string &falta,
                            const mesa::Segue &segue);
    // Puts it there whole, over what was there; Falha with a sentence, and then what was there is as it was.
    static void Grava(const QByteArray &arquivo, const std::string &caminho);
    // "dossie-R-001-20260315.pdf"
    static std::string NomeSugerido(const std::string &codigo, Data dia);

  private:
    Ref<mesa::SessaoServico> m_Sessao;
};

} // namespace dossie
