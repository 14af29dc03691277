#include "services/ComandosDeCopia.h"
#include "services/Disco.h"
#include "tests/services/DiscoDeTeste.h"
#include "tests/services/DiscosProprios.h"
#include "tests/services/MortePorPasso.h"
#include "tests/services/PastaDeTeste.h"
#include "tests/services/SemPrivilegio.h"
#include "tests/services/ServicosTeste.h"

#include <QTemporaryDir>

#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <vector>

using namespace mesa;

namespace fs = std::filesystem;

namespace {

class ServicosCopia : public ServicosTeste {
  protected:
    static void SetUpTestSuite() { DiscoDeTeste::Instala(); }

    fs::path Pasta() { return fs::path(m_Registro.Caminho()).parent_path() / "copias"; }
    DesfechoDaCopia CopiaAgora(int quantas = Copia::QuantasPadrao, const AndamentoDaCopia &andamento = {},
                               const ConfereArquivo &confere = {})
    {
        return Copia(m_Registro.Caminho(), confere).Faz(Pasta().string(), m_Registro.Relogio, quantas, andamento);
    }
    // A copy that has to come about.
    std::string Feita(int quantas = Copia::QuantasPadrao)
    {
        const DesfechoDaCopia desfecho = CopiaAgora(quantas);
        EXPECT_TRUE(desfecho.Feita) << desfecho.Frase;
        return desfecho.Arquivo;
    }
    // A registry with enough in it for several steps.
    void Enche()
    {
        for (int n = 0; n < 20; ++n) {
            GuardaPdf(m_Ana, "doc " + std::to_string(n), 200000);
        }
        Inclui(m_Ana, EquipamentoDe("R-1"));
    }
};

TEST_F(ServicosCopia, Faz_OfAnOpenRegistry_IsTheWholeOfItAloneInAFileOfItsOwner)
{
    Enche();
    const std::string antes = Conteudo(m_Registro.Caminho());
    const DesfechoDaCopia desfecho = CopiaAgora();
    ASSERT_TRUE(desfecho.Feita) << desfecho.Frase;
    EXPECT_EQ(desfecho.Arquivo, (Pasta() / "registro.20261120-100000.db").string());
    EXPECT_EQ(desfecho.Frase.substr(0, desfecho.Frase.rfind('(')),
              "A cópia foi feita e conferida: " + desfecho.Arquivo + " ");
    EXPECT_EQ(Nomes(Pasta()), std::vector<std::string>{"registro.20261120-100000.db"});
    EXPECT_EQ(ModoDe(desfecho.Arquivo), 0600U);
    EXPECT_EQ(ModoDe(Pasta()), 0700U);
    EXPECT_EQ(LinhasSql(desfecho.Arquivo, "PRAGMA journal_mode"), std::vector<std::string>{"delete"});
    EXPECT_EQ(Conteudo(desfecho.Arquivo), antes);
    EXPECT_EQ(Conteudo(m_Registro.Caminho()), antes);
    Inclui(m_Ana, EquipamentoDe("R-2")); // and work goes on
}

TEST_F(ServicosCopia, Faz_WhileSomebodySaves_IsTheMomentAtWhichItBegan)
{
    Enche();
    const std::string antes = Conteudo(m_Registro.Caminho());
    int salvos = 0;
    const DesfechoDaCopia desfecho = CopiaAgora(1, [&](double) {
        Inclui(m_Ana, EquipamentoDe("S-" + std::to_string(++salvos)));
        return true;
    });
    ASSERT_TRUE(desfecho.Feita) << desfecho.Frase;
    EXPECT_GT(salvos, 3);
    EXPECT_EQ(Conteudo(desfecho.Arquivo), antes);
    EXPECT_EQ(Linhas("EQUIPAMENTO"), std::to_string(1 + salvos));
}

TEST_F(ServicosCopia, Faz_TellsHowMuchIsDone_NeverLessThanBefore)
{
    Enche();
    std::vector<double> partes;
    ASSERT_TRUE(CopiaAgora(1, [&](double parte) {
                    partes.push_back(parte);
                    return true;
                }).Feita);
    ASSERT_GT(partes.size(), 5U);
    EXPECT_TRUE(std::is_sorted(partes.begin(), partes.end()));
    EXPECT_GT(partes.front(), 0);
    EXPECT_LT(partes.front(), 0.5);
    EXPECT_EQ(partes.back(), 1);
}

TEST_F(ServicosCopia, Faz_GivenUpAtAnyMoment_LeavesNothing)
{
    Enche();
    bool inteira = false;
    int desistencias = 0;
    for (int ate = 0; !inteira; ++ate) {
        int vezes = 0;
        const DesfechoDaCopia desfecho = CopiaAgora(1, [&](double) { return vezes++ < ate; });
        inteira = desfecho.Feita;
        if (!inteira) {
            ++desistencias;
            EXPECT_TRUE(desfecho.Cancelada);
            EXPECT_EQ(desfecho.Frase, "A cópia foi cancelada. Nada ficou pela metade.");
            EXPECT_EQ(Nomes(Pasta()), std::vector<std::string>{});
        }
    }
    EXPECT_GT(desistencias, 5);
}

TEST_F(ServicosCopia, Faz_WithTheDiskFullAtAnyWrite_SaysSoAndLeavesNothing)
{
    GuardaPdf(m_Ana, "doc", 200000);
    CopiaAgora(); // the folder
    fs::remove(Pasta() / "registro.20261120-100000.db");
    const std::string antes = Conteudo(m_Registro.Caminho());
    bool inteira = false;
    int recusas = 0;
    for (int cabem = 0; !inteira && !HasFailure(); cabem += 3) {
        SCOPED_TRACE(cabem);
        DesfechoDaCopia desfecho;
        {
            const DiscoDeTeste disco(cabem);
            desfecho = CopiaAgora();
        }
        inteira = desfecho.Feita;
        if (!inteira) {
            ++recusas;
            EXPECT_EQ(desfecho.Frase, "O disco da pasta " + Pasta().string() +
                                          " ficou cheio. A cópia não foi feita e nada ficou pela metade: libere espaço "
                                          "ou escolha outra pasta.");
            EXPECT_EQ(Nomes(Pasta()), std::vector<std::string>{});
            EXPECT_EQ(Conteudo(m_Registro.Caminho()), antes);
        }
    }
    EXPECT_GT(recusas, 20);
    EXPECT_EQ(Conteudo((Pasta() / "registro.20261120-100000.db").string()), antes);
}

TEST_F(ServicosCopia, Faz_WhenTheDiskTakesAWriteNoMore_SaysSoAndLeavesNothing)
{
    GuardaPdf(m_Ana, "doc", 200000);
    CopiaAgora();
    fs::remove(Pasta() / "registro.20261120-100000.db");
    const DiscoDeTeste disco(9, SQLITE_IOERR_WRITE);
    EXPECT_EQ(CopiaAgora().Frase,
              "O disco da pasta " + Pasta().string() +
                  " não aceitou a gravação (disk I/O error). A cópia não foi feita e nada ficou pela "
                  "metade: confira o espaço e o disco, ou escolha outra pasta.");
    EXPECT_EQ(Nomes(Pasta()), std::vector<std::string>{});
}

TEST_F(ServicosCopia, Faz_IntoAPlaceThatTakesNoFiles_SaysWhy)
{
    const auto frase = [&](const fs::path &pasta) {
        return Copia(m_Registro.Caminho(), {}).Faz(pasta.string(), m_Registro.Relogio).Frase;
    };
    const QTemporaryDir lugar;
    const fs::path arquivo = lugar.filePath("arquivo").toStdString();
    std::ofstream(arquivo) << "x";
    EXPECT_EQ(frase(arquivo),
              "A cópia não foi feita. Não foi possível gravar em " + arquivo.string() + ": não é uma pasta.");
    EXPECT_EQ(frase(arquivo / "copias"), "A cópia não foi feita. Não foi possível fazer a pasta " +
                                             (arquivo / "copias").string() + ": não é uma pasta.");
    const fs::path fechada = lugar.filePath("fechada").toStdString();
    fs::create_directory(fechada);
    fs::permissions(fechada, fs::perms(0555));
    fs::permissions(lugar.path().toStdString(), fs::perms(0755));
    AbreATodos(m_Registro.Caminho());
    const SemPrivilegio sem;
    EXPECT_EQ(frase(fechada),
              "A cópia não foi feita. Não foi possível gravar em " + fechada.string() + ": falta permissão.");
    EXPECT_EQ(frase(fechada / "copias"), "A cópia não foi feita. Não foi possível fazer a pasta " +
                                             (fechada / "copias").string() + ": falta permissão.");
}

TEST_F(ServicosCopia, Faz_OfWhatIsNoRegistry_SaysSo)
{
    const QTemporaryDir lugar;
    const std::string texto = lugar.filePath("texto.db").toStdString();
    std::ofstream(texto) << std::string(4096, 'x');
    const std::string outro = lugar.filePath("outro.db").toStdString();
    CriaBancoAlheio(outro);
    const auto frase = [&](const std::string &arquivo) {
        return Copia(arquivo, {}).Faz(Pasta().string(), m_Registro.Relogio).Frase;
    };
    EXPECT_EQ(frase(texto), "A cópia não foi feita. O arquivo " + texto +
                                " está com defeito ou não é um registro (file is not a database).");
    EXPECT_EQ(frase(outro), "A cópia não foi feita. O arquivo " + outro + " não é um registro de equipamentos.");
    EXPECT_EQ(frase(lugar.filePath("nada.db").toStdString()),
              "A cópia não foi feita. Não há registro em " + lugar.filePath("nada.db").toStdString() + ".");
    EXPECT_FALSE(fs::exists(Pasta()));
}

TEST_F(ServicosCopia, Faz_WithFindings_IsNotKeptAndTellsThem)
{
    std::string conferido;
    const DesfechoDaCopia desfecho = CopiaAgora(1, {}, [&](const std::string &arquivo) {
        conferido = arquivo;
        EXPECT_EQ(LinhasSql(arquivo, "SELECT COUNT(*) FROM CLIENTE"), std::vector<std::string>{"2"});
        return std::vector<std::string>{"O equipamento R-1 foi mudado por fora."};
    });
    EXPECT_FALSE(desfecho.Feita);
    EXPECT_EQ(desfecho.Frase, "A cópia não foi guardada: a conferência encontrou defeitos no registro.");
    EXPECT_EQ(desfecho.Achados, std::vector<std::string>{"O equipamento R-1 foi mudado por fora."});
    EXPECT_EQ(conferido, (Pasta() / "registro.em-copia.db").string());
    EXPECT_EQ(Nomes(Pasta()), std::vector<std::string>{});
}

TEST_F(ServicosCopia, Faz_OfADamagedRegistry_IsNotKept)
{
    Enche();
    m_Ana = nullptr;
    m_Registro.Fecha();
    const std::string indice = m_Registro.Sql("SELECT rootpage FROM sqlite_schema WHERE name = 'EQUIPAMENTO_Busca'");
    TrocaByte(m_Registro.Caminho(), (std::stol(indice) - 1) * 4096 + 8);
    const DesfechoDaCopia desfecho = CopiaAgora();
    EXPECT_FALSE(desfecho.Feita);
    ASSERT_FALSE(desfecho.Achados.empty());
    EXPECT_EQ(desfecho.Achados.front().rfind("O banco de dados não está íntegro: ", 0), 0U) << desfecho.Achados.front();
    EXPECT_EQ(Nomes(Pasta()), std::vector<std::string>{});
}

TEST_F(ServicosCopia, Faz_TwiceInASecond_KeepsBoth)
{
    EXPECT_EQ(fs::path(Feita()).filename(), "registro.20261120-100000.db");
    EXPECT_EQ(fs::path(Feita()).filename(), "registro.20261120-100000-2.db");
    EXPECT_EQ(fs::path(Feita()).filename(), "registro.20261120-100000-3.db");
}

TEST_F(ServicosCopia, Faz_WhileAnotherOneIsBeingMadeThere_IsRefused)
{
    Feita();
    {
        const ArquivoEmPreparo outra(Pasta() / "registro.em-copia.db", "");
        EXPECT_EQ(CopiaAgora().Frase, "A cópia não foi feita. Outra cópia está sendo feita na pasta " +
                                          Pasta().string() + ". Espere que ela termine.");
    }
    Feita();
}

TEST_F(ServicosCopia, Faz_AmongManyCopies_KeepsTheNewestOfThisRegistryAndAllThatIsNot)
{
    const std::string outra = (Pasta() / "registro.20200101-000000.db").string();
    const RegistroDeTeste outro;
    ASSERT_TRUE(Copia(outro.Caminho(), {}).Faz(Pasta().string(), DataDe(1, 1, 2020)).Feita);
    std::ofstream(Pasta() / "registro.20190101-000000.db") << "no registry at all";
    std::ofstream(Pasta() / "registro.20209999-000000.db") << "no day";
    fs::copy_file(Feita(), Pasta() / "registro.antes-20180101-000000.db");
    fs::copy_file(Pasta() / "registro.20261120-100000.db", Pasta() / "meu registro.20180101-000000.db");
    const std::vector<std::string> alheios = {"meu registro.20180101-000000.db", "registro.20190101-000000.db",
                                              "registro.20200101-000000.db", "registro.20209999-000000.db",
                                              "registro.antes-20180101-000000.db"};
    for (int n = 1; n < 16; ++n) {
        m_Registro.PassaSegundos(86400);
        Feita();
    }
    const std::vector<std::string> nomes = Nomes(Pasta());
    ASSERT_EQ(nomes.size(), alheios.size() + 14);
    for (const std::string &nome : alheios) {
        EXPECT_EQ(std::count(nomes.begin(), nomes.end(), nome), 1) << nome;
    }
    const auto guardadas = Copia(m_Registro.Caminho(), {}).Guardadas(Pasta().string());
    ASSERT_EQ(guardadas.size(), 14U);
    EXPECT_EQ(fs::path(guardadas.front().Arquivo).filename(), "registro.20261205-100000.db");
    EXPECT_EQ(fs::path(guardadas.back().Arquivo).filename(), "registro.20261122-100000.db");
    EXPECT_EQ(guardadas.front().Quando, DataDe(5, 12, 2026, 10, 0, 0));

    Feita(2);
    EXPECT_EQ(Nomes(Pasta()).size(), alheios.size() + 2);
    Feita(0); // the newest stays whatever the setting says
    EXPECT_EQ(Nomes(Pasta()).size(), alheios.size() + 1);
    m_Registro.PassaSegundos(1);
    Feita(-5);
    EXPECT_EQ(Nomes(Pasta()).size(), alheios.size() + 1);
}

// A clock that was wrong leaves a copy that counts as the newest: the one just made is not the one that goes.
TEST_F(ServicosCopia, Faz_WithTheClockBehindOlderCopies_KeepsTheOneJustMade)
{
    m_Registro.PassaSegundos(86400 * 365);
    Feita();
    m_Registro.PassaSegundos(-86400 * 365);
    const std::string nova = Feita(1);
    EXPECT_EQ(Nomes(Pasta()), (std::vector<std::string>{"registro.20261120-100000.db", "registro.20271120-100000.db"}));
    EXPECT_EQ(fs::path(nova).filename(), "registro.20261120-100000.db");
}

TEST_F(ServicosCopia, Devida_UntilThereIsOneOfThisRegistryOfToday)
{
    const Copia copia(m_Registro.Caminho(), {});
    const auto devida = [&] { return copia.Devida(Pasta().string(), m_Registro.Relogio); };
    EXPECT_TRUE(devida());
    const RegistroDeTeste outro;
    ASSERT_TRUE(Copia(outro.Caminho(), {}).Faz(Pasta().string(), m_Registro.Relogio).Feita);
    EXPECT_TRUE(devida());
    Feita();
    EXPECT_FALSE(devida());
    m_Registro.PassaSegundos(14 * 3600 - 1); // 23:59:59
    EXPECT_FALSE(devida());
    m_Registro.PassaSegundos(1);
    EXPECT_TRUE(devida());
    m_Registro.PassaSegundos(-86400 * 30); // the clock went back behind the copy
    EXPECT_TRUE(devida());
}

TEST_F(ServicosCopia, Faz_KilledAtAnyStep_LeavesAWholeCopyOrNoneAndTheRegistryAsItWas)
{
    if (!MortePorPasso::Possivel()) {
        GTEST_SKIP() << "the system lets no process watch another";
    }
    m_Ana = nullptr;
    m_Registro.Fecha();
    const std::string antes = Conteudo(m_Registro.Caminho());
    int mortes = 0;
    int inteiras = 0;
    for (int passo = 0; !HasFailure(); ++passo, ++mortes) {
        fs::remove_all(Pasta());
        const auto onde = MortePorPasso::Mata(passo, [&] { Exige(CopiaAgora()); });
        if (!onde) {
            break;
        }
        SCOPED_TRACE(*onde + " " + std::to_string(passo));
        EXPECT_EQ(Conteudo(m_Registro.Caminho()), antes);
        if (fs::exists(Pasta())) {
            for (const CopiaGuardada &copia : Copia(m_Registro.Caminho(), {}).Guardadas(Pasta().string())) {
                ++inteiras;
                EXPECT_EQ(Conteudo(copia.Arquivo), antes);
                fs::remove(copia.Arquivo);
            }
        }
        Feita(); // and the next one clears what was left
        EXPECT_EQ(Nomes(Pasta()), std::vector<std::string>{"registro.20261120-100000.db"});
    }
    EXPECT_GT(mortes, 30);
    EXPECT_GT(inteiras, 0);
}

// The real thing, where the system lets a process have a small disk of its own.
TEST_F(ServicosCopia, Faz_OnARealDiskThatIsFull_SaysSoAndLeavesNothing)
{
    Enche();
    fs::create_directory(Pasta());
    std::fflush(nullptr);
    const pid_t filho = fork();
    if (filho == 0) {
        constexpr int naoDa = 77;
        if (!TemDiscosProprios() || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("tmpfs", Pasta().c_str(), "tmpfs", 0, "size=1m") != 0) {
            _exit(naoDa);
        }
        EXPECT_EQ(CopiaAgora().Frase, "O disco da pasta " + Pasta().string() +
                                          " ficou cheio. A cópia não foi feita e nada ficou pela metade: libere espaço "
                                          "ou escolha outra pasta.");
        EXPECT_EQ(Nomes(Pasta()), std::vector<std::string>{});
        EXPECT_EQ(mount(nullptr, Pasta().c_str(), nullptr, MS_REMOUNT, "size=100m"), 0);
        EXPECT_TRUE(CopiaAgora().Feita);
        std::fflush(stdout);
        _exit(HasFailure() ? 1 : 0);
    }
    int estado = 0;
    waitpid(filho, &estado, 0);
    ASSERT_TRUE(WIFEXITED(estado));
    if (WEXITSTATUS(estado) == 77) {
        GTEST_SKIP() << "the system gives this process no disk of its own";
    }
    EXPECT_EQ(WEXITSTATUS(estado), 0);
}

TEST_F(ServicosCopia, ComandaCopia_TellsWhatCameOfItAndAnswersByItsExit)
{
    const DesfechoDeComando feita = ComandaCopia(m_Registro.Caminho(), {}, Pasta().string(), m_Registro.Relogio);
    EXPECT_EQ(feita.Saida, 0);
    EXPECT_EQ(
        feita.Texto.rfind("A cópia foi feita e conferida: " + (Pasta() / "registro.20261120-100000.db").string(), 0),
        0U);
    const DesfechoDeComando nao = ComandaCopia(
        m_Registro.Caminho(),
        [](const std::string &) {
            return std::vector<std::string>{"Um.", "Outro."};
        },
        Pasta().string(), m_Registro.Relogio);
    EXPECT_EQ(nao.Saida, 1);
    EXPECT_EQ(nao.Texto, "A cópia não foi guardada: a conferência encontrou defeitos no registro.\n- Um.\n- Outro.\n");
}

} // namespace
