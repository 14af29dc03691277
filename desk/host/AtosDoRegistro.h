#pragma once

#include "services/Cabeca.h"
#include "services/Instante.h"
#include "services/Segue.h"

#include <functional>
#include <string>
#include <vector>

namespace mesa {

// What came of a work on the registry as a whole.
struct ResultadoDoAto {
    bool Inteiro = false;                 // it was not given up on the way
    std::string Frase;                    // what was done, and what it does not tell
    std::vector<std::string> Achados;     // a sentence each; none when all is well
    std::vector<std::string> Avisos = {}; // what is no fault, and deserves a look
    std::string Relatorio = {};           // what is kept of it; empty for the sentences
};

// What can be done with the registry as a whole; what is empty is not offered. Check and copy run outside of the
// windows' thread.
struct AtosDoRegistro {
    std::function<ResultadoDoAto(const Segue &)> Confere;
    // Makes a copy in a directory.
    std::function<ResultadoDoAto(const std::string &pasta, const Segue &)> Copia;
    // The end of the history, signed, to be kept elsewhere.
    std::function<CabecaAssinada()> Cabeca;
    // Takes note of the copy that is put in the registry's place when the desk is closed, which it then is.
    std::function<void(const std::string &copia)> Restaura;
};

// Those that can be done with the registry of a file while it is open. A check that could not be made is a Falha.
AtosDoRegistro FazAtosDoRegistro(const std::string &registro, const Relogio &agora);

// What the status bar says of a check.
std::string ResumoDaConferencia(const ResultadoDoAto &conferido, const std::string &quando);

} // namespace mesa
