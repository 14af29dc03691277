#include "tests/desk/RegistroDeTeste.h"
#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using namespace mesa;

namespace {

class ServicosEntrada : public testing::Test {
  protected:
    ServicosEntrada() { m_Registro.Cadastra("ana"); }

    bool Entra(const std::string &usuario, const std::string &senha)
    {
        return static_cast<bool>(m_Registro.Aberto().Entra(usuario, senha, m_Recusa, m_Espera));
    }
    // Whoever is refused is told this, and has to wait so many seconds before another try.
    void EsperaRecusa(const std::string &usuario, const std::string &senha, std::int32_t espera,
                      const std::string &recusa = "Usuário ou senha incorretos.")
    {
        EXPECT_FALSE(Entra(usuario, senha)) << usuario;
        EXPECT_EQ(m_Espera, espera) << usuario;
        EXPECT_EQ(m_Recusa, recusa) << usuario;
    }
    // Without a word: a wrong password, again and again.
    void Erra(const std::string &usuario, int vezes)
    {
        for (int vez = 0; vez < vezes; ++vez) {
            Entra(usuario, "x");
        }
    }
    std::function<void()> Cadastra(const Operador &quem)
    {
        return [=, this] { m_Registro.Aberto().CadastraUsuario(quem, "s", std::vector<std::string>()); };
    }
    static std::string Aguarde(const std::string &tempo)
    {
        return "Foram muitas tentativas com senha incorreta. Aguarde " + tempo + " e tente de novo.";
    }

    RegistroDeTeste m_Registro;
    std::string m_Recusa;
    std::int32_t m_Espera = 0;
};

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
    EXPECT_EQ(quem.Cliente, "Autoridade Estadual de Trânsito");
    EXPECT_EQ(quem.Setor, "Fiscalização");
    EXPECT_EQ(quem.CodMunic, 0);
    EXPECT_EQ(m_Registro.Sessao("davi")->Operador().CodMunic, 4314902);
}

TEST_F(ServicosEntrada, Entra_WrongPasswordOrName_SaysTheSame)
{
    EsperaRecusa("ana", "Senha de ana", 0);
    EsperaRecusa("ninguém", "senha de ana", 0);
    EsperaRecusa(std::string(200, 'a'), "senha de ana", 0);
    EsperaRecusa("' OR 1 = 1 --", "x", 0);
    EsperaRecusa("", "x", 0, "Informe o usuário e a senha.");
    EsperaRecusa("ana", "", 0, "Informe o usuário e a senha.");
    m_Registro.Sql("UPDATE USUARIO SET Ativo = 2");
    EsperaRecusa("ana", "senha de ana", 0);
}

TEST_F(ServicosEntrada, Entra_WrongAgainAndAgain_SlowsDown)
{
    EsperaRecusa("ana", "x", 0);
    EsperaRecusa("ana", "x", 0);
    EsperaRecusa("ana", "x", 5);
    m_Registro.PassaSegundos(4);
    EsperaRecusa("ana", "senha de ana", 1, Aguarde("1 segundo")); // not even the right one is tried
    m_Registro.PassaSegundos(1);
    EsperaRecusa("ana", "x", 10);
    EsperaRecusa("ana", "x", 10, Aguarde("10 segundos"));
    m_Registro.PassaSegundos(10);
    EsperaRecusa("ana", "x", 20);
}

TEST_F(ServicosEntrada, Entra_SlowDown_HasAnEnd)
{
    for (int vez = 0; vez < 20; ++vez) {
        Erra("ana", 1);
        m_Registro.PassaSegundos(301);
    }
    EsperaRecusa("ana", "x", 300);
}

TEST_F(ServicosEntrada, Entra_SlowDown_OutlivesTheProgramAndEndsWithThePassword)
{
    Erra("ana", 3);
    m_Registro.Reabre();
    EsperaRecusa("ANA", "senha de ana", 5, Aguarde("5 segundos"));
    m_Registro.PassaSegundos(5);
    EXPECT_TRUE(Entra("ana", "senha de ana"));
    EsperaRecusa("ana", "x", 0); // counted from the start again
}

TEST_F(ServicosEntrada, Entra_SlowDown_IsOfOneNameOnly)
{
    Erra("ninguém", 3);
    EXPECT_EQ(m_Espera, 5); // an unknown name slows down as well
    EXPECT_TRUE(Entra("ana", "senha de ana"));
}

TEST_F(ServicosEntrada, Entra_ClockSetBack_DoesNotLengthenTheWait)
{
    Erra("ana", 3);
    m_Registro.PassaSegundos(-86400);
    EsperaRecusa("ana", "senha de ana", 5, Aguarde("5 segundos"));
}

TEST_F(ServicosEntrada, Password_IsStoredAsAnArgon2idHash)
{
    const std::string gravada = m_Registro.Sql("SELECT Senha FROM USUARIO");
    EXPECT_EQ(gravada.rfind("$argon2id$v=19$m=65536,t=2,p=1$", 0), 0U) << gravada;
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM HISTORICO WHERE Depois LIKE '%argon2%' OR Depois LIKE '%senha de%'"),
              "0");
}

TEST_F(ServicosEntrada, Entra_WithThePassword_KeepsTheRowOfTheWrongOnes)
{
    Entra("ana", "x");
    EXPECT_TRUE(Entra("ana", "senha de ana"));
    EXPECT_EQ(m_Registro.Sql("SELECT Numero || ' ' || Vezes || ' ' || EsperaAte FROM ENTRADA_RECUSADA"), "1 0 0");
}

TEST_F(ServicosEntrada, CadastraUsuario_WithoutANumber_GetsTheOneBehindTheHighest)
{
    m_Registro.Cadastra("eva"); // number 10
    m_Registro.Aberto().CadastraUsuario({0, "novo", "Novo", 1, "Autoridade Estadual de Trânsito", "Fiscalização", 0},
                                        "s", {"", "I"});
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
    EXPECT_TRUE(Lanca(457, "Servicos < Servicos.CadastraUsuario", "Já existe o usuário Ana, ou outro de número 9.",
                      Cadastra({9, "Ana", "X", 1, "", "", 0})));
}

TEST_F(ServicosEntrada, CadastraUsuario_OfNoClient_RaisesAFault)
{
    EXPECT_TRUE(Lanca(51, "Servicos < Servicos.CadastraUsuario", Cadastra({9, "zé", "Zé", 77, "", "", 0})));
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM USUARIO"), "1");
}

TEST_F(ServicosEntrada, CadastraCliente_Again_RaisesAFault)
{
    EXPECT_TRUE(
        Lanca(457, "Servicos < Servicos.CadastraCliente", "Já existe o cliente NOVO, ou outro de código 1.", [&] {
            m_Registro.Aberto().CadastraCliente({1, "NOVO", std::vector<std::string>(), "RS"});
        }));
}

TEST_F(ServicosEntrada, Vazio_UntilTheFirstUser)
{
    EXPECT_FALSE(m_Registro.Aberto().Vazio());
    EXPECT_TRUE(RegistroDeTeste().Aberto().Vazio());
}

} // namespace
