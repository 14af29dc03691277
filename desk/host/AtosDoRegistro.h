#pragma once

#include <functional>
#include <string>
#include <vector>

namespace mesa {

// What came of a work on the registry as a whole.
struct ResultadoDoAto {
    bool Inteiro = false;             // it was not given up on the way
    std::string Frase;                // what was done, and what it does not tell
    std::vector<std::string> Achados; // a sentence each; none when all is well
};

// Told on the way: the part that is done, 0 to 1, and what is being looked at. False gives up.
using SegueAto = std::function<bool(double parte, const std::string &oQue)>;

// What can be done with the registry as a whole. Each runs outside of the windows' thread; one that is empty is not
// offered.
struct AtosDoRegistro {
    std::function<ResultadoDoAto(const SegueAto &)> Confere;
    // Makes a copy in a directory.
    std::function<ResultadoDoAto(const std::string &pasta, const SegueAto &)> Copia;
};

// What the status bar says of a check.
std::string ResumoDaConferencia(const ResultadoDoAto &conferido, const std::string &quando);

} // namespace mesa
