#include "services/Esquema.h"
#include "services/Tentativas.h"
#include "tests/services/RegistroDeTeste.h"
#include "tests/support/FalhaLancada.h"

#include <QFile>

#include <gtest/gtest.h>

#include <sodium.h>

#include <array>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

using namespace mesa;

namespace {

class ServicosEntrada : public testing::Test {
  protected:
    ServicosEntrada() { m_Registro.Cadastra("ana"); }

    bool Entra(const std::string &usuario, const std::string &senha, const std::string &estacao = "mesa 1")
    {
        m_Sessao = m_Registro.Aberto().Entra(usuario, senha, estacao, m_Recusa, m_Espera);
        return static_cast<bool>(m_Sessao);
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
    void Erra(const std::string &usuario, int vezes, const std::string &estacao = "mesa 1")
    {
        for (int vez = 0; vez < vezes; ++vez) {
            Entra(usuario, "x", estacao);
        }
    }
    // Who, what and why, of the entries since the last look.
    std::string Anotado()
    {
        const std::string linhas = m_Registro.Sql(
            "SELECT group_concat(COALESCE('' || Operador, '-') || ' ' || Entidade || NroEntidade || '.' || Versao || ' "
            "' || "
            "Acao || COALESCE(' ' || Motivo, '') || COALESCE(' ' || json_extract(Depois, '$.Estacao'), ''), '; ') FROM "
            "(SELECT * FROM HISTORICO WHERE Nro > " +
            m_Visto + " ORDER BY Nro) h");
        m_Visto = m_Registro.Sql("SELECT MAX(Nro) FROM HISTORICO");
        return linhas;
    }
    // Every byte that the registry keeps, wherever it is.
    std::string Gravado()
    {
        std::string tudo;
        if (motor::DeTeste() == motor::Qual::Postgres) {
            for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
                for (const std::string &linha :
                     LinhasSql(m_Registro.Caminho(), "SELECT * FROM " + std::string(tabela.Nome))) {
                    tudo += linha + '\n';
                }
            }
            return tudo;
        }
        for (const char *parte : {"", "-wal", "-shm"}) {
            QFile arquivo(QString::fromStdString(m_Registro.Caminho() + parte));
            if (arquivo.open(QIODevice::ReadOnly)) {
                tudo += arquivo.readAll().toStdString();
            }
        }
        return tudo;
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
    Ref<SessaoServico> m_Sessao;
    std::string m_Recusa;
    std::int32_t m_Espera = 0;
    std::string m_Visto = "0";
};

TEST_F(ServicosEntrada, Entra_WithThePassword_GivesTheOperator)
{
    const auto sessao = m_Registro.Aberto().Entra(" ANA ", "senha de ana", "estação de teste", m_Recusa, m_Espera);
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
    m_Registro.PassaSegundos(5);
    EXPECT_TRUE(Entra("ana", "senha de ana")) << m_Recusa; // it ends by the clock of now
}

// Somebody at another desk guesses: the user at the own desk does not notice.
TEST_F(ServicosEntrada, Entra_SlowDown_AtAnotherDesk_DoesNotKeepTheUserOutHere)
{
    EXPECT_TRUE(Entra("ana", "senha de ana", "mesa 1"));
    Erra("ana", 20, "mesa do outro");
    EXPECT_GT(m_Espera, 0);
    EXPECT_TRUE(Entra("ana", "senha de ana", "mesa 1")) << m_Recusa;
    EsperaRecusa("ana", "x", 0);
    EXPECT_TRUE(Entra("ana", "senha de ana", "mesa 1")) << m_Recusa;
    // And what the user does here wins the other one no try.
    EXPECT_FALSE(Entra("ana", "senha de ana", "mesa do outro"));
    EXPECT_EQ(m_Recusa, Aguarde("5 segundos"));
}

// A desk of one's own choosing for each try does not help: all that are not known are one.
TEST_F(ServicosEntrada, Entra_SlowDown_UnknownStationsCountTogether)
{
    Erra("ana", 1, "a");
    Erra("ana", 1, "b");
    Erra("ana", 1, "");
    EXPECT_EQ(m_Espera, 5);
    for (const std::string estacao : {"a", "b", "c", "", "x\n"}) {
        EXPECT_FALSE(Entra("ana", "senha de ana", estacao)) << estacao;
        EXPECT_EQ(m_Recusa, Aguarde("5 segundos")) << estacao;
    }
    EXPECT_FALSE(Entra("ana", "senha de ana", std::string(65, 'x')));
    EXPECT_EQ(m_Recusa, Aguarde("5 segundos"));
}

// A station is known for the user who has signed in there, and for nobody else.
TEST_F(ServicosEntrada, Entra_SlowDown_AStationIsKnownByUser)
{
    m_Registro.Cadastra("bia");
    EXPECT_TRUE(Entra("ana", "senha de ana", "mesa 1"));
    Erra("bia", 3, "mesa 1");
    EXPECT_FALSE(Entra("bia", "senha de bia", "mesa 2"));
    EXPECT_EQ(m_Recusa, Aguarde("5 segundos"));
    EXPECT_TRUE(Entra("ana", "senha de ana", "mesa 1"));
}

TEST_F(ServicosEntrada, Entra_AtAKnownStation_SlowsDownThereToo)
{
    EXPECT_TRUE(Entra("ana", "senha de ana", "mesa 1"));
    Erra("ana", 3, "mesa 1");
    EXPECT_EQ(m_Espera, 5);
    EXPECT_FALSE(Entra("ana", "senha de ana", "mesa 1"));
    EXPECT_TRUE(Entra("ana", "senha de ana", "mesa nova")) << m_Recusa;
    EXPECT_EQ(m_Registro.Sql("SELECT group_concat(Estacao) FROM ESTACAO"), "mesa 1,mesa nova");
    EXPECT_EQ(m_Registro.Sql("SELECT group_concat('[' || Estacao || '] ' || Vezes) FROM (SELECT * FROM "
                             "ENTRADA_RECUSADA ORDER BY Estacao) e"),
              "[] 0,[mesa 1] 3");
}

// Names that there are and names that there are not cannot be told apart by the waits.
TEST_F(ServicosEntrada, Entra_OfANameThatThereIsNot_WaitsAsOthersDo)
{
    std::string existe;
    std::string naoExiste;
    const auto tenta = [&](const std::string &usuario, std::string &oQue) {
        Entra(usuario, "x");
        oQue += m_Recusa + std::to_string(m_Espera) + "\n";
    };
    for (int vez = 0; vez < 12; ++vez) {
        tenta("ana", existe);
        tenta("ninguém", naoExiste);
        if (vez % 2 == 1) {
            m_Registro.PassaSegundos(7 * vez);
        }
    }
    EXPECT_EQ(existe, naoExiste);
    m_Registro.Reabre();
    EsperaRecusa("ninguém", "x", 0); // it was counted in the memory only
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM ENTRADA_RECUSADA WHERE Numero <> 1"), "0");
}

TEST_F(ServicosEntrada, Entra_OfManyNamesThatThereAreNot_EachIsCountedByItself)
{
    Erra("primeiro", 3);
    m_Registro.PassaSegundos(1);
    for (int vez = 0; vez < 50; ++vez) {
        EsperaRecusa("outro " + std::to_string(vez), "x", 0);
    }
    EsperaRecusa("PRIMEIRO ", "x", 4, Aguarde("4 segundos"));
}

// Whoever tries name after name does not fill the memory either.
TEST(ServicosTentativas, OfNamesThatThereAreNot_TheOldestIsForgottenWhenThereAreTooMany)
{
    const auto agora = [](int segundo) { return Instante(Data{DataDe(20, 11, 2026).Valor + segundo / 86400.0}); };
    TentativasEmMemoria tentativas;
    const auto conta = [&](const std::string &nome, int segundo) {
        tentativas.De(nome, [&](Tentativas &contadas) { contadas.Conta(agora(segundo)); });
    };
    const auto vezes = [&](const std::string &nome) {
        return tentativas.De(nome, [](const Tentativas &contadas) { return contadas.Vezes; });
    };
    for (int vez = 0; vez < 3; ++vez) {
        conta("primeiro", 0);
    }
    for (int n = 1; n < 10000; ++n) {
        conta("outro " + std::to_string(n), n);
    }
    EXPECT_EQ(vezes("primeiro"), 3);
    conta("mais um", 10000);
    EXPECT_EQ(vezes("outro 9999"), 1);
    EXPECT_EQ(vezes("mais um"), 1);
    EXPECT_EQ(vezes("outro 1"), 0); // the oldest but for the one that has to wait longer
}

TEST_F(ServicosEntrada, Entra_EveryTry_StandsInTheHistory)
{
    Anotado();
    Entra("ana", "senha de ana", "mesa 1");
    EXPECT_EQ(Anotado(), "1 SESSAO1.0 entra mesa 1; 1 ESTACAO1.1 inclui mesa 1");
    Entra("ana", "senha de ana", "mesa 1");
    EXPECT_EQ(Anotado(), "1 SESSAO1.0 entra mesa 1");
    Entra("ana", "x", "mesa 2");
    EXPECT_EQ(Anotado(), "- SESSAO1.0 recusa senha incorreta mesa 2");
    Entra("ninguém", "x", "mesa 3");
    EXPECT_EQ(Anotado(), "- SESSAO0.0 recusa usuário inexistente mesa 3");
    m_Registro.Sql("UPDATE USUARIO SET Ativo = 2");
    Entra("ana", "senha de ana", "mesa 4");
    EXPECT_EQ(Anotado(), "- SESSAO1.0 recusa usuário desativado mesa 4");
    Entra("ana", "x", "mesa 4");
    Anotado();
    Entra("ana", "x", "mesa 4");
    EXPECT_EQ(Anotado(), "- SESSAO1.0 recusa durante a espera mesa 4");
    Entra("", "x");
    Entra("ana", "");
    EXPECT_EQ(Anotado(), ""); // nothing was tried
}

// Whoever types the password into the field of the name does not leave it to be read.
TEST_F(ServicosEntrada, Entra_OfANameThatThereIsNot_LeavesNothingOfItAnywhere)
{
    for (const std::string &digitado :
         {std::string("Girassol#Torto77"), std::string("Ação e Reação 1918"), "comprido " + std::string(90, 'q')}) {
        for (int vez = 0; vez < 5; ++vez) {
            EXPECT_FALSE(Entra(digitado, "outra coisa digitada"));
        }
    }
    const auto nadaDisso = [&] {
        const std::string tudo = Gravado();
        EXPECT_NE(tudo.find("usuário inexistente"), std::string::npos); // what is looked at is what is written
        for (const std::string parte : // none that the digits of a hash may have in them
             {"irassol", "IRASSOL", "orto77", "ORTO77", "Reação", "REAÇÃO", " 1918", "comprido", "COMPRIDO", "qqqqqqqq",
              "QQQQQQQQ", "outra coisa", "senha de ana"}) {
            EXPECT_EQ(tudo.find(parte), std::string::npos) << parte;
        }
    };
    nadaDisso();
    m_Registro.Reabre();
    m_Registro.Sql("VACUUM");
    nadaDisso();
}

TEST_F(ServicosEntrada, Entra_OfAComposedName_IsTheSameHoweverItIsTyped)
{
    m_Registro.Cadastra("inês");
    EXPECT_TRUE(Entra("ine\u0302s", "senha de inês")) << m_Recusa;
    EXPECT_TRUE(Entra("INÊS", "senha de ine\u0302s")) << m_Recusa;
}

TEST_F(ServicosEntrada, Entra_RefusedCounts_CarryASumOverTheirRow)
{
    EXPECT_TRUE(Entra("ana", "senha de ana", "mesa 1"));
    Erra("ana", 3, "mesa 1");
    const auto confere = [&] {
        for (const std::string &linha :
             LinhasSql(m_Registro.Caminho(), "SELECT Soma || ' ' || Numero || '\n' || Estacao || '\n' || Vezes "
                                             "|| '\n' || EsperaAte FROM ENTRADA_RECUSADA")) {
            std::array<unsigned char, crypto_hash_sha256_BYTES> soma{};
            crypto_hash_sha256(soma.data(), reinterpret_cast<const unsigned char *>(linha.data()) + 65,
                               linha.size() - 65);
            std::string hexadecimal;
            for (const unsigned char octeto : soma) {
                std::array<char, 3> digitos{};
                std::snprintf(digitos.data(), digitos.size(), "%02x", octeto);
                hexadecimal += digitos.data();
            }
            EXPECT_EQ(linha.substr(0, 64), hexadecimal) << linha;
        }
    };
    confere();
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM ENTRADA_RECUSADA WHERE Vezes = 3"), "1");
    m_Registro.PassaSegundos(5);
    EXPECT_TRUE(Entra("ana", "senha de ana", "mesa 1"));
    confere();
}

TEST_F(ServicosEntrada, Entra_WhenTheCostHasRisen_KeepsThePasswordAtTheNewCost)
{
    const auto maisCaro = [&](const std::string &senha) {
        const auto servicos = Servicos::Abre(
            m_Registro.Caminho(), [this] { return m_Registro.Relogio; }, CustoDaSenha{2, 16384});
        return static_cast<bool>(servicos->Entra("ana", senha, "mesa 1", m_Recusa, m_Espera));
    };
    const auto guardada = [&] { return m_Registro.Sql("SELECT substr(Senha, 1, 28) || Versao FROM USUARIO"); };
    EXPECT_FALSE(maisCaro("errada"));
    EXPECT_EQ(guardada(), "$argon2id$v=19$m=8,t=1,p=1$" + m_Registro.Sql("SELECT substr(Senha, 28, 1) FROM USUARIO") +
                              "1"); // not for a wrong one
    Anotado();
    EXPECT_TRUE(maisCaro("senha de ana"));
    EXPECT_EQ(guardada(), "$argon2id$v=19$m=16,t=2,p=1$2");
    EXPECT_EQ(Anotado(), "1 SESSAO1.0 entra mesa 1; 1 ESTACAO1.1 inclui mesa 1; 1 USUARIO1.2 altera a mesma senha, "
                         "guardada de modo mais caro de adivinhar");
    EXPECT_TRUE(maisCaro("senha de ana"));
    EXPECT_EQ(Anotado(), "1 SESSAO1.0 entra mesa 1"); // once
    EXPECT_FALSE(maisCaro("errada"));
}

TEST_F(ServicosEntrada, Entra_WithAClockBehindTheHistory_TellsItOnce)
{
    EXPECT_TRUE(Entra("ana", "senha de ana"));
    EXPECT_EQ(m_Sessao->AvisoDeRelogio(), "");
    m_Registro.PassaSegundos(-3600);
    EXPECT_TRUE(Entra("ana", "senha de ana"));
    EXPECT_EQ(m_Sessao->AvisoDeRelogio(),
              "O relógio desta estação marca 20/11/2026 às 09:00:00, mas o registro já tem anotações de 20/11/2026 às "
              "10:00:00. Confira a data e a hora da estação: o que for gravado até lá fica no histórico com a hora "
              "errada, e a diferença ficou anotada nele.");
    EXPECT_EQ(m_Registro.Sql("SELECT group_concat(Acao || Depois) FROM HISTORICO WHERE Entidade = 'RELOGIO'"),
              "volta{\"Agora\":20261120090000,\"Ultimo\":20261120100000}");
    EXPECT_TRUE(Entra("ana", "senha de ana"));
    EXPECT_EQ(m_Sessao->AvisoDeRelogio(), "");
}

// A wrong password before the right one notes it in the history, where nobody reads it.
TEST_F(ServicosEntrada, Entra_WithAClockBehindTheHistory_TellsItAfterARefusalToo)
{
    EXPECT_TRUE(Entra("ana", "senha de ana"));
    m_Registro.PassaSegundos(-3600);
    Erra("ana", 1);
    m_Registro.PassaSegundos(1);
    EXPECT_TRUE(Entra("ana", "senha de ana"));
    EXPECT_NE(m_Sessao->AvisoDeRelogio().find("anotações de 20/11/2026 às 10:00:00"), std::string::npos)
        << m_Sessao->AvisoDeRelogio();
    m_Registro.PassaSegundos(7200);
    EXPECT_TRUE(Entra("ana", "senha de ana"));
    EXPECT_EQ(m_Sessao->AvisoDeRelogio(), "");
}

TEST_F(ServicosEntrada, Password_IsStoredAsAnArgon2idHash)
{
    const auto deFabrica = Servicos::Abre(m_Registro.Caminho(), [this] { return m_Registro.Relogio; });
    deFabrica->CadastraUsuario({2, "novo", "Novo", 1, "", "", 0}, "s", {});
    const std::string gravada = m_Registro.Sql("SELECT Senha FROM USUARIO WHERE Numero = 2");
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
    const auto novo = m_Registro.Aberto().Entra("novo", "s", "estação de teste", recusa, m_Espera);
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
