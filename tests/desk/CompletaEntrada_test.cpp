#include "desk/host/CompletaEntrada.h"

#include "tests/services/RegistroDeTeste.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace mesa;

namespace {

class CompletaEntradaTeste : public testing::Test {
  protected:
    // What comes of a sign-in of ana, and what she is shown on the way.
    bool Completa(bool troca = true)
    {
        return CompletaEntrada(
            *registro.Sessao("ana"), [this](const std::string &aviso) { vistos.push_back("avisa: " + aviso); },
            [this, troca] {
                vistos.push_back("troca");
                return troca;
            });
    }

    RegistroDeTeste registro;
    std::vector<std::string> vistos;
};

TEST_F(CompletaEntradaTeste, SignIn_WithNothingOwed_IsGoodForWork)
{
    EXPECT_TRUE(Completa());
    EXPECT_TRUE(vistos.empty());
}

TEST_F(CompletaEntradaTeste, SignIn_WithAPasswordOfSomebodyElse_TakesANewOne)
{
    registro.Cadastra("ana");
    registro.Sql("UPDATE USUARIO SET TrocaSenha = 1 WHERE Usuario = 'ana'");
    EXPECT_TRUE(Completa(true));
    EXPECT_FALSE(Completa(false));
    EXPECT_EQ(vistos, (std::vector<std::string>{"troca", "troca"}));
}

TEST_F(CompletaEntradaTeste, SignIn_WithAClockThatIsBehind_TellsSo)
{
    Inclui(registro.Sessao("ana"), EquipamentoDe("A1"));
    registro.Relogio = DataDe(1, 1, 2020);
    EXPECT_TRUE(Completa());
    ASSERT_EQ(vistos.size(), 1u);
    EXPECT_TRUE(vistos[0].starts_with("avisa: O relógio")) << vistos[0];
}

} // namespace
