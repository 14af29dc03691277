#pragma once

#include "host/IPlataforma.h"

#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

// A file system of which nothing exists outside the test. Paths use "\" and ignore case; a directory exists from
// CriaDiretorio or the first Poe into it on. Raises the faults that IPlataforma tells.
class ArquivosEmMemoria {
  public:
    void CriaDiretorio(const std::string &caminho);
    // Puts a whole file there, whatever stood in its place.
    void Poe(const std::string &caminho, Bytes bytes);
    // Content of a file; fault 53.
    const Bytes &Conteudo(const std::string &caminho) const;
    bool Existe(const std::string &caminho) const;
    // From now on writing and deleting the file is fault 75.
    void Protege(const std::string &caminho);

    void Apaga(const std::string &caminho);
    // Writes from the start of the file; what it holds behind stays. Fault 76 without the directory.
    void Grava(const std::string &caminho, const Bytes &bytes);
    // Names, without directory, that match a pattern with * and ?; in the order in which the files came.
    std::vector<std::string> Nomes(const std::string &padrao) const;

  private:
    struct Arquivo {
        std::string Diretorio; // folded, without the separator at its end
        std::string Nome;
        Bytes Conteudo;
        bool Protegido = false;
    };

    const Arquivo *Acha(const std::string &caminho) const;
    Arquivo &Exige(const std::string &caminho);

    std::set<std::string> m_Diretorios;
    std::vector<Arquivo> m_Arquivos;
};
