#pragma once

#include "host/Falha.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

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

// That a fault is of this number, source and, where it is given, description. A source that begins with "*" is the end
// of the one expected.
testing::AssertionResult FalhaIgual(const Falha &falha, std::int32_t numero, const std::string &fonte,
                                    const std::optional<std::string> &descricao = {});

// That a command raises such a fault.
template <class Comando>
testing::AssertionResult Lanca(std::int32_t numero, const std::string &fonte, Comando &&comando)
{
    return FalhaIgual(FalhaLancada(std::forward<Comando>(comando)), numero, fonte);
}
template <class Comando>
testing::AssertionResult Lanca(std::int32_t numero, const std::string &fonte, const std::string &descricao,
                               Comando &&comando)
{
    return FalhaIgual(FalhaLancada(std::forward<Comando>(comando)), numero, fonte, descricao);
}
