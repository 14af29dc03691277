#pragma once

#include "host/Falha.h"

#include <gtest/gtest.h>

// The fault that a command raises; the test fails when it raises none.
template <class Comando> Falha FalhaLancada(Comando &&comando)
{
    try {
        comando();
    } catch (...) {
        return FalhaCorrente();
    }
    ADD_FAILURE() << "nothing was raised";
    return Falha(0, "", "");
}
