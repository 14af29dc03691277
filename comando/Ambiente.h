#pragma once

#include "comando/ITerminal.h"
#include "services/Instante.h"
#include "services/Segue.h"
#include "services/Senhas.h"

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>

namespace comando {

// What the program ends with.
enum class Codigo {
    Feito = 0,        // done, or found
    Nao = 1,          // asked, and the answer is no
    UsoErrado = 2,    // the command line was not understood
    Recusado = 3,     // by a right, a password, a rule
    NaoAlcancado = 4, // the registry, a file or the server could not be had, or the answer could not be written
    Interno = 5,      // a failure of the program
    Interrompido = 130
};

// Where the program hears and speaks, and what of the machine it is given. The answer alone goes to Saida; sentences
// for the person go to Erros.
struct Ambiente {
    std::istream &Entrada;
    std::ostream &Saida;
    std::ostream &Erros;
    ITerminal *Terminal;                // null: nobody sits at one
    std::filesystem::path Preferencias; // file of the user's settings
    mesa::Relogio Agora;
    std::function<bool()> Interrompido; // somebody wants the program to end
    mesa::CustoDaSenha Custo = {};      // of the passwords that are set

    // For what asks on its way whether to go on.
    mesa::Segue Segue() const
    {
        return [interrompido = Interrompido](double, const std::string &) { return !interrompido(); };
    }
};

} // namespace comando
