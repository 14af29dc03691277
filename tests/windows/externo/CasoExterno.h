#pragma once

#include "tests/windows/externo/HospedeiroExterno.h"

#include <gtest/gtest.h>

#include <objbase.h>

namespace nativo {

// A test on a thread of windows, as that of a host is. No object of the host may be left over.
class CasoExterno : public testing::Test {
  protected:
    CasoExterno() { OleInitialize(nullptr); }
    ~CasoExterno() override
    {
        EXPECT_EQ(ObjetoExterno::Vivos(), 0);
        OleUninitialize();
    }
};

// What the work fails with; all empty when it does not.
template <class Trabalho> FalhaExterna FalhaDo(Trabalho &&trabalho)
{
    try {
        trabalho();
    } catch (const FalhaExterna &falha) {
        return falha;
    }
    return {};
}

inline void PrintTo(const FalhaExterna &falha, std::ostream *saida)
{
    *saida << falha.Texto();
}

} // namespace nativo
