#pragma once

#include "tests/mortes/Cenario.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace mortes {

// What dies in a round.
struct Tipo {
    std::string Nome;  // on the command line
    std::string Morte; // in the table
    // Causes it while all save, and lets them go on and end; what else was found.
    Achados (*Faz)(Cenario &, std::mt19937_64 &);
    bool DiscoProprio = false; // in a scene of its own, whose engine is on a small disk
    int DeVinte = 0;           // rounds of this kind among twenty
};

const std::vector<Tipo> &Tipos();

// What rounds of one kind came to.
struct Medida {
    int Rodadas = 0;
    std::size_t Respondidas = 0; // answered as saved
    std::size_t SemResposta = 0; // given up without an answer
    std::size_t Perdidas = 0;
    std::size_t Duplas = 0;
    std::size_t Metades = 0;
    std::size_t Outros = 0;                      // refused without a reason, alien, a broken history
    std::chrono::steady_clock::duration Pausa{}; // the longest that a client waited for an answer
    std::chrono::steady_clock::duration Durou{};

    bool Boa() const { return Perdidas + Duplas + Metades + Outros == 0; }
    Medida &operator+=(const Medida &outra);
};

// One round: while all save, somebody dies; they go on; then all that is there is held against all that was answered in
// this scene, in this round and before. What is not as it has to be is said on the standard error.
Medida Roda(const Tipo &tipo, Cenario &cenario, std::mt19937_64 &sorteio);

} // namespace mortes
