#pragma once

#include "comando/Ambiente.h"

#include <stdexcept>
#include <string>

namespace comando {

// A sub-command cannot go on: what the program ends with, and a sentence for the person.
class Fim : public std::runtime_error {
  public:
    Fim(Codigo qual, const std::string &frase) : std::runtime_error(frase), Qual(qual) {}

    Codigo Qual;
};

inline Fim Interrupcao()
{
    return {Codigo::Interrompido, "Interrompido. Nada ficou pela metade."};
}

} // namespace comando
