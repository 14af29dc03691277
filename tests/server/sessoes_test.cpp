#include "server/Sessoes.h"

#include "server/Fim.h"
#include "tests/services/RegistroDeTeste.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>

namespace {

class SessoesTeste : public testing::Test {
  protected:
    std::chrono::steady_clock::time_point Agora;
    servidor::Sessoes Todas{[this] { return Agora; }, std::chrono::minutes(30), 2, 2};

    static mesa::Portaria::Entrada De(std::int32_t numero, const std::string &prova = "prova")
    {
        mesa::Portaria::Entrada entrada;
        entrada.Quem.Numero = numero;
        entrada.Prova = prova;
        return entrada;
    }
    void PassaMinutos(int n) { Agora += std::chrono::minutes(n); }
    bool Vive(const std::string &chave)
    {
        try {
            Todas.Exige(chave);
            return true;
        } catch (const servidor::Fim &fim) {
            EXPECT_EQ(fim.Codigo, grpc::StatusCode::UNAUTHENTICATED);
            return false;
        }
    }
};

} // namespace

TEST_F(SessoesTeste, Comeca_OneTooMany_OneWithNothingUnderWayEnds)
{
    const std::string primeira = Todas.Comeca(De(1));
    const auto andando = Todas.Usa(primeira);
    PassaMinutos(1);
    const std::string segunda = Todas.Comeca(De(1));
    PassaMinutos(1);
    const std::string terceira = Todas.Comeca(De(1));
    EXPECT_TRUE(Vive(primeira));
    EXPECT_FALSE(Vive(segunda));
    EXPECT_TRUE(Vive(terceira));
}

TEST_F(SessoesTeste, Exige_AskedAgainAndAgain_KeepsNoSessionAlive)
{
    const std::string chave = Todas.Comeca(De(1));
    PassaMinutos(20);
    EXPECT_TRUE(Vive(chave));
    PassaMinutos(20);
    EXPECT_FALSE(Vive(chave));
    EXPECT_FALSE(Vive("curta"));
}

TEST_F(SessoesTeste, Atualiza_AfterChangeAndEnd_TakesOverOrRaises)
{
    const std::string chave = Todas.Comeca(De(1));
    auto longa = Todas.Usa(chave);
    Todas.Usa(chave).TrocaProva("outra");
    EXPECT_EQ(longa.Entrada().Prova, "prova");
    longa.Atualiza();
    EXPECT_EQ(longa.Entrada().Prova, "outra");
    Todas.Termina(chave);
    EXPECT_THROW(longa.Atualiza(), servidor::Fim);
}

TEST_F(SessoesTeste, Termina_SignInThatNoLongerStands_LaterOnesOfTheUserStay)
{
    auto antes = De(1);
    auto depois = De(1);
    depois.Versao = 3;
    const std::string primeira = Todas.Comeca(antes);
    const std::string segunda = Todas.Comeca(depois);
    Todas.Usa(primeira).Termina();
    EXPECT_FALSE(Vive(primeira));
    EXPECT_TRUE(Vive(segunda));
    Todas.Usa(segunda).Termina();
    EXPECT_FALSE(Vive(segunda));
}
