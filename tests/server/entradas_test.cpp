#include "server/EntradasRecusadas.h"

#include <gtest/gtest.h>

#include <string>

using servidor::EntradasRecusadas;

namespace {

class EntradasTeste : public testing::Test {
  protected:
    EntradasRecusadas Todas;
    EntradasRecusadas::Momento Agora{std::chrono::hours(1000)};

    std::int32_t Tenta(const std::string &endereco = "192.0.2.1") { return Todas.Tenta(endereco, Agora); }
};

} // namespace

TEST_F(EntradasTeste, Tenta_OneTooMany_WaitsAndNeverLonger)
{
    for (int n = 0; n < EntradasRecusadas::SemEspera; ++n) {
        EXPECT_EQ(Tenta(), 0) << n;
    }
    for (int n = 0; n < 100; ++n) {
        EXPECT_EQ(Tenta(), 30);
    }
    EXPECT_EQ(Todas.Falta("192.0.2.1", Agora), 30);
    EXPECT_EQ(Todas.Falta("192.0.2.2", Agora), 0);
    EXPECT_EQ(Tenta("192.0.2.2"), 0);
    Agora += std::chrono::seconds(29);
    EXPECT_EQ(Tenta(), 1);
    Agora += std::chrono::seconds(1);
    EXPECT_EQ(Tenta(), 0);
    EXPECT_EQ(Tenta(), 30);
}

TEST_F(EntradasTeste, Tenta_OneMistakeEachMinuteOfADay_NobodyWaits)
{
    for (int n = 0; n < 24 * 60; ++n) {
        EXPECT_EQ(Tenta(), 0);
        Agora += std::chrono::minutes(1);
    }
}

TEST_F(EntradasTeste, Devolve_TryThatWasNoRefusal_CountsForNothing)
{
    for (int n = 0; n < 100; ++n) {
        EXPECT_EQ(Tenta(), 0);
        Todas.Devolve("192.0.2.1");
    }
    Todas.Devolve("192.0.2.9"); // never heard of
}

TEST_F(EntradasTeste, Conhece_WhoAndWhere_OnlyTheyTogether)
{
    Todas.Conhece("192.0.2.1", "ana", Agora);
    EXPECT_TRUE(Todas.EhConhecido("192.0.2.1", "ana"));
    EXPECT_FALSE(Todas.EhConhecido("192.0.2.1", "bia"));
    EXPECT_FALSE(Todas.EhConhecido("192.0.2.2", "ana"));
}

TEST_F(EntradasTeste, Conhece_MoreThanThereAreKept_EarliestGoes)
{
    for (std::size_t n = 0; n <= EntradasRecusadas::MaisConhecidos; ++n) {
        Todas.Conhece("192.0.2.1", std::to_string(n), Agora += std::chrono::seconds(1));
    }
    EXPECT_FALSE(Todas.EhConhecido("192.0.2.1", "0"));
    EXPECT_TRUE(Todas.EhConhecido("192.0.2.1", "1"));
    EXPECT_TRUE(Todas.EhConhecido("192.0.2.1", std::to_string(EntradasRecusadas::MaisConhecidos)));
}

TEST_F(EntradasTeste, Tenta_ManyAddresses_TheOneThatGoesOnIsNotForgotten)
{
    for (int n = 0; n < EntradasRecusadas::SemEspera; ++n) {
        Tenta("192.0.2.7");
    }
    for (std::size_t n = 0; n < EntradasRecusadas::MaisEnderecos + 100; ++n) {
        Agora += std::chrono::microseconds(1);
        EXPECT_EQ(Tenta(std::to_string(n)), 0);
    }
    EXPECT_GT(Todas.Falta("192.0.2.7", Agora), 0);
    EXPECT_EQ(Todas.Falta("0", Agora), 0);
}
