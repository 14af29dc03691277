#pragma once

#include "services/SessaoServico.h"

#include <functional>
#include <string>

namespace mesa {

// What documents are called that the module shows out of a temporary file, whose name tells a person nothing.
class NomesDeDocumentos : public Objeto {
  public:
    // moduloEm, temporariosEm: where the module writes such files, as it writes paths; the latter ends in the
    // separator.
    NomesDeDocumentos(std::function<Ref<SessaoServico>()> sessao, std::string moduloEm, std::string temporariosEm)
        : m_Sessao(std::move(sessao)),
          m_Visto(std::move(moduloEm) + "\\VORTemp.pdf"),
          m_Temporarios(std::move(temporariosEm))
    {
    }
    std::string_view NomeTipo() const override { return "NomesDeDocumentos"; }

    // The module was given this document, which it writes into its one file before it shows it.
    void Recebeu(double nroDocumento) { m_Recebido = nroDocumento; }
    // Empty for a file of the person's, which has a name of its own.
    std::string NomeDe(const std::string &caminho) const;

  private:
    std::function<Ref<SessaoServico>()> m_Sessao;
    std::string m_Visto;
    std::string m_Temporarios;
    double m_Recebido = 0;
};

// A name for a document of these calibrations: that of the one, or what all of them have in common; empty when that is
// nothing.
std::string NomeDoDocumento(const std::vector<AfericaoComDocumento> &afericoes);
// The name as one that every file system takes, with the extension if it has it not yet.
std::string NomeDeArquivo(const std::string &nome, const std::string &extensao);

} // namespace mesa
