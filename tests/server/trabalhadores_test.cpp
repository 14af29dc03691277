#include "server/Diario.h"
#include "server/Fim.h"
#include "server/Trabalhadores.h"
#include "services/ErroSql.h"
#include "tests/services/RegistroDeTeste.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <fstream>
#include <future>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace servidor;
using grpc::StatusCode;

namespace {

class TrabalhadoresTeste : public testing::Test {
  protected:
    Ref<mesa::ServicosSql> Abre()
    {
        if (++Aberturas > 2 && Demoram) { // after the first look, and the first of the worker
            Solto.wait();
        }
        if (Falham) {
            throw Falha(NumeroFalha::ErroDeAcesso, "Teste", "Não há registro.");
        }
        return ComoTipo<mesa::ServicosSql>(Registro.AbreOutro());
    }
    std::unique_ptr<Trabalhadores> Contrata(std::size_t quantos, std::size_t esperando)
    {
        return std::make_unique<Trabalhadores>(quantos, esperando, [this] { return Abre(); });
    }
    static Momento Logo() { return std::chrono::steady_clock::now() + std::chrono::seconds(20); }
    // How the work ends; OK when it does.
    static StatusCode FimDe(
        Trabalhadores &todos, const Trabalhadores::Trabalho &trabalho, Momento ate = Logo(),
        const std::function<bool()> &desiste = [] { return false; }, bool grava = false)
    {
        std::chrono::microseconds espera{};
        try {
            todos.Faz(trabalho, ate, desiste, espera, grava);
            return StatusCode::OK;
        } catch (const Fim &fim) {
            return fim.Codigo;
        }
    }
    static StatusCode FimDaGravacao(Trabalhadores &todos, const Trabalhadores::Trabalho &trabalho)
    {
        return FimDe(
            todos, trabalho, Logo(), [] { return false; }, true);
    }
    static void EsperaAte(const std::function<bool()> &certo)
    {
        const Momento ate = Logo();
        while (!certo() && std::chrono::steady_clock::now() < ate) {
            std::this_thread::yield();
        }
        EXPECT_TRUE(certo());
    }

    RegistroDeTeste Registro;
    std::atomic<int> Aberturas = 0;
    std::atomic<bool> Falham = false;
    std::atomic<bool> Demoram = false;
    std::promise<void> Solta;
    std::shared_future<void> Solto = Solta.get_future().share();
};

} // namespace

TEST_F(TrabalhadoresTeste, Faz_QueueFull_OthersAreToldAtOnceAndTheRestIsDone)
{
    const auto todos = Contrata(1, 2);
    std::atomic<int> feitos = 0;
    std::vector<std::future<StatusCode>> fins;
    const auto manda = [&] {
        fins.push_back(std::async(std::launch::async, [&] {
            return FimDe(*todos, [&](Posto &) {
                Solto.wait();
                ++feitos;
            });
        }));
    };
    manda();
    EsperaAte([&] { return todos->Trabalhando() == 1; });
    manda();
    manda();
    EsperaAte([&] { return todos->Esperando() == 2; });
    EXPECT_EQ(FimDe(*todos, [](Posto &) { FAIL(); }), StatusCode::RESOURCE_EXHAUSTED);
    Solta.set_value();
    for (auto &fim : fins) {
        EXPECT_EQ(fim.get(), StatusCode::OK);
    }
    EXPECT_EQ(feitos, 3);
    EXPECT_EQ(FimDe(*todos, [](Posto &) {}), StatusCode::OK);
}

TEST_F(TrabalhadoresTeste, Faz_ManyThatWrite_TwoAtATimeAndWhoReadsPasses)
{
    const auto todos = Contrata(3, 8);
    EsperaAte([&] { return todos->Conectados() == 3; });
    std::mutex daConta;
    int agora = 0;
    int maisDeUmaVez = 0;
    std::vector<std::future<StatusCode>> fins;
    constexpr std::size_t gravam = 2 + 6; // with three quarters of the places
    for (std::size_t n = 0; n < gravam; ++n) {
        fins.push_back(std::async(std::launch::async, [&] {
            return FimDaGravacao(*todos, [&](Posto &) {
                {
                    const std::lock_guard trava(daConta);
                    maisDeUmaVez = std::max(maisDeUmaVez, ++agora);
                }
                Solto.wait();
                const std::lock_guard trava(daConta);
                --agora;
            });
        }));
        EsperaAte([&] { return todos->Trabalhando() + todos->Esperando() == n + 1; });
    }
    EsperaAte([&] { return todos->Trabalhando() == 2; });
    EXPECT_EQ(FimDe(*todos, [](Posto &) {}), StatusCode::OK);
    EXPECT_EQ(FimDaGravacao(*todos, [](Posto &) { FAIL(); }), StatusCode::RESOURCE_EXHAUSTED);
    EXPECT_EQ(FimDe(*todos, [](Posto &) {}), StatusCode::OK);
    EXPECT_EQ(todos->Esperando(), gravam - 2);
    Solta.set_value();
    for (auto &fim : fins) {
        EXPECT_EQ(fim.get(), StatusCode::OK);
    }
    EXPECT_EQ(maisDeUmaVez, 2);
}

TEST_F(TrabalhadoresTeste, Faz_OneWorker_WritesToo)
{
    const auto todos = Contrata(1, 1);
    EXPECT_EQ(FimDaGravacao(*todos, [](Posto &) {}), StatusCode::OK);
}

// The worker that had the turn of those who write does not come back: another one takes what waits.
TEST_F(TrabalhadoresTeste, Faz_WriterLosesItsConnection_NextOneThatWritesIsTakenByAnother)
{
    const auto todos = Contrata(2, 4);
    EsperaAte([&] { return todos->Conectados() == 2; });
    auto primeira = std::async(std::launch::async, [&] {
        EXPECT_THROW(FimDaGravacao(*todos,
                                   [&](Posto &) {
                                       Solto.wait();
                                       throw mesa::ErroSql(mesa::MotivoSql::Acesso, "");
                                   }),
                     mesa::ErroSql);
    });
    EsperaAte([&] { return todos->Trabalhando() == 1; });
    auto segunda = std::async(std::launch::async, [&] { return FimDaGravacao(*todos, [](Posto &) {}); });
    EsperaAte([&] { return todos->Esperando() == 1; });
    Falham = true;
    Solta.set_value();
    primeira.get();
    EXPECT_EQ(segunda.get(), StatusCode::OK);
    EXPECT_EQ(todos->Conectados(), 1U);
}

TEST_F(TrabalhadoresTeste, Faz_DeadlineOrGivenUpWhileItWaits_NotBegun)
{
    const auto todos = Contrata(1, 10);
    auto primeiro = std::async(std::launch::async, [&] { return FimDe(*todos, [&](Posto &) { Solto.wait(); }); });
    EsperaAte([&] { return todos->Trabalhando() == 1; });
    bool comecou = false;
    EXPECT_EQ(
        FimDe(
            *todos, [&](Posto &) { comecou = true; }, std::chrono::steady_clock::now() + std::chrono::milliseconds(30)),
        StatusCode::DEADLINE_EXCEEDED);
    EXPECT_EQ(FimDe(
                  *todos, [&](Posto &) { comecou = true; }, Logo(), [] { return true; }),
              StatusCode::CANCELLED);
    EXPECT_EQ(FimDe(
                  *todos, [&](Posto &) { comecou = true; }, Logo(), []() -> bool { throw std::runtime_error("gone"); }),
              StatusCode::CANCELLED);
    EXPECT_EQ(todos->Esperando(), 0U);
    Solta.set_value();
    EXPECT_EQ(primeiro.get(), StatusCode::OK);
    EXPECT_EQ(FimDe(*todos, [](Posto &) {}), StatusCode::OK);
    EXPECT_FALSE(comecou);
}

TEST_F(TrabalhadoresTeste, Faz_WorkRaises_RaisedHereAndTheWorkerGoesOn)
{
    const auto todos = Contrata(1, 1);
    EXPECT_THROW(FimDe(*todos, [](Posto &) { throw Falha(NumeroFalha::ErroInterno); }), Falha);
    // What the database refused, for whatever reason, it said over a connection that stands.
    EXPECT_THROW(FimDe(*todos, [](Posto &) { throw mesa::ErroSql(mesa::MotivoSql::Outro, ""); }), mesa::ErroSql);
    EXPECT_EQ(FimDe(*todos, [](Posto &posto) { posto.Servicos().Identificador(); }), StatusCode::OK);
    EXPECT_EQ(Aberturas, 2); // the first look, and the worker's own
}

TEST_F(TrabalhadoresTeste, Faz_ConnectionIsLost_UnavailableInWordsUntilItIsThereAgain)
{
    const auto todos = Contrata(1, 4);
    Falham = true;
    EXPECT_THROW(FimDe(*todos, [](Posto &) { throw mesa::ErroSql(mesa::MotivoSql::Acesso, ""); }), mesa::ErroSql);
    EsperaAte([&] { return todos->Conectados() == 0 && Aberturas > 2; });
    EXPECT_EQ(FimDe(*todos, [](Posto &) { FAIL(); }), StatusCode::UNAVAILABLE);
    Falham = false;
    EsperaAte([&] { return todos->Conectados() == 1; });
    EXPECT_EQ(FimDe(*todos, [](Posto &) {}), StatusCode::OK);
}

TEST_F(TrabalhadoresTeste, Faz_ConnectionIsBeingMadeAnew_WaitsForIt)
{
    Demoram = true;
    const auto todos = Contrata(1, 4);
    EXPECT_THROW(FimDe(*todos, [](Posto &) { throw mesa::ErroSql(mesa::MotivoSql::Acesso, ""); }), mesa::ErroSql);
    EsperaAte([&] { return todos->Conectados() == 0 && Aberturas == 3; });
    auto esperando = std::async(std::launch::async, [&] { return FimDe(*todos, [](Posto &) {}); });
    EsperaAte([&] { return todos->Esperando() == 1; });
    Solta.set_value();
    EXPECT_EQ(esperando.get(), StatusCode::OK);
}

TEST_F(TrabalhadoresTeste, Faz_OneOfTwoHasNoConnection_TheOtherIsWokenAtOnceEachTime)
{
    const auto todos = Contrata(2, 4);
    EsperaAte([&] { return todos->Conectados() == 2; });
    Falham = true;
    const int antes = Aberturas;
    EXPECT_THROW(FimDe(*todos, [](Posto &) { throw mesa::ErroSql(mesa::MotivoSql::Acesso, ""); }), mesa::ErroSql);
    EsperaAte([&] { return Aberturas > antes && todos->Conectados() == 1; });
    for (int n = 0; n < 100; ++n) {
        EXPECT_EQ(FimDe(*todos, [](Posto &) {}), StatusCode::OK);
    }
    // A wake-up that goes to the one that tries to connect is slept over until that one has tried again.
    EXPECT_LT(Aberturas - antes, 20);
}

TEST_F(TrabalhadoresTeste, Contrata_NoRegistry_RaisesWhy)
{
    Falham = true;
    EXPECT_THROW(Contrata(2, 2), Falha);
}

TEST_F(TrabalhadoresTeste, Termina_WorkUnderWay_ComesToItsEndAndNothingElseBegins)
{
    const auto todos = Contrata(1, 4);
    auto andando = std::async(std::launch::async, [&] { return FimDe(*todos, [&](Posto &) { Solto.wait(); }); });
    EsperaAte([&] { return todos->Trabalhando() == 1; });
    auto esperando = std::async(std::launch::async, [&] { return FimDe(*todos, [](Posto &) { FAIL(); }); });
    EsperaAte([&] { return todos->Esperando() == 1; });
    todos->Termina();
    EXPECT_EQ(esperando.get(), StatusCode::UNAVAILABLE);
    EXPECT_EQ(FimDe(*todos, [](Posto &) { FAIL(); }), StatusCode::UNAVAILABLE);
    Solta.set_value();
    EXPECT_EQ(andando.get(), StatusCode::OK);
}

TEST(Diario, Escreve_ManyThreads_EveryLineIsWhole)
{
    const QTemporaryDir pasta;
    const std::string caminho = pasta.filePath("diario").toStdString();
    constexpr int fios = 4;
    constexpr int linhas = 500;
    {
        Diario diario(caminho);
        std::vector<std::thread> todos;
        for (int f = 0; f < fios; ++f) {
            todos.emplace_back([&] {
                for (int n = 0; n < linhas; ++n) {
                    LinhaDoDiario linha;
                    linha.Operacao = "EquiptoRN/altera";
                    linha.Usuario = n;
                    linha.Fim = "OK";
                    diario.Escreve(linha);
                }
            });
        }
        for (std::thread &fio : todos) {
            fio.join();
        }
    }
    int lidas = 0;
    std::ifstream arquivo(caminho);
    for (std::string linha; std::getline(arquivo, linha); ++lidas) {
        QJsonParseError erro;
        const QJsonObject objeto = QJsonDocument::fromJson(QByteArray::fromStdString(linha), &erro).object();
        ASSERT_EQ(erro.error, QJsonParseError::NoError) << linha;
        EXPECT_EQ(objeto["operacao"].toString(), "EquiptoRN/altera");
    }
    EXPECT_EQ(lidas, fios * linhas);
}

TEST(Diario, Json_Moment_IsThatOfTheMachinesZoneWithItsOffset)
{
    const QByteArray antes = qgetenv("TZ");
    const bool havia = qEnvironmentVariableIsSet("TZ");
    const auto momento = [](const char *zona, std::int64_t milissegundos) {
        qputenv("TZ", zona);
        ::tzset();
        const std::string linha =
            LinhaDoDiario().Json(std::chrono::system_clock::time_point(std::chrono::milliseconds(milissegundos)));
        return QJsonDocument::fromJson(QByteArray::fromStdString(linha)).object()["momento"].toString().toStdString();
    };
    EXPECT_EQ(momento("AQUI3:30", 1795435200007), "2026-11-23T08:30:00.007-03:30");
    EXPECT_EQ(momento("ALI-2", 1795435200120), "2026-11-23T14:00:00.120+02:00");
    EXPECT_EQ(momento("UTC0", -1), "1969-12-31T23:59:59.999+00:00");
    havia ? qputenv("TZ", antes) : qunsetenv("TZ");
    ::tzset();
}

TEST(Diario, Json_AnyText_IsReadAsItWas)
{
    LinhaDoDiario linha;
    linha.Operacao = "EquiptoRN/altera";
    linha.Fim = "INTERNAL";
    linha.Motivo = "a \"aferição\" de C:\\\t\x01 não coube\n";
    linha.Duracao = std::chrono::microseconds(1234567);
    linha.Espera = std::chrono::seconds(100);
    linha.Octetos = 12345;
    linha.Usuario = 7;
    const std::string texto = linha.Json(std::chrono::system_clock::now());
    ASSERT_TRUE(texto.ends_with("\n"));
    EXPECT_EQ(texto.find('\n'), texto.size() - 1);
    QJsonParseError erro;
    const QJsonObject objeto = QJsonDocument::fromJson(QByteArray::fromStdString(texto), &erro).object();
    ASSERT_EQ(erro.error, QJsonParseError::NoError) << texto;
    EXPECT_EQ(objeto["operacao"].toString().toStdString(), linha.Operacao);
    EXPECT_EQ(objeto["fim"].toString().toStdString(), linha.Fim);
    EXPECT_EQ(objeto["motivo"].toString().toStdString(), linha.Motivo);
    EXPECT_EQ(objeto["endereco"].toString(), "");
    EXPECT_EQ(objeto["ms"].toDouble(), 1234.567);
    EXPECT_EQ(objeto["espera_ms"].toDouble(), 100000);
    EXPECT_EQ(objeto["octetos"].toInteger(), 12345);
    EXPECT_EQ(objeto["usuario"].toInt(), 7);
    EXPECT_FALSE(objeto.contains("numero"));
}

TEST(Diario, Escreve_WhileItGoesOn_TheLineComesIntoTheFile)
{
    const QTemporaryDir pasta;
    const std::string caminho = pasta.filePath("diario").toStdString();
    Diario diario(caminho);
    for (int linhas = 1; linhas <= 2; ++linhas) { // the second one wakes the writer again
        diario.Escreve(LinhaDoDiario());
        int lidas = 0;
        for (const auto fim = std::chrono::steady_clock::now() + std::chrono::seconds(30);
             lidas < linhas && std::chrono::steady_clock::now() < fim;) {
            std::ifstream arquivo(caminho);
            lidas = 0;
            for (std::string linha; std::getline(arquivo, linha);) {
                ++lidas;
            }
        }
        EXPECT_EQ(lidas, linhas);
    }
}

TEST(Diario, Escreve_NowhereOrFullDisk_SaysSoAndStopsNobody)
{
    EXPECT_THROW(Diario("/nenhuma/pasta/diario"), Falha);
    Diario cheio("/dev/full");
    for (int n = 0; n < 100; ++n) {
        cheio.Escreve(LinhaDoDiario());
    }
    const auto ate = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (cheio.Perdidas() < 100 && std::chrono::steady_clock::now() < ate) {
        std::this_thread::yield();
    }
    EXPECT_EQ(cheio.Perdidas(), 100U);
}
