#pragma once

#include "services/SessaoServico.h"

#include <QStringList>

#include <string>

namespace servidor {

// What the command line asks of the server.
struct LinhaDeComando {
    enum class Ato {
        Serve,               // until it is told to end
        ConfereConfiguracao, // tells what is wrong with the settings
        Atualiza,            // brings the registry up to date
        Novo,                // makes a new registry
        Amostra,             // makes a sample
        Confere,             // looks the registry through
        Copia,               // makes a copy of the registry
        Restaura,            // puts a copy in the place of the registry
        Versao,
        Ajuda
    };

    Ato OQue = Ato::Serve;
    std::string Configuracao = "/etc/registro-servidor/registro-servidor.toml";
    mesa::ClienteCadastrado Cliente; // of a new registry
    mesa::Operador Administrador;    // of it, by sign-in name and name; the password comes from the standard input
    std::string Desde;               // file of a head to hold the check against; may be empty
    std::string Pasta;               // where the copy goes
    std::string Arquivo;             // the copy that is restored
    bool DeOutro = false;            // it may be of another registry
    std::string Erro;                // what the line has wrong; empty when nothing

    // argumentos: the program's own name first.
    static LinhaDeComando Le(const QStringList &argumentos);
    static const char *Ajuda();
};

} // namespace servidor
