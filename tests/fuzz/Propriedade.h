#pragma once

#include "host/Falha.h"

#include <cstdint>
#include <string_view>

// A property that has to hold for every input. A broken one is reported and ends the program, whoever is catching.
void Exige(bool vale, std::string_view propriedade, std::string_view caso = {});

// The number of the fault that the statement raises; 0 when it raises none. Anything else that is thrown escapes.
template <class Comando> std::int32_t NumeroDaFalha(Comando &&comando)
{
    try {
        comando();
        return 0;
    } catch (const Falha &falha) {
        return falha.Numero;
    }
}

// The statement raises the fault of that number; none with 0.
template <class Comando>
void ExigeFalha(std::int32_t numero, std::string_view propriedade, std::string_view caso, Comando &&comando)
{
    Exige(NumeroDaFalha(comando) == numero, propriedade, caso);
}
