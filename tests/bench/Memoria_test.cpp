#include "bench/Memoria.h"

#include "bench/Medida.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

TEST(PicoDeMemoria, run_OneBlock_IsItsSize)
{
    EXPECT_EQ(PicoDeMemoria([] { Usa(std::vector<char>(1000)); }), 1000U);
}

TEST(PicoDeMemoria, run_BlocksOneAfterAnother_IsTheLargest)
{
    EXPECT_EQ(PicoDeMemoria([] {
                  Usa(std::vector<char>(1000));
                  Usa(std::vector<char>(3000));
                  Usa(std::vector<char>(2000));
              }),
              3000U);
}

TEST(PicoDeMemoria, run_BlocksHeldTogether_IsTheirSum)
{
    EXPECT_EQ(PicoDeMemoria([] {
                  const std::vector<char> um(1000);
                  Usa(um);
                  Usa(std::vector<char>(3000));
              }),
              4000U);
}

TEST(PicoDeMemoria, run_NoBlock_IsZero)
{
    EXPECT_EQ(PicoDeMemoria([] {}), 0U);
}

TEST(PicoDeMemoria, run_ReleaseOfEarlierBlock_MakesNoRoom)
{
    auto anterior = std::make_unique<std::vector<char>>(5000);
    EXPECT_EQ(PicoDeMemoria([&anterior] {
                  Usa(std::vector<char>(1000));
                  anterior.reset();
              }),
              1000U);
}

TEST(PicoDeMemoria, run_LargeAlignment_IsKeptAndCounted)
{
    struct alignas(256) Bloco {
        std::byte Conteudo[512];
    };
    EXPECT_EQ(PicoDeMemoria([] {
                  const auto bloco = std::make_unique<Bloco>();
                  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(bloco.get()) % 256, 0U);
              }),
              512U);
}
