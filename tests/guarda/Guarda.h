#pragma once

#include <filesystem>
#include <string>

// What a command printed, on both of its outputs, and whether it succeeded.
struct Execucao {
    bool Passou = false;
    std::string Saida;
};

// Runs a command of the shell.
Execucao Executa(const std::string &comando);
// Runs CMake with `argumentos`, words of the shell.
Execucao ExecutaCMake(const std::string &argumentos);

// A folder of its own in the system's temporary folder, which goes away with the object.
class PastaTemporaria {
  public:
    PastaTemporaria();
    ~PastaTemporaria();
    PastaTemporaria(const PastaTemporaria &) = delete;
    PastaTemporaria &operator=(const PastaTemporaria &) = delete;

    // Writes a file by its path inside the folder.
    void Escreve(const std::string &arquivo, const std::string &conteudo) const;

    std::filesystem::path Caminho;
};
