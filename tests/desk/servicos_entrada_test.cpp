#include "tests/desk/RegistroDeTeste.h"
#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

#include <string>

using namespace mesa;

namespace {

class ServicosEntrada : public testing::Test {
  protected:
    ServicosEntrada() { m_Registro.Cadastra("ana"); }

    bool Entra(const std::string &usuario, const std::string &senha)
    {
        return static_cast<bool>(m_Registro.Aberto().Entra(usuario, senha, m_Recusa, m_Espera));
    }

    RegistroDeTeste m_Registro;
    std::string m_Recusa;
    std::int32_t m_Espera = 0;
};

const std::string Incorretos = "Usuário ou senha incorretos.";

TEST_F(ServicosEntrada, Entra_WithThePassword_GivesTheOperator)
{
    const auto sessao = m_Registro.Aberto().Entra(" ANA ", "senha de ana", m_Recusa, m_Espera);
    ASSERT_TRUE(sessao) << m_Recusa;
    EXPECT_EQ(m_Recusa, "");
    EXPECT_EQ(m_Espera, 0);
    const Operador &quem = sessao->Operador();
    EXPECT_EQ(quem.Numero, 1);
    EXPECT_EQ(quem.Usuario, "ana");
    EXPECT_EQ(quem.Nome, "Ana Souza");
    EXPECT_EQ(quem.CodCliente, 1);
    EXPECT_EQ(quem.Cliente, "DETRAN/RS");
    EXPECT_EQ(quem.Setor, "Fiscalização");
    EXPECT_EQ(quem.CodMunic, 0);
    EXPECT_EQ(m_Registro.Sessao("davi")->Operador().CodMunic, 4314902);
}

TEST_F(ServicosEntrada, Entra_WrongPasswordOrName_SaysTheSame)
{
    EXPECT_FALSE(Entra("ana", "Senha de ana"));
    EXPECT_EQ(m_Recusa, Incorretos);
    EXPECT_FALSE(Entra("ninguém", "senha de ana"));
    EXPECT_EQ(m_Recusa, Incorretos);
    EXPECT_FALSE(Entra(std::string(200, 'a'), "senha de ana"));
    EXPECT_EQ(m_Recusa, Incorretos);
    EXPECT_FALSE(Entra("' OR 1 = 1 --", "x"));
    EXPECT_EQ(m_Recusa, Incorretos);
    EXPECT_FALSE(Entra("", "x"));
    EXPECT_EQ(m_Recusa, "Informe o usuário e a senha.");
    EXPECT_FALSE(Entra("ana", ""));
    EXPECT_EQ(m_Recusa, "Informe o usuário e a senha.");
}

TEST_F(ServicosEntrada, Entra_WrongAgainAndAgain_SlowsDown)
{
    EXPECT_FALSE(Entra("ana", "x"));
    EXPECT_EQ(m_Espera, 0);
    EXPECT_FALSE(Entra("ana", "x"));
    EXPECT_EQ(m_Espera, 0);
    EXPECT_FALSE(Entra("ana", "x"));
    EXPECT_EQ(m_Espera, 5);
    EXPECT_EQ(m_Recusa, Incorretos);

    m_Registro.PassaSegundos(4);
    EXPECT_FALSE(Entra("ana", "senha de ana")); // not even the right one is tried
    EXPECT_EQ(m_Espera, 1);
    EXPECT_EQ(m_Recusa, "Foram muitas tentativas com senha incorreta. Aguarde 1 segundo e tente de novo.");
    m_Registro.PassaSegundos(1);
    EXPECT_FALSE(Entra("ana", "x"));
    EXPECT_EQ(m_Espera, 10);
    EXPECT_FALSE(Entra("ana", "x"));
    EXPECT_EQ(m_Recusa, "Foram muitas tentativas com senha incorreta. Aguarde 10 segundos e tente de novo.");
    m_Registro.PassaSegundos(10);
    EXPECT_FALSE(Entra("ana", "x"));
    EXPECT_EQ(m_Espera, 20);
}

TEST_F(ServicosEntrada, Entra_SlowDown_HasAnEnd)
{
    for (int vez = 0; vez < 20; ++vez) {
        Entra("ana", "x");
        m_Registro.PassaSegundos(301);
    }
    EXPECT_FALSE(Entra("ana", "x"));
    EXPECT_EQ(m_Espera, 300);
}

TEST_F(ServicosEntrada, Entra_SlowDown_OutlivesTheProgramAndEndsWithThePassword)
{
    for (int vez = 0; vez < 3; ++vez) {
        Entra("ana", "x");
    }
    m_Registro.Reabre();
    EXPECT_FALSE(Entra("ANA", "senha de ana"));
    EXPECT_EQ(m_Espera, 5);
    m_Registro.PassaSegundos(5);
    EXPECT_TRUE(Entra("ana", "senha de ana"));
    EXPECT_FALSE(Entra("ana", "x"));
    EXPECT_EQ(m_Espera, 0); // counted from the start again
}

TEST_F(ServicosEntrada, Entra_SlowDown_IsOfOneNameOnly)
{
    for (int vez = 0; vez < 3; ++vez) {
        Entra("ninguém", "x");
    }
    EXPECT_EQ(m_Espera, 5); // an unknown name slows down as well
    EXPECT_TRUE(Entra("ana", "senha de ana"));
}

TEST_F(ServicosEntrada, Entra_ClockSetBack_DoesNotLengthenTheWait)
{
    for (int vez = 0; vez < 3; ++vez) {
        Entra("ana", "x");
    }
    m_Registro.PassaSegundos(-86400);
    EXPECT_FALSE(Entra("ana", "senha de ana"));
    EXPECT_EQ(m_Espera, 5);
}

TEST_F(ServicosEntrada, Entra_DeactivatedUser_IsRefused)
{
    m_Registro.Sql("UPDATE USUARIO SET Ativo = 2");
    EXPECT_FALSE(Entra("ana", "senha de ana"));
    EXPECT_EQ(m_Recusa, Incorretos);
}

TEST_F(ServicosEntrada, Password_IsStoredAsAnArgon2idHash)
{
    const std::string gravada = m_Registro.Sql("SELECT Senha FROM USUARIO");
    EXPECT_EQ(gravada.rfind("$argon2id$v=19$m=65536,t=2,p=1$", 0), 0U) << gravada;
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM HISTORICO WHERE Depois LIKE '%argon2%' OR Depois LIKE '%senha%'"),
              "0");
}

TEST_F(ServicosEntrada, Entra_WithThePassword_KeepsTheRowOfTheWrongOnes)
{
    Entra("ana", "x");
    EXPECT_TRUE(Entra("ana", "senha de ana"));
    EXPECT_EQ(m_Registro.Sql("SELECT Chave || Vezes || ' ' || EsperaAte FROM ENTRADA_RECUSADA"), "ana0 0");
}

TEST_F(ServicosEntrada, CadastraUsuario_WithoutANumber_GetsTheOneBehindTheHighest)
{
    m_Registro.Cadastra("eva"); // number 10
    m_Registro.Aberto().CadastraUsuario({0, "novo", "Novo", 1, "DETRAN/RS", "Fiscalização", 0}, "s", {"", "I"});
    std::string recusa;
    const auto novo = m_Registro.Aberto().Entra("novo", "s", recusa, m_Espera);
    ASSERT_TRUE(novo) << recusa;
    EXPECT_EQ(novo->Operador().Numero, 11);
    EXPECT_TRUE(novo->TemPermissao("NAB", "VOR-EQP-CS", "I"));
    EXPECT_FALSE(novo->TemPermissao("NAB", "VOR-EQP-CS", "A"));
    EXPECT_EQ(m_Registro.Sql("SELECT NroEntidade FROM HISTORICO WHERE Entidade = 'USUARIO' ORDER BY Nro DESC"), "11");
}

TEST_F(ServicosEntrada, CadastraUsuario_Again_RaisesAFault)
{
    const Falha falha = FalhaLancada([&] {
        m_Registro.Aberto().CadastraUsuario({9, "Ana", "X", 1, "", "", 0}, "s", {});
    });
    EXPECT_EQ(falha.Numero, 457);
    EXPECT_EQ(falha.Descricao, "Já existe o usuário Ana, ou outro de número 9.");
    EXPECT_EQ(falha.Fonte, "Servicos < Servicos.CadastraUsuario");
}

TEST_F(ServicosEntrada, CadastraUsuario_OfNoClient_RaisesAFault)
{
    EXPECT_EQ(FalhaLancada([&] {
                  m_Registro.Aberto().CadastraUsuario({9, "zé", "Zé", 77, "", "", 0}, "s", {});
              }).Numero,
              51);
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM USUARIO"), "1");
}

TEST_F(ServicosEntrada, CadastraCliente_Again_RaisesAFault)
{
    const Falha falha = FalhaLancada([&] { m_Registro.Aberto().CadastraCliente({1, "NOVO", {}}); });
    EXPECT_EQ(falha.Numero, 457);
    EXPECT_EQ(falha.Descricao, "Já existe o cliente NOVO, ou outro de código 1.");
}

TEST_F(ServicosEntrada, Vazio_UntilTheFirstUser)
{
    EXPECT_FALSE(m_Registro.Aberto().Vazio());
    EXPECT_TRUE(RegistroDeTeste().Aberto().Vazio());
}

} // namespace
