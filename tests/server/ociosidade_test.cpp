#include "server/Sessoes.h"

#include "server/Fim.h"

#include <gtest/gtest.h>

#include <chrono>

using servidor::Fim;
using servidor::Sessoes;
using std::chrono::minutes;

namespace {

class OciosidadeTeste : public testing::Test {
  protected:
    std::string Comeca(std::int32_t numero)
    {
        mesa::Portaria::Entrada entrada;
        entrada.Quem.Numero = numero;
        return Todas.Comeca(entrada);
    }
    // Whether an operation of the session may begin.
    bool Vale(const std::string &chave)
    {
        try {
            Todas.Usa(chave);
            return true;
        } catch (const Fim &fim) {
            EXPECT_EQ(fim.Codigo, grpc::StatusCode::UNAUTHENTICATED);
            return false;
        }
    }

    std::chrono::steady_clock::time_point Agora{};
    Sessoes Todas{[this] { return Agora; }, minutes(30), 8, 4};
};

} // namespace

TEST_F(OciosidadeTeste, Usa_WithinTheIdleTime_BeginsItAnew)
{
    const std::string chave = Comeca(1);
    for (int n = 0; n < 3; ++n) {
        Agora += minutes(29);
        EXPECT_TRUE(Vale(chave));
    }
    Agora += minutes(31);
    EXPECT_FALSE(Vale(chave));
    EXPECT_EQ(Todas.Quantas(), 0U);
}

TEST_F(OciosidadeTeste, Usa_OperationUnderWayForLong_SessionIsNotIdle)
{
    const std::string chave = Comeca(1);
    {
        const auto emUso = Todas.Usa(chave);
        Agora += minutes(120);
        EXPECT_TRUE(Vale(chave));
    }
    Agora += minutes(29);
    EXPECT_TRUE(Vale(chave));
    Agora += minutes(31);
    EXPECT_FALSE(Vale(chave));
}
