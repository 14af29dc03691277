#include "tests/server/ServidorDeTeste.h"

#include "rede/Mensagens.h"
#include "server/Atendente.h"
#include "services/DialetoPostgres.h"
#include "services/LigacaoPostgres.h"
#include "services/Resumo.h"
#include "services/TextoQt.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

// What the networked engine alone can do to a server: connections that are lost, commits that are not confirmed.

using grpc::StatusCode;
using namespace registro::v1;

namespace {

registro::v1::EquiptoED Novo(const std::string &codigo)
{
    registro::v1::EquiptoED equipto;
    rede::ParaMensagem(*EquipamentoDe(codigo), equipto);
    return equipto;
}

class ServidorPostgres : public testing::Test {
  protected:
    // The connection that puts a row into the table is ended, so many times: at once, or as it commits.
    void MorreAoIncluir(const std::string &tabela, int vezes, bool aoConfirmar = false)
    {
        const std::string quando =
            aoConfirmar ? "CREATE CONSTRAINT TRIGGER morre AFTER INSERT ON " + tabela + " DEFERRABLE INITIALLY DEFERRED"
                        : "CREATE TRIGGER morre BEFORE INSERT ON " + tabela;
        motor::Linhas(Um.Registro.Caminho(),
                      "CREATE SEQUENCE mortes; CREATE FUNCTION morre() RETURNS trigger LANGUAGE plpgsql SECURITY "
                      "DEFINER AS $$BEGIN IF nextval('mortes') <= " +
                          std::to_string(vezes) +
                          " THEN PERFORM pg_terminate_backend(pg_backend_pid()); PERFORM pg_sleep(60); END IF; "
                          "RETURN NEW; END$$; " +
                          quando + " FOR EACH ROW EXECUTE FUNCTION morre()");
    }
    std::string Mortes() { return motor::Linhas(Um.Registro.Caminho(), "SELECT last_value FROM mortes").front(); }

    ServidorDeTeste Um;
};

// A server on an engine of its own, whose commits can be made to wait for a standby that is not there.
class ServidorEReservaPostgres : public testing::Test {
  protected:
    ServidorEReservaPostgres()
    {
        motor::Linhas(Proprio.Texto("postgres"), "CREATE ROLE trabalho LOGIN");
        motor::Linhas(Proprio.Texto("postgres"), "CREATE DATABASE registro TEMPLATE template0 ENCODING 'UTF8'");
        const auto servicos = mesa::Servicos::Cria(
            Proprio.Texto("registro") + "?papel_de_trabalho=trabalho", mesa::TipoDeRegistro::Registro,
            [] { return mesa::Instante(DataDe(20, 11, 2026, 9, 0, 0)); }, CustoDeTeste);
        const std::string cliente = "Autoridade Estadual de Trânsito";
        servicos->CadastraCliente({1, cliente, {"Fiscalização"}, "RS"});
        servicos->CadastraUsuario({1, "ana", "Ana Souza", 1, cliente, "Fiscalização", 0}, "senha de ana",
                                  {"", "I", "A", "E"});
        Um.Como.Registro = Proprio.Texto("registro", "trabalho");
        Um.Como.Conexoes = 1;
    }

    std::string Sql(const std::string &comando)
    {
        const auto linhas = motor::Linhas(Proprio.Texto("registro"), comando);
        return linhas.empty() ? "" : linhas.front();
    }
    static void EsperaAte(const std::string &oQue, const std::function<bool()> &certo)
    {
        const auto ate = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!certo()) {
            if (std::chrono::steady_clock::now() > ate) {
                throw std::runtime_error("in vain: " + oQue);
            }
        }
    }
    // Process of the server's commit that waits; empty while there is none.
    std::string Esperando(const std::string &papel = "trabalho")
    {
        return Sql("SELECT pid FROM pg_stat_activity WHERE wait_event = 'SyncRep' AND usename = '" + papel + "'");
    }
    // Commits wait for a standby that is not there; or no longer.
    void ExigeReserva(const std::string &nome)
    {
        Sql("ALTER SYSTEM SET synchronous_standby_names = '" + nome + "'");
        Sql("SELECT pg_reload_conf()");
        if (nome.empty()) {
            return;
        }
        // It is in force when a commit waits.
        for (bool espera = false; !espera;) {
            auto prova = std::async(std::launch::async, [&] { Sql("COMMENT ON ROLE trabalho IS 'prova'"); });
            EsperaAte("a commit of its own", [&] {
                espera = !Esperando("postgres").empty();
                return espera || prova.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
            });
            if (espera) {
                Sql("SELECT pg_cancel_backend(" + Esperando("postgres") + ")");
            }
        }
    }
    std::string Entra()
    {
        const Feita feita = Um.TentaEntrar("ana", "senha de ana");
        EXPECT_TRUE(feita.Fim.ok()) << feita.Frase();
        return feita.Como<Sessao>().chave();
    }

    motor::Aglomerado Proprio;
    ServidorDeTeste Um;
};

} // namespace

TEST_F(ServidorPostgres, Connection_LostAsARowGoesIn_OperationIsDoneOnceOverAnother)
{
    // The services try again by themselves; then the server over a connection of its own.
    for (const int vezes : {1, 6}) {
        SCOPED_TRACE(vezes);
        ServidorDeTeste um(Um.DoRegistro);
        MorreAoIncluir("EQUIPAMENTO", vezes);
        um.Comeca();
        const Feita feita = um.Grava("EquiptoRN/inclui", Novo("R-00" + std::to_string(vezes)), um.Entra("ana"));
        EXPECT_TRUE(feita.Fim.ok()) << feita.Frase();
        EXPECT_EQ(Mortes(), std::to_string(vezes + 1));
        motor::Linhas(Um.Registro.Caminho(), "DROP FUNCTION morre() CASCADE; DROP SEQUENCE mortes");
    }
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "2");
}

TEST_F(ServidorPostgres, Connection_LostAgainAndAgain_UnavailableAndTheSameNumberDoesItLater)
{
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const std::string numero = ServidorDeTeste::Numero();
    MorreAoIncluir("EQUIPAMENTO", 12);
    const Feita primeira = Um.Chama("EquiptoRN/inclui", Novo("R-001"), ana, {{"operacao", numero}});
    EXPECT_EQ(primeira.Fim.error_code(), StatusCode::UNAVAILABLE) << primeira.Frase();
    EXPECT_NE(primeira.Frase().find("A conexão com o banco de dados caiu"), std::string::npos) << primeira.Frase();
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "0");
    const Feita segunda = Um.Chama("EquiptoRN/inclui", Novo("R-001"), ana, {{"operacao", numero}});
    EXPECT_TRUE(segunda.Fim.ok()) << segunda.Frase();
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "1");
}

TEST_F(ServidorPostgres, Connection_LostInTheCommit_ServerFindsOutByTheNumber)
{
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    MorreAoIncluir("DOCUMENTO", 1, true);
    const Bytes bytes = Pdf("um");
    PedacoDeDocumento pedaco;
    pedaco.set_octetos(std::string(bytes.begin(), bytes.end()));
    pedaco.set_tamanho(static_cast<std::int64_t>(bytes.size()));
    pedaco.set_sha256(mesa::Resumo(QByteArray::fromStdString(pedaco.octetos())));
    const Feita feita = Um.Grava("Documentos/Guarda", pedaco, ana);
    EXPECT_TRUE(feita.Fim.ok()) << feita.Frase();
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM DOCUMENTO"), "1");
    EXPECT_EQ(Mortes(), "2");
}

TEST_F(ServidorPostgres, Connection_LostInTheCommitTwice_UnavailableAndTheSameNumberDoesItOnce)
{
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const std::string numero = ServidorDeTeste::Numero();
    MorreAoIncluir("EQUIPAMENTO", 2, true);
    const Feita primeira = Um.Chama("EquiptoRN/inclui", Novo("R-001"), ana, {{"operacao", numero}});
    EXPECT_EQ(primeira.Fim.error_code(), StatusCode::UNAVAILABLE);
    EXPECT_EQ(primeira.Frase(),
              "Não foi possível saber se a operação foi gravada. Repita-a: ela não será feita duas vezes.");
    const Feita segunda = Um.Chama("EquiptoRN/inclui", Novo("R-001"), ana, {{"operacao", numero}});
    EXPECT_TRUE(segunda.Fim.ok()) << segunda.Frase();
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "1");
}

TEST_F(ServidorPostgres, Replica_ConnectionLostBetweenTwoRows_EachRowOnce)
{
    const auto deAna = Um.Registro.Sessao("ana");
    for (const char *codigo : {"R-001", "R-002", "R-003"}) {
        Inclui(deAna, EquipamentoDe(codigo));
    }
    servidor::Trabalhadores trabalhadores(1, 4, [&] {
        return ComoTipo<mesa::ServicosSql>(mesa::Servicos::Abre(
            Um.Como.Registro, [] { return mesa::Instante(DataDe(20, 11, 2026, 10, 0, 0)); }, CustoDeTeste));
    });
    servidor::Sessoes sessoes(std::chrono::steady_clock::now, std::chrono::minutes(30), 8, 4);
    servidor::EntradasRecusadas recusadas;
    servidor::Diario diario("/dev/null");
    servidor::Figuras figuras("", [] { return servidor::Retrato(); });
    servidor::Atendente atendente(
        Um.Como, [] { return mesa::Instante(DataDe(20, 11, 2026, 10, 0, 0)); }, trabalhadores, sessoes, recusadas,
        diario, figuras);
    PedidoDeEntrada pedido;
    pedido.set_usuario("ana");
    pedido.set_senha("senha de ana");
    pedido.set_contrato(rede::Contrato);
    Sessao sessao;
    ASSERT_TRUE(atendente.Entra({}, pedido, sessao).ok());

    servidor::Chamada chamada;
    chamada.Sessao = sessao.chave();
    std::atomic<int> cortes = 0;
    const auto este = std::this_thread::get_id();
    chamada.Cancelada = [&] { // asked by the worker at each row
        if (std::this_thread::get_id() != este && cortes++ == 0) {
            motor::Linhas(Um.Registro.Caminho(),
                          "SELECT pg_terminate_backend(pid, 60000) FROM pg_stat_activity "
                          "WHERE datname = current_database() AND usename = 'trabalho_de_teste'");
        }
        return false;
    };
    std::vector<std::string> codigos;
    std::int64_t quantas = 0;
    const grpc::Status fim = atendente.LeReplica(chamada, {}, [&](const PedacoDeReplica &pedaco) {
        quantas += pedaco.quantas();
        for (const auto &linha : pedaco.linhas()) {
            codigos.push_back(linha.codigo());
        }
        return true;
    });
    EXPECT_TRUE(fim.ok()) << fim.error_message();
    EXPECT_GT(cortes, 0);
    EXPECT_EQ(quantas, 3);
    EXPECT_EQ(codigos, (std::vector<std::string>{"R-001", "R-002", "R-003"}));
}

TEST_F(ServidorPostgres, Operation_LongerThanItMayTake_EndsInTimeAndNothingIsDone)
{
    Um.Como.PrazoDaGravacao = std::chrono::seconds(4);
    Um.Como.PrazoDaOperacao = std::chrono::seconds(5);
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    motor::Linhas(Um.Registro.Caminho(),
                  "CREATE FUNCTION dorme() RETURNS trigger LANGUAGE plpgsql AS "
                  "$$BEGIN PERFORM pg_sleep(600); RETURN NEW; END$$; CREATE TRIGGER dorme BEFORE INSERT ON EQUIPAMENTO "
                  "FOR EACH ROW EXECUTE FUNCTION dorme()");
    const Feita feita = Um.Grava("EquiptoRN/inclui", Novo("R-001"), ana);
    EXPECT_EQ(feita.Fim.error_code(), StatusCode::DEADLINE_EXCEEDED);
    EXPECT_NE(feita.Frase().find("demorou mais do que o permitido"), std::string::npos) << feita.Frase();
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "0");
    EXPECT_TRUE(Um.Chama("Entrada/Situacao", Vazio(), ana).Fim.ok());
}

TEST_F(ServidorPostgres, Operation_AnotherOneWritesAllTheTime_EndsInTimeAndIsDoneAfterwards)
{
    Um.Como.PrazoDaGravacao = std::chrono::seconds(4);
    Um.Como.PrazoDaOperacao = std::chrono::seconds(5);
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const std::string numero = ServidorDeTeste::Numero();
    {
        mesa::LigacaoPostgres outro(Um.Registro.Caminho());
        outro.Comanda(mesa::S(mesa::DialetoPostgres().IniciaEscrita()));
        const Feita feita = Um.Chama("EquiptoRN/inclui", Novo("R-001"), ana, {{"operacao", numero}});
        EXPECT_EQ(feita.Fim.error_code(), StatusCode::DEADLINE_EXCEEDED);
        EXPECT_TRUE(Um.Chama("Entrada/Situacao", Vazio(), ana).Fim.ok());
    }
    const Feita feita = Um.Chama("EquiptoRN/inclui", Novo("R-001"), ana, {{"operacao", numero}});
    EXPECT_TRUE(feita.Fim.ok()) << feita.Frase();
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "1");
}

TEST_F(ServidorPostgres, Cabeca_EngineThatDoesNotAnswer_EndsInTimeAndCountsAsAnOperation)
{
    Um.Como.PrazoDaGravacao = std::chrono::seconds(1);
    Um.Como.PrazoDaOperacao = std::chrono::seconds(3);
    Um.Como.PorSessao = 1;
    Um.Comeca();
    const std::string marta = Um.Entra("marta");
    mesa::LigacaoPostgres outro(Um.Registro.Caminho());
    outro.Comanda("BEGIN; LOCK TABLE HISTORICO IN ACCESS EXCLUSIVE MODE");
    const auto inicio = std::chrono::steady_clock::now();
    auto primeira = std::async(std::launch::async, [&] { return Um.Chama("Conferencia/Cabeca", Vazio(), marta); });
    while (motor::Linhas(Um.Registro.Caminho(), "SELECT 1 FROM pg_locks WHERE NOT granted AND database = (SELECT oid "
                                                "FROM pg_database WHERE datname = current_database())")
               .empty()) {
        ASSERT_LT(std::chrono::steady_clock::now() - inicio, std::chrono::seconds(30));
    }
    const Feita segunda = Um.Chama("Conferencia/Cabeca", Vazio(), marta);
    EXPECT_EQ(segunda.Fim.error_code(), StatusCode::RESOURCE_EXHAUSTED) << segunda.Frase();
    EXPECT_EQ(primeira.get().Fim.error_code(), StatusCode::DEADLINE_EXCEEDED);
    EXPECT_LT(std::chrono::steady_clock::now() - inicio, std::chrono::seconds(8));
    outro.Comanda("ROLLBACK");
    EXPECT_TRUE(Um.Chama("Conferencia/Cabeca", Vazio(), marta).Fim.ok());
}

TEST_F(ServidorPostgres, Conferencia_EngineRefuses_ItsWordsGoToTheServersOwnOutputOnly)
{
    Um.Comeca();
    const std::string marta = Um.Entra("marta");
    const auto semPalavras = [](const std::string &texto) {
        EXPECT_NE(texto, "");
        for (const char *palavra : {"denied", "permission", "trabalho", "/tmp", "teste_"}) {
            EXPECT_EQ(texto.find(palavra), std::string::npos) << texto;
        }
    };
    testing::internal::CaptureStderr();
    motor::Linhas(Um.Registro.Caminho(), "REVOKE SELECT ON REGISTRO FROM trabalho_de_teste");
    const Feita cabeca = Um.Chama("Conferencia/Cabeca", Vazio(), marta);
    EXPECT_EQ(cabeca.Fim.error_code(), StatusCode::INTERNAL);
    semPalavras(cabeca.Frase());
    for (const auto &[chave, valor] : cabeca.NoFim) {
        semPalavras(valor);
    }
    const Feita conferencia = Um.Chama("Conferencia/Confere", PedidoDeConferencia(), marta);
    ASSERT_TRUE(conferencia.Fim.ok()) << conferencia.Frase();
    AndamentoDaConferencia ultima;
    ASSERT_TRUE(ultima.ParseFromString(conferencia.Respostas.back()));
    EXPECT_EQ(ultima.resultado().frase(), "O usuário com que se ligou ao banco de dados não tem direito a isso.");
    const std::string erros = testing::internal::GetCapturedStderr();
    EXPECT_NE(erros.find("Conferencia/Cabeca: "), std::string::npos) << erros;
    EXPECT_NE(erros.find("Conferencia/Confere: "), std::string::npos) << erros;
    EXPECT_NE(erros.find("permission denied for table registro"), std::string::npos) << erros;
}

TEST_F(ServidorEReservaPostgres, Commit_NotConfirmed_ServerFindsOutByTheNumber)
{
    Um.Como.PrazoDaGravacao = std::chrono::seconds(60);
    Um.Como.PrazoDaOperacao = std::chrono::seconds(120);
    Um.Comeca();
    const std::string ana = Entra();
    ExigeReserva("ninguem");
    auto gravando = std::async(std::launch::async, [&] {
        return Um.Chama("EquiptoRN/inclui", {Novo("R-001").SerializeAsString()},
                        {{"sessao", ana}, {"operacao", ServidorDeTeste::Numero()}}, std::chrono::seconds(120));
    });
    std::string primeiro;
    EsperaAte("the first commit", [&] { return !(primeiro = Esperando()).empty(); });
    Sql("SELECT pg_cancel_backend(" + primeiro + ")"); // done here, and nobody says whether elsewhere too
    std::string segundo;
    EsperaAte("the question whether it was done", [&] {
        segundo = Esperando();
        return !segundo.empty() && segundo != primeiro;
    });
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "1");
    EXPECT_EQ(gravando.wait_for(std::chrono::seconds(0)), std::future_status::timeout); // not before it is sure
    ExigeReserva("");
    const Feita feita = gravando.get();
    EXPECT_TRUE(feita.Fim.ok()) << feita.Frase();
    EXPECT_EQ(feita.Como<registro::v1::EquiptoED>().nrointequip(),
              std::stoi(Sql("SELECT NroIntEquip FROM EQUIPAMENTO")));
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "1");
}

TEST_F(ServidorEReservaPostgres, Commit_NeverConfirmed_UnavailableInTimeAndTheSameNumberIsAnsweredLater)
{
    Um.Como.PrazoDaGravacao = std::chrono::seconds(1);
    Um.Comeca();
    const std::string ana = Entra();
    ExigeReserva("ninguem");
    const std::string numero = ServidorDeTeste::Numero();
    const Feita primeira = Um.Chama("EquiptoRN/inclui", Novo("R-001"), ana, {{"operacao", numero}});
    EXPECT_EQ(primeira.Fim.error_code(), StatusCode::UNAVAILABLE);
    EXPECT_EQ(primeira.Frase(),
              "Não foi possível saber se a operação foi gravada. Repita-a: ela não será feita duas vezes.");
    ExigeReserva("");
    const Feita segunda = Um.Chama("EquiptoRN/inclui", Novo("R-001"), ana, {{"operacao", numero}});
    EXPECT_TRUE(segunda.Fim.ok()) << segunda.Frase();
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "1");
}

TEST_F(ServidorEReservaPostgres, Entra_RightPasswordsWithoutTheStandby_CountAsNoneWhenItIsBack)
{
    Um.Como.PrazoDaGravacao = std::chrono::seconds(1);
    Um.Comeca();
    Entra();
    ExigeReserva("ninguem");
    for (int vez = 0; vez < 4; ++vez) {
        const Feita feita = Um.TentaEntrar("ana", "senha de ana");
        EXPECT_EQ(feita.Fim.error_code(), StatusCode::UNAVAILABLE) << feita.Como<Sessao>().recusa();
        EXPECT_EQ(feita.Frase(),
                  "A entrada não foi confirmada pelo banco de dados. Tente entrar de novo daqui a pouco.");
    }
    ExigeReserva("");
    EXPECT_FALSE(Entra().empty());
    // What was looked at counts as ever.
    for (int vez = 0; vez < 3; ++vez) {
        EXPECT_EQ(Um.TentaEntrar("ana", "errada").Como<Sessao>().espera(), vez < 2 ? 0 : 5);
    }
    EXPECT_TRUE(Um.TentaEntrar("ana", "senha de ana").Como<Sessao>().recusa().starts_with("Foram muitas tentativas"));
}

TEST_F(ServidorEReservaPostgres, Entra_WrongPasswordAfterOneThatWasNotLookedAt_IsCounted)
{
    Um.Como.PrazoDaGravacao = std::chrono::seconds(1);
    Um.Comeca();
    Entra();
    ExigeReserva("ninguem");
    EXPECT_EQ(Um.TentaEntrar("ana", "errada").Fim.error_code(), StatusCode::UNAVAILABLE);
    ExigeReserva("");
    for (int vez = 0; vez < 3; ++vez) {
        EXPECT_EQ(Um.TentaEntrar("ana", "errada").Como<Sessao>().espera(), vez < 2 ? 0 : 5);
    }
}

TEST_F(ServidorEReservaPostgres, Engine_GoneAndBack_UnavailableInWordsMeanwhileAndTheSessionGoesOn)
{
    Um.Como.PrazoDaGravacao = std::chrono::seconds(2);
    Um.Como.PrazoDaOperacao = std::chrono::seconds(5);
    Um.Comeca();
    const std::string ana = Entra();
    Proprio.Encerra();
    const Feita semNada = Um.Chama("Entrada/Situacao", Vazio(), ana);
    EXPECT_EQ(semNada.Fim.error_code(), StatusCode::UNAVAILABLE);
    EXPECT_NE(semNada.Frase().find("banco de dados"), std::string::npos) << semNada.Frase();
    EXPECT_EQ(Um.TentaEntrar("ana", "senha de ana").Fim.error_code(), StatusCode::UNAVAILABLE);
    Proprio.Inicia();
    EsperaAte("the server's connection", [&] { return Um.Chama("Entrada/Situacao", Vazio(), ana).Fim.ok(); });
    EXPECT_TRUE(Um.Grava("EquiptoRN/inclui", Novo("R-001"), ana).Fim.ok());
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "1");
}
