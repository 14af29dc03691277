#include "services/ComandosDeCopia.h"
#include "services/Disco.h"
#include "tests/services/DiscoDeTeste.h"
#include "tests/services/MortePorPasso.h"
#include "tests/services/PastaDeTeste.h"
#include "tests/services/SemPrivilegio.h"
#include "tests/services/ServicosTeste.h"
#include "tests/support/FalhaLancada.h"

#include <QTemporaryDir>

#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using namespace mesa;

namespace fs = std::filesystem;

namespace {

// A registry with the equipment R-1 of which there is a copy, and with R-2 since; closed.
class ServicosRestauracao : public ServicosTeste {
  protected:
    static void SetUpTestSuite() { DiscoDeTeste::Instala(); }
    ServicosRestauracao()
    {
        GuardaPdf(m_Ana, "doc", 30000);
        Inclui(m_Ana, EquipamentoDe("R-1"));
        m_Copia = m_Lugar.filePath("copias/registro.20261120-100000.db").toStdString();
        Exige(Copia(Registro(), {}).Faz(fs::path(m_Copia).parent_path().string(), m_Registro.Relogio));
        Inclui(m_Ana, EquipamentoDe("R-2"));
        Fecha();
        m_Novo = Conteudo(m_Copia);
        m_Velho = Conteudo(Registro());
        EXPECT_NE(m_Novo, m_Velho);
    }

    std::string Registro() { return m_Registro.Caminho(); }
    fs::path Pasta() { return fs::path(Registro()).parent_path(); }
    std::string Guardado() { return (Pasta() / "registro.antes-20261120-100000.db").string(); }
    void Fecha()
    {
        m_Ana = nullptr;
        m_Registro.Fecha();
    }
    // By default of the copy, in the registry's place.
    DesfechoDaCopia Restaura(PedidoDeRestauracao pedido = {}, const AndamentoDaCopia &andamento = {},
                             const ConfereArquivo &confere = {})
    {
        if (pedido.Arquivo.empty()) {
            pedido.Arquivo = m_Copia;
        }
        return Restauracao(Registro(), confere).Faz(pedido, m_Registro.Relogio, andamento);
    }
    DesfechoDaCopia RestauraDe(const std::string &copia) { return Restaura({copia, "", false}); }
    std::string Recusa(const std::string &copia)
    {
        const DesfechoDaCopia desfecho = RestauraDe(copia);
        EXPECT_FALSE(desfecho.Feita);
        EXPECT_FALSE(desfecho.SoPorSerDeOutro);
        return desfecho.Frase;
    }
    std::string Outra(const std::string &nome, const std::string &de = "")
    {
        const std::string lugar = m_Lugar.filePath(QString::fromStdString(nome)).toStdString();
        fs::copy_file(de.empty() ? m_Copia : de, lugar, fs::copy_options::overwrite_existing);
        return lugar;
    }
    // Somebody saves R-3 and is killed, so that it stands in the log only.
    void MorreComDiario()
    {
        std::fflush(nullptr);
        const pid_t filho = fork();
        if (filho == 0) {
            m_Registro.Reabre();
            Inclui(m_Registro.Sessao("ana"), EquipamentoDe("R-3"));
            _exit(0);
        }
        int estado = 0;
        waitpid(filho, &estado, 0);
        ASSERT_EQ(estado, 0);
        ASSERT_GT(fs::file_size(Registro() + "-wal"), 0U);
    }
    // The registry opens for work and holds this, and nothing is left in the directory but it and these.
    void EsperaAberto(const std::string &conteudo, std::vector<std::string> nomes = {})
    {
        m_Registro.Reabre();
        EXPECT_EQ(m_Registro.Sql("PRAGMA integrity_check"), "ok");
        EXPECT_EQ(Conteudo(Registro()), conteudo);
        m_Registro.Fecha();
        EsperaSo(std::move(nomes));
    }
    // Nothing is in the directory but the registry and these.
    void EsperaSo(std::vector<std::string> nomes)
    {
        nomes.emplace_back("registro.db");
        // A journal that was begun and begins with zeros still is never played back, and stays until it is next needed.
        if (BytesDe(Registro() + "-journal").substr(0, 1) <= std::string(1, '\0')) {
            fs::remove(Registro() + "-journal");
        }
        std::sort(nomes.begin(), nomes.end());
        EXPECT_EQ(Nomes(Pasta()), nomes);
    }
    // Restores, killed right before each step of it in turn, from what `prepara` makes of the directory. The registry
    // is then the old one or the new one; the next restoration succeeds.
    void MataEmCadaPasso(const std::function<void()> &prepara, const std::function<bool()> &velhoInteiro)
    {
        if (!MortePorPasso::Possivel()) {
            GTEST_SKIP() << "the system lets no process watch another";
        }
        prepara();
        const QTemporaryDir modelo;
        fs::copy(Pasta(), modelo.path().toStdString(), fs::copy_options::recursive);
        std::map<std::string, int> mortes;
        int velhos = 0;
        int novos = 0;
        for (int passo = 0; !HasFailure(); ++passo) {
            for (const std::string &nome : Nomes(Pasta())) {
                fs::remove_all(Pasta() / nome);
            }
            fs::copy(modelo.path().toStdString(), Pasta(), fs::copy_options::recursive);
            const auto onde = MortePorPasso::Mata(passo, [&] { Exige(Restaura({m_Copia, "", true})); });
            if (!onde) {
                break;
            }
            SCOPED_TRACE(*onde + " " + std::to_string(passo));
            ++mortes[*onde];
            const bool novo = Equipamentos() == "1";
            ++(novo ? novos : velhos);
            if (novo) {
                EsperaAberto(m_Novo, Guardados());
            } else {
                EXPECT_TRUE(velhoInteiro());
            }
            const DesfechoDaCopia denovo = Restaura({m_Copia, "", true});
            EXPECT_TRUE(denovo.Feita) << denovo.Frase;
            EsperaAberto(m_Novo, Guardados());
        }
        EXPECT_GT(velhos, 30);
        EXPECT_GT(novos, 0);
        std::string tabela;
        for (const auto &[qual, vezes] : mortes) {
            tabela += qual + " " + std::to_string(vezes) + ", ";
        }
        RecordProperty("mortes", tabela + "old " + std::to_string(velhos) + ", new " + std::to_string(novos));
    }
    // How many there are in the registry's file alone; nothing when it is damaged or not there.
    std::string Equipamentos()
    {
        try {
            return LinhasSql(Outra("olhada.db", Registro()), "SELECT COUNT(*) FROM EQUIPAMENTO").at(0);
        } catch (const std::exception &) {
            return "";
        }
    }
    // What was kept of what was replaced.
    std::vector<std::string> Guardados()
    {
        std::vector<std::string> nomes = Nomes(Pasta());
        std::erase_if(nomes, [](const std::string &nome) { return nome.rfind("registro.antes-", 0) != 0; });
        return nomes;
    }

    QTemporaryDir m_Lugar; // of copies
    std::string m_Copia;
    std::string m_Novo;  // what the registry holds once the copy is restored
    std::string m_Velho; // and before
};

TEST_F(ServicosRestauracao, Faz_OfACopy_TakesThePlaceAndKeepsWhatWasThere)
{
    const std::string bytes = BytesDe(m_Copia);
    const DesfechoDaCopia desfecho = Restaura();
    ASSERT_TRUE(desfecho.Feita) << desfecho.Frase;
    EXPECT_EQ(desfecho.Arquivo, Guardado());
    EXPECT_EQ(desfecho.Frase, "O registro foi restaurado da cópia " + m_Copia +
                                  ". O que estava no lugar dele ficou guardado em " + Guardado() + ".");
    EXPECT_EQ(Nomes(Pasta()), (std::vector<std::string>{"registro.antes-20261120-100000.db", "registro.db"}));
    EXPECT_EQ(Conteudo(Registro()), m_Novo);
    EXPECT_EQ(Conteudo(Guardado()), m_Velho);
    EXPECT_EQ(ModoDe(Registro()), 0600U);
    EXPECT_TRUE(BytesDe(m_Copia) == bytes);
    m_Registro.Reabre();
    Inclui(m_Registro.Sessao("ana"), EquipamentoDe("R-9"));
    EXPECT_EQ(Conteudo(Guardado()), m_Velho); // which is a file of its own
}

TEST_F(ServicosRestauracao, Faz_OfWhatWasReplaced_UndoesIt)
{
    Exige(Restaura());
    m_Registro.PassaSegundos(1);
    Exige(RestauraDe(Guardado()));
    EXPECT_EQ(Conteudo(Registro()), m_Velho);
}

TEST_F(ServicosRestauracao, Faz_TwiceInASecond_KeepsBoth)
{
    Exige(Restaura());
    Exige(Restaura());
    EXPECT_EQ(Nomes(Pasta()), (std::vector<std::string>{"registro.antes-20261120-100000-2.db",
                                                        "registro.antes-20261120-100000.db", "registro.db"}));
}

TEST_F(ServicosRestauracao, Faz_BesideTheLogOfSomebodyWhoWasKilled_KeepsItWithTheOldAndOutOfTheNew)
{
    MorreComDiario();
    Exige(Restaura());
    EXPECT_EQ(LinhasSql(Guardado(), "SELECT Codigo FROM EQUIPAMENTO ORDER BY Codigo"),
              (std::vector<std::string>{"R-1", "R-2", "R-3"}));
    EsperaAberto(m_Novo, {"registro.antes-20261120-100000.db"});
}

// As people do it who have no other program.
TEST_F(ServicosRestauracao, Open_OfACopyPutByHandBesideAnEarlierLog_IsTheCopyAndKeepsTheLog)
{
    MorreComDiario();
    const std::string diario = BytesDe(Registro() + "-wal");
    fs::copy_file(m_Copia, Registro(), fs::copy_options::overwrite_existing);
    EsperaAberto(m_Novo, {"registro.db-wal.de-outro"});
    EXPECT_TRUE(BytesDe(Registro() + "-wal.de-outro") == diario);
}

TEST_F(ServicosRestauracao, Copy_OfACopyPutByHandBesideAnEarlierLog_IsTheCopy)
{
    MorreComDiario();
    fs::copy_file(m_Copia, Registro(), fs::copy_options::overwrite_existing);
    const DesfechoDaCopia copia = Copia(Registro(), {}).Faz(m_Lugar.path().toStdString(), m_Registro.Relogio);
    ASSERT_TRUE(copia.Feita) << copia.Frase;
    EXPECT_EQ(Conteudo(copia.Arquivo), m_Novo);
}

TEST_F(ServicosRestauracao, Open_WithTheLogOfSomebodyWhoWasKilled_LosesNothing)
{
    MorreComDiario();
    m_Registro.Reabre();
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "3");
}

// What a write without a log leaves when it is cut off: played back into another file, it would destroy that.
TEST_F(ServicosRestauracao, Open_BesideAJournalThatIsNotItsOwn_IsRefusedAndChangesNothing)
{
    {
        const std::string fonte = Outra("fonte.db", Registro());
        LinhasSql(fonte, "PRAGMA journal_mode = DELETE");
        std::fflush(nullptr);
        const pid_t filho = fork();
        if (filho == 0) {
            sqlite3 *aberto = nullptr;
            sqlite3_open(fonte.c_str(), &aberto);
            sqlite3_exec(aberto,
                         "PRAGMA cache_size = 5; PRAGMA cache_spill = 1; BEGIN; "
                         "CREATE TABLE X AS WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c WHERE n < "
                         "5000) SELECT n FROM c",
                         nullptr, nullptr, nullptr);
            sqlite3_db_cacheflush(aberto);
            _exit(0);
        }
        waitpid(filho, nullptr, 0);
        ASSERT_TRUE(fs::exists(fonte + "-journal"));
        fs::copy_file(fonte + "-journal", Registro() + "-journal");
    }
    fs::copy_file(m_Copia, Registro(), fs::copy_options::overwrite_existing);
    const std::string bytes = BytesDe(Registro());
    const Falha falha = FalhaLancada([&] { m_Registro.Reabre(); });
    EXPECT_EQ(falha.Descricao.rfind("Ao lado do registro " + Registro() + " há o arquivo registro.db-journal, ", 0), 0U)
        << falha.Descricao;
    EXPECT_TRUE(BytesDe(Registro()) == bytes);
    Exige(Restaura({m_Copia, "", true})); // which keeps it with what it replaces
    EsperaAberto(m_Novo, {"registro.antes-20261120-100000.db", "registro.antes-20261120-100000.db-journal"});
}

TEST_F(ServicosRestauracao, Faz_WhereThereIsNoRegistry_MakesIt)
{
    MorreComDiario();
    fs::remove(Registro());
    const DesfechoDaCopia desfecho = Restaura();
    ASSERT_TRUE(desfecho.Feita) << desfecho.Frase;
    EXPECT_EQ(desfecho.Arquivo, "");
    EXPECT_EQ(desfecho.Frase, "O registro foi restaurado da cópia " + m_Copia + ".");
    EsperaAberto(m_Novo, {"registro.antes-20261120-100000.db-wal"});
}

TEST_F(ServicosRestauracao, Faz_WhereThereIsNoDirectory_MakesItForItsOwner)
{
    const std::string novo = m_Lugar.filePath("nova/pasta/registro.db").toStdString();
    Exige(Restauracao(novo, {}).Faz({m_Copia, "", false}, m_Registro.Relogio));
    EXPECT_EQ(Conteudo(novo), m_Novo);
    EXPECT_EQ(ModoDe(fs::path(novo).parent_path()), 0700U);
}

TEST_F(ServicosRestauracao, Faz_OverADamagedRegistry_KeepsItAsItIs)
{
    MorreComDiario();
    fs::resize_file(Registro(), 10000);
    std::ofstream(Registro(), std::ios::binary | std::ios::in | std::ios::out) << std::string(10000, 'x');
    const std::string bytes = BytesDe(Registro());
    TrocaByte(Registro() + "-wal", 0); // no log any more either
    const std::string estragado = BytesDe(Registro() + "-wal");
    const DesfechoDaCopia nao = Restaura();
    EXPECT_TRUE(nao.SoPorSerDeOutro);
    EXPECT_EQ(nao.Frase, "Nada foi restaurado. O registro em " + Registro() +
                             " não diz quem é, e não se sabe se a cópia é dele. Para restaurá-la mesmo assim, confirme "
                             "que a cópia pode ser de outro registro.");
    EXPECT_TRUE(BytesDe(Registro()) == bytes);
    Exige(Restaura({m_Copia, "", true}));
    EXPECT_TRUE(BytesDe(Guardado()) == bytes);
    EXPECT_TRUE(BytesDe(Guardado() + "-wal") == estragado);
    EsperaAberto(m_Novo, {"registro.antes-20261120-100000.db", "registro.antes-20261120-100000.db-wal"});
}

TEST_F(ServicosRestauracao, Faz_OfAnotherRegistrysCopy_IsRefusedUnlessItIsWanted)
{
    RegistroDeTeste outro;
    const DesfechoDaCopia copia = Copia(outro.Caminho(), {}).Faz(m_Lugar.path().toStdString(), m_Registro.Relogio);
    ASSERT_TRUE(copia.Feita) << copia.Frase;
    const DesfechoDaCopia nao = RestauraDe(copia.Arquivo);
    EXPECT_TRUE(nao.SoPorSerDeOutro);
    EXPECT_EQ(nao.Frase, "Nada foi restaurado. A cópia é de outro registro. Para restaurá-la mesmo assim, confirme que "
                         "a cópia pode ser de outro registro.");
    EXPECT_EQ(Conteudo(Registro()), m_Velho);
    EXPECT_EQ(Nomes(Pasta()), std::vector<std::string>{"registro.db"});
    Exige(Restaura({copia.Arquivo, "", true}));
    EXPECT_EQ(Conteudo(Registro()), Conteudo(outro.Caminho()));
    EXPECT_EQ(Conteudo(Guardado()), m_Velho);
}

TEST_F(ServicosRestauracao, Faz_WithTheIdentifierThatIsExpected_GoesByThatOne)
{
    const std::string identificador = LinhasSql(m_Copia, "SELECT Identificador FROM REGISTRO").at(0);
    fs::remove(Registro());
    EXPECT_TRUE(Restaura({m_Copia, "ffffffff", false}).SoPorSerDeOutro);
    EXPECT_FALSE(fs::exists(Registro()));
    Exige(Restaura({m_Copia, identificador, false}));
}

TEST_F(ServicosRestauracao, Faz_OfWhatIsNoSoundCopy_IsRefusedAndChangesNothing)
{
    const std::string bytes = BytesDe(Registro());
    const std::string texto = m_Lugar.filePath("texto.db").toStdString();
    std::ofstream(texto) << std::string(4096, 'x');
    EXPECT_EQ(Recusa(texto), "Nada foi restaurado. A cópia " + texto +
                                 " está com defeito ou não é um registro (file is not a database).");
    const std::string vazio = m_Lugar.filePath("vazio.db").toStdString();
    std::ofstream(vazio).close();
    EXPECT_EQ(Recusa(vazio), "Nada foi restaurado. A cópia " + vazio + " não é um registro de equipamentos.");
    const std::string alheio = m_Lugar.filePath("alheio.db").toStdString();
    CriaBancoAlheio(alheio);
    EXPECT_EQ(Recusa(alheio), "Nada foi restaurado. A cópia " + alheio + " não é um registro de equipamentos.");
    EXPECT_EQ(Recusa(m_Lugar.filePath("nada.db").toStdString()),
              "Nada foi restaurado. Não há cópia em " + m_Lugar.filePath("nada.db").toStdString() + ".");
    EXPECT_EQ(Recusa(Registro()), "Nada foi restaurado. O arquivo " + Registro() + " é o próprio registro.");
    EXPECT_EQ(Recusa(Pasta().string()), "Nada foi restaurado. Não há cópia em " + Pasta().string() + ".");
    EXPECT_TRUE(BytesDe(Registro()) == bytes);
    EXPECT_EQ(Nomes(Pasta()), std::vector<std::string>{"registro.db"});
}

TEST_F(ServicosRestauracao, Faz_OfATruncatedCopy_IsRefusedWhereverItIsCut)
{
    const std::string bytes = BytesDe(Registro());
    const auto inteira = static_cast<std::size_t>(fs::file_size(m_Copia));
    int cortes = 0;
    for (std::size_t ate = 0; ate < inteira; ate += ate < 4096 ? 512 : inteira / 37 + 1, ++cortes) {
        SCOPED_TRACE(ate);
        const std::string cortada = Outra("cortada.db");
        fs::resize_file(cortada, ate);
        const DesfechoDaCopia desfecho = Restaura({cortada, "", true});
        EXPECT_FALSE(desfecho.Feita);
        EXPECT_EQ(desfecho.Frase.rfind("Nada foi restaurado. ", 0), 0U) << desfecho.Frase;
        EXPECT_TRUE(BytesDe(Registro()) == bytes);
        EXPECT_EQ(Nomes(Pasta()), std::vector<std::string>{"registro.db"});
    }
    EXPECT_GT(cortes, 40);
}

// What the database itself notices is refused; what it does not is for the check that is given, which sees the file
// that would take the place.
TEST_F(ServicosRestauracao, Faz_OfACopyWithAByteTurned_IsRefusedOrWhatTheCheckSaw)
{
    const std::string bytes = BytesDe(Registro());
    const auto inteira = static_cast<std::streamoff>(fs::file_size(m_Copia));
    int recusadas = 0;
    int pelaConferencia = 0;
    for (std::streamoff onde = 0; onde < inteira; onde += inteira / 101 + 1) {
        SCOPED_TRACE(onde);
        const std::string virada = Outra("virada.db");
        TrocaByte(virada, onde);
        std::string visto;
        const DesfechoDaCopia desfecho = Restaura({virada, "", true}, {}, [&](const std::string &arquivo) {
            visto = Conteudo(arquivo);
            return visto == m_Novo ? std::vector<std::string>{} : std::vector<std::string>{"Mudou."};
        });
        if (desfecho.Feita) {
            EXPECT_EQ(Conteudo(Registro()), m_Novo); // it was in no use
            fs::rename(desfecho.Arquivo, Registro());
        } else {
            ++recusadas;
            pelaConferencia += desfecho.Achados == std::vector<std::string>{"Mudou."} ? 1 : 0;
            EXPECT_EQ(desfecho.Frase.rfind("Nada foi restaurado. ", 0), 0U) << desfecho.Frase;
        }
        EXPECT_EQ(Nomes(Pasta()), std::vector<std::string>{"registro.db"});
        EXPECT_EQ(Conteudo(Registro()), m_Velho);
    }
    EXPECT_EQ(BytesDe(Registro()).size(), bytes.size());
    EXPECT_GT(recusadas, 20);
    EXPECT_GT(pelaConferencia, 10);
}

TEST_F(ServicosRestauracao, Faz_WithFindings_TellsThemAndChangesNothing)
{
    const DesfechoDaCopia desfecho =
        Restaura({}, {}, [](const std::string &) { return std::vector<std::string>{"Falta uma linha."}; });
    EXPECT_FALSE(desfecho.Feita);
    EXPECT_EQ(desfecho.Frase, "Nada foi restaurado. A conferência encontrou defeitos na cópia.");
    EXPECT_EQ(desfecho.Achados, std::vector<std::string>{"Falta uma linha."});
    EsperaAberto(m_Velho);
}

TEST_F(ServicosRestauracao, Faz_OfANewerCopy_IsRefused)
{
    const std::string nova = Outra("nova.db");
    LinhasSql(nova, "INSERT INTO ESQUEMA VALUES (77)");
    const std::string aqui = m_Registro.Sql("SELECT MAX(Versao) FROM ESQUEMA");
    EXPECT_EQ(Recusa(nova), "Nada foi restaurado. A cópia é da versão 77, mais nova que a deste programa (versão " +
                                aqui + "). Atualize o programa.");
}

TEST_F(ServicosRestauracao, Faz_OfACopyOfAnEarlierVersion_BringsItUpToDateBeforeItTakesThePlace)
{
    const std::string antiga = m_Lugar.filePath("antiga.db").toStdString();
    CriaRegistroVersao1(antiga);
    const std::string bytes = BytesDe(antiga);
    const DesfechoDaCopia nao = RestauraDe(antiga);
    EXPECT_TRUE(nao.SoPorSerDeOutro);
    EXPECT_EQ(nao.Frase, "Nada foi restaurado. A cópia é de um programa antigo e não diz de que registro é. Para "
                         "restaurá-la mesmo assim, confirme que a cópia pode ser de outro registro.");
    const std::string aqui = LinhasSql(m_Copia, "SELECT MAX(Versao) FROM ESQUEMA").at(0);
    std::string conferida;
    Exige(Restaura({antiga, "", true}, {}, [&](const std::string &arquivo) {
        conferida = LinhasSql(arquivo, "SELECT MAX(Versao) FROM ESQUEMA").at(0);
        return std::vector<std::string>();
    }));
    EXPECT_EQ(conferida, aqui);
    EXPECT_TRUE(BytesDe(antiga) == bytes);
    EXPECT_EQ(LinhasSql(Registro(), "PRAGMA journal_mode"), std::vector<std::string>{"delete"});
    m_Registro.Reabre();
    EXPECT_EQ(m_Registro.Sql("SELECT MAX(Versao) FROM ESQUEMA"), aqui);
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "5");
    m_Registro.Fecha();
    EXPECT_EQ(Nomes(Pasta()), (std::vector<std::string>{"registro.antes-20261120-100000.db", "registro.db"}));
}

TEST_F(ServicosRestauracao, Faz_OfACopyWithALogBesideIt_IsRefused)
{
    MorreComDiario();
    const std::string copia = Outra("copia.db", Registro());
    Outra("copia.db-wal", Registro() + "-wal");
    EXPECT_EQ(Recusa(copia),
              "Nada foi restaurado. Ao lado da cópia está o arquivo copia.db-wal, com gravações que podem "
              "não estar nela. Uma cópia fica sozinha em um arquivo: abra esse registro no programa e "
              "feche-o, ou escolha outra cópia.");
}

TEST_F(ServicosRestauracao, Faz_WhileSomebodyHasTheRegistryOpen_IsRefusedAndChangesNothing)
{
    m_Registro.Reabre();
    const std::string aberto =
        "Nada foi restaurado. O registro está aberto em outra janela ou estação. Feche o programa em todas e tente de "
        "novo.";
    EXPECT_EQ(Recusa(m_Copia), aberto);
    Inclui(m_Registro.Sessao("ana"), EquipamentoDe("R-4"));
    EXPECT_EQ(Recusa(m_Copia), aberto);
    m_Registro.Fecha();

    int fim[2];
    int pronto[2];
    ASSERT_EQ(pipe(fim) + pipe(pronto), 0);
    std::fflush(nullptr);
    const pid_t outra = fork(); // another desk, which has done nothing but open it
    if (outra == 0) {
        close(fim[1]);
        m_Registro.Reabre();
        char byte = 'x';
        const bool disse = write(pronto[1], &byte, 1) == 1;
        _exit(disse && read(fim[0], &byte, 1) == 0 ? 0 : 1);
    }
    close(fim[0]);
    char byte = 0;
    ASSERT_EQ(read(pronto[0], &byte, 1), 1);
    EXPECT_EQ(Recusa(m_Copia), aberto);
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "3");
    close(fim[1]);
    close(pronto[0]);
    close(pronto[1]);
    int estado = 0;
    waitpid(outra, &estado, 0);
    EXPECT_EQ(estado, 0);
    Exige(Restaura());
    EsperaAberto(m_Novo, {"registro.antes-20261120-100000.db"});
}

// Whoever opens the registry at the moment of the exchange gets what is there after it.
TEST_F(ServicosRestauracao, Open_InTheMiddleOfTheExchange_WaitsForItsEnd)
{
    const auto agora = [] { return DataDe(21, 11, 2026); };
    const fs::path outro = Pasta() / "outro.db";
    const std::string identificador = Servicos::Cria(outro, TipoDeRegistro::Registro, agora)->Identificador();
    std::future<std::string> aberto;
    {
        const TravaDaPasta trava(Pasta(), TravaDaPasta::Uso::DeUm, "");
        aberto = std::async(std::launch::async, [&] { return Servicos::Abre(Registro(), agora)->Identificador(); });
        fs::rename(Registro(), Guardado());
        fs::rename(outro, Registro());
    }
    EXPECT_EQ(aberto.get(), identificador);
}

TEST_F(ServicosRestauracao, Faz_OfARegistryBehindALink_ReplacesWhatIsBehindIt)
{
    const fs::path elo = m_Lugar.filePath("elo.db").toStdString();
    fs::create_symlink(Registro(), elo);
    Exige(Restauracao(elo, {}).Faz({m_Copia, "", false}, m_Registro.Relogio));
    EXPECT_TRUE(fs::is_symlink(elo));
    EXPECT_EQ(Conteudo(Registro()), m_Novo);
    EXPECT_EQ(Conteudo(Guardado()), m_Velho);
}

TEST_F(ServicosRestauracao, Faz_InADirectoryWithAnyName_WorksOnTheFileThere)
{
    const fs::path pasta = m_Lugar.filePath("a b?mode=ro#%25 ção&'\"").toStdString();
    fs::create_directory(pasta);
    const fs::path registro = pasta / "meu?registro#1.db";
    fs::copy_file(Registro(), registro);
    const DesfechoDaCopia copia = Copia(registro, {}).Faz((pasta / "có?pias").string(), m_Registro.Relogio);
    ASSERT_TRUE(copia.Feita) << copia.Frase;
    EXPECT_EQ(Conteudo(copia.Arquivo), m_Velho);
    Exige(Restauracao(registro, {}).Faz({m_Copia, "", false}, m_Registro.Relogio));
    EXPECT_EQ(Conteudo(registro), m_Novo);
    EXPECT_EQ(Conteudo(pasta / "meu?registro#1.antes-20261120-100000.db"), m_Velho);
    Exige(Restauracao(registro, {}).Faz({copia.Arquivo, "", false}, m_Registro.Relogio));
    EXPECT_EQ(Conteudo(registro), m_Velho);
}

TEST_F(ServicosRestauracao, Faz_WithoutPermission_SaysWhereItIsMissing)
{
    AbreATodos(Registro());
    fs::permissions(m_Lugar.path().toStdString(), fs::perms::all);
    fs::permissions(fs::path(m_Copia).parent_path(), fs::perms::all);
    {
        const SemPrivilegio sem;
        EXPECT_EQ(Recusa(m_Copia),
                  "Nada foi restaurado. A cópia " + m_Copia + " não pôde ser lida (unable to open database file).");
    }
    fs::permissions(m_Copia, fs::perms(0444));
    fs::permissions(Pasta(), fs::perms(0555));
    {
        const SemPrivilegio sem;
        EXPECT_EQ(Recusa(m_Copia),
                  "Nada foi restaurado. Não foi possível gravar em " + Pasta().string() + ": falta permissão.");
    }
    EXPECT_EQ(Conteudo(Registro()), m_Velho);
}

TEST_F(ServicosRestauracao, Faz_WhileAnotherRestorationPrepares_IsRefused)
{
    const ArquivoEmPreparo outra(Pasta() / "registro.em-restauracao.db", "");
    EXPECT_EQ(Recusa(m_Copia), "Nada foi restaurado. Outra restauração está sendo feita.");
    m_Registro.Reabre(); // which is no hindrance to work
    EXPECT_TRUE(fs::exists(outra.Caminho()));
}

TEST_F(ServicosRestauracao, Faz_GivenUpAtAnyMoment_ChangesNothing)
{
    bool feita = false;
    int desistencias = 0;
    for (int ate = 0; !feita; ++ate) {
        int vezes = 0;
        const DesfechoDaCopia desfecho = Restaura({}, [&](double) { return vezes++ < ate; });
        feita = desfecho.Feita;
        if (!feita) {
            ++desistencias;
            EXPECT_TRUE(desfecho.Cancelada);
            EXPECT_EQ(desfecho.Frase, "A restauração foi cancelada. O registro ficou como estava.");
            EsperaAberto(m_Velho);
        }
    }
    EXPECT_EQ(desistencias, 4); // among the pages, after them, after the look at the database, after the check
}

TEST_F(ServicosRestauracao, Faz_WithTheDiskFullAtAnyWrite_ChangesNothing)
{
    bool feita = false;
    int recusas = 0;
    for (int cabem = 0; !feita && !HasFailure(); cabem += 3) {
        SCOPED_TRACE(cabem);
        DesfechoDaCopia desfecho;
        {
            const DiscoDeTeste disco(cabem);
            desfecho = Restaura();
        }
        feita = desfecho.Feita;
        if (!feita) {
            ++recusas;
            EXPECT_EQ(desfecho.Frase, "Nada foi restaurado. O disco em que está o registro ficou cheio. Nada foi "
                                      "gravado: libere espaço e tente de novo.");
            EsperaAberto(m_Velho);
        }
    }
    EXPECT_GT(recusas, 20);
    EsperaAberto(m_Novo, {"registro.antes-20261120-100000.db"});
}

TEST_F(ServicosRestauracao, Faz_KilledAtAnyStep_LeavesTheOldRegistryOrTheNew)
{
    MataEmCadaPasso([] {},
                    [&] {
                        EsperaAberto(m_Velho);
                        return true;
                    });
}

TEST_F(ServicosRestauracao, Faz_KilledAtAnyStepBesideAnEarlierLog_LeavesTheOldRegistryWithItsLogOrTheNew)
{
    MataEmCadaPasso([&] { MorreComDiario(); },
                    [&] {
                        m_Registro.Reabre();
                        const bool inteiro = m_Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO") == "3" &&
                                             m_Registro.Sql("PRAGMA integrity_check") == "ok";
                        m_Registro.Fecha();
                        EsperaSo({});
                        return inteiro;
                    });
}

TEST_F(ServicosRestauracao, Faz_KilledAtAnyStepOverADamagedRegistry_KeepsItWithItsLogOrIsDone)
{
    std::string bytes;
    MataEmCadaPasso(
        [&] {
            MorreComDiario();
            std::ofstream(Registro(), std::ios::binary | std::ios::in | std::ios::out) << std::string(5000, 'x');
            TrocaByte(Registro() + "-wal", 0);
            bytes = BytesDe(Registro());
        },
        [&] {
            FalhaLancada([&] { m_Registro.Reabre(); }); // puts back what was put aside
            EXPECT_EQ(Guardados(), std::vector<std::string>{});
            return BytesDe(Registro()) == bytes;
        });
}

TEST_F(ServicosRestauracao, Faz_KilledAtAnyStepWhereThereIsNoRegistry_LeavesNoneOrTheNew)
{
    MataEmCadaPasso([&] { fs::remove(Registro()); }, [&] { return !fs::exists(Registro()); });
}

TEST_F(ServicosRestauracao, ComandaRestauracao_TellsWhatCameOfItAndAnswersByItsExit)
{
    const auto nao =
        ComandaRestauracao(Registro(), {}, {m_Lugar.filePath("nada.db").toStdString(), "", false}, m_Registro.Relogio);
    EXPECT_EQ(nao.Saida, 1);
    EXPECT_EQ(nao.Texto, "Nada foi restaurado. Não há cópia em " + m_Lugar.filePath("nada.db").toStdString() + ".\n");
    const auto feita = ComandaRestauracao(Registro(), {}, {m_Copia, "", false}, m_Registro.Relogio);
    EXPECT_EQ(feita.Saida, 0) << feita.Texto;
    EXPECT_EQ(feita.Texto.rfind("O registro foi restaurado da cópia " + m_Copia + ".", 0), 0U) << feita.Texto;
}

} // namespace
