#pragma once

#include "desk/host/Inicio.h"

#include <QStringList>

#include <filesystem>
#include <optional>
#include <string>

namespace mesa {

// What the command line asks of the desk.
struct LinhaDeComando {
    enum class Ato {
        Trabalha, // opens the windows
        Novo,     // makes a new registry, without windows
        Amostra,  // makes a new sample and opens the windows on it
        Confere,  // looks through the registry, without windows
        Copia,    // makes a copy of the registry, without windows
        Restaura, // puts a copy in the place of the registry, without windows
        Ajuda
    };

    Ato OQue = Ato::Trabalha;
    std::filesystem::path Dados;            // data directory
    std::filesystem::path Registro;         // file to work on; empty for the data directory's own
    std::optional<rede::Endereco> Servidor; // at whose registry to work
    RegistroNovo Novo;                      // without its password, which comes from the standard input
    std::string Desde;                      // file of a head to hold the check against; may be empty
    std::string Pasta;                      // where the copy goes
    std::string Arquivo;                    // the copy that is restored
    bool DeOutro = false;                   // it may be of another registry
    std::string Erro;                       // what the line has wrong; empty when nothing

    // argumentos: the program's own name first.
    static LinhaDeComando Le(const QStringList &argumentos);
    static const char *Ajuda();
    // Whether what is asked has no windows; it is asked before there is any toolkit that could read the line.
    static bool SemJanelas(int argc, const char *const *argv);
};

} // namespace mesa
