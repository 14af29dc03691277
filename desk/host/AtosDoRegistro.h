#pragma once

#include "services/Cabeca.h"
#include "services/Instante.h"
#include "services/Segue.h"
#include "services/SessaoServico.h"

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

// Runs outside of the windows' thread.
using TrabalhoNoRegistro = std::function<ResultadoDoAto(const Segue &)>;

// What can be done with the registry as a whole; what is empty is not offered. It is asked for in the windows' thread,
// but for the copy, which is made as a work is.
struct AtosDoRegistro {
    std::function<TrabalhoNoRegistro()> Confere;
    // Makes a copy in a directory.
    std::function<ResultadoDoAto(const std::string &pasta, const Segue &)> Copia;
    // The end of the history, signed, to be kept elsewhere.
    std::function<CabecaAssinada()> Cabeca;
    // Why the rest is not done from here, of a registry that somebody else looks after; empty when it is.
    std::string SoLa;
    // Takes note of the copy that is put in the registry's place when the desk is closed, which it then is.
    std::function<void(const std::string &copia)> Restaura;
};

// Those that can be done with the registry of a file while it is open. A check that could not be made is a Falha.
AtosDoRegistro FazAtosDoRegistro(const std::string &registro, const Relogio &agora);

// Of the registry of a server: what it does for whoever is signed in. sessao: which has the right, and is one of a
// server (rede::SessaoDeServidor).
AtosDoRegistro AtosNoServidor(std::function<Ref<SessaoServico>()> sessao);

// What the status bar says of a check.
std::string ResumoDaConferencia(const ResultadoDoAto &conferido, const std::string &quando);

} // namespace mesa
