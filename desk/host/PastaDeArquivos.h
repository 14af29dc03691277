#pragma once

#include "tela/ILembrancas.h"

#include <filesystem>
#include <string>

namespace mesa {

// The folder in which a person keeps the files of one use ("documentos", "tabelas"), as they last chose one there.
class PastaDeArquivos {
  public:
    // lembrancas: Nothing where nobody is at work, and nothing is remembered.
    PastaDeArquivos(Ref<ILembrancas> lembrancas, const std::string &uso)
        : m_Lembrancas(std::move(lembrancas)),
          m_Chave("arquivos/" + uso + "/pasta")
    {
    }

    // The one remembered while it is there, or else the other.
    std::filesystem::path Pasta(const std::filesystem::path &senao) const;
    void Lembra(const std::filesystem::path &pasta) const;

  private:
    Ref<ILembrancas> m_Lembrancas;
    std::string m_Chave;
};

} // namespace mesa
