#pragma once

#include "services/SessaoServico.h"

#include <QByteArray>

#include <string>
#include <vector>

namespace dossie {

enum class Situacao {
    Concorda,     // unchanged, and the registry has nothing else to tell
    SabeMais,     // unchanged, and the registry has written more of the equipment since
    Discorda,     // unchanged, and not what this registry tells
    NaoConferido, // unchanged, and the registry could not be asked
    Mudado,       // not as it was made
    NaoEDossie
};

// What there is to say of a file that may be a dossier.
struct ResultadoDaConferencia {
    Situacao Como = Situacao::NaoEDossie;
    std::string Frase;
    std::vector<std::string> Detalhes = {}; // a sentence each: which corrections, what differs
};

// Says of a file whether it is a dossier, unchanged, and still agrees with the registry. The file may be anything: what
// is wrong with it is an answer, never a failure. The seal has no key: who makes a new one over a changed file is found
// out by the registry, which is asked for the facts and the certificate again, and by the pages, which are written
// again from the facts; the pictures of the certificate are for the reader, and the original is what is attached.
class ConfereDossie {
  public:
    // sessao: Nothing looks at the file alone.
    explicit ConfereDossie(Ref<mesa::SessaoServico> sessao) : m_Sessao(std::move(sessao)) {}

    ResultadoDaConferencia Confere(const QByteArray &arquivo);
    // A file that cannot be read is an answer as well.
    ResultadoDaConferencia ConfereArquivo(const std::string &caminho);

  private:
    Ref<mesa::SessaoServico> m_Sessao;
};

} // namespace dossie
