#include "tests/comando/ComandoTeste.h"

#include "comando/Fim.h"
#include "comando/Terminal.h"
#include "services/Cabeca.h"
#include "tests/services/PastaDeTeste.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <utmp.h>

#include <array>
#include <fstream>
#include <functional>

namespace {

// The program as the system runs it.
class ProgramaTeste : public ComandoTeste {
  protected:
    ProgramaTeste()
    {
        Ana = Registro.Sessao("ana");
        IncluiComSensores(Ana, {{AfericaoDe("C-1", DataDe(1, 1, 2026), DataDe(30, 6, 2026))}});
    }
    ~ProgramaTeste() override
    {
        if (m_Filho > 0) {
            ::kill(m_Filho, SIGKILL);
            Espera();
        }
    }

    // Begins it. prepara: in the new process, with the standard streams as it shall have them.
    void Comeca(const std::vector<std::string> &argumentos, const std::function<void()> &prepara)
    {
        std::vector<std::string> palavras = {PROGRAMA};
        palavras.insert(palavras.end(), argumentos.begin(), argumentos.end());
        std::vector<char *> ponteiros;
        for (std::string &uma : palavras) {
            ponteiros.push_back(uma.data());
        }
        ponteiros.push_back(nullptr);
        std::vector<std::string> ambiente = {"HOME=" + Pasta.path().toStdString(), "LC_ALL=C.UTF-8",
                                             "PATH=/usr/bin:/bin"};
        std::vector<char *> variaveis;
        for (std::string &uma : ambiente) {
            variaveis.push_back(uma.data());
        }
        variaveis.push_back(nullptr);
        m_Filho = ::fork();
        ASSERT_GE(m_Filho, 0);
        if (m_Filho == 0) {
            prepara();
            ::execve(PROGRAMA, ponteiros.data(), variaveis.data());
            ::_exit(127);
        }
    }
    // How it ended: its code, or 128 and the signal. One that does not end fails the test, and is ended.
    int Espera()
    {
        // The library declares its function for C alone.
        const int fim = static_cast<int>(::syscall(SYS_pidfd_open, m_Filho, 0));
        pollfd espera{fim, POLLIN, 0};
        if (::poll(&espera, 1, 60000) != 1) {
            ADD_FAILURE() << "it does not end";
            ::kill(m_Filho, SIGKILL);
        }
        ::close(fim);
        int como = 0;
        EXPECT_EQ(::waitpid(m_Filho, &como, 0), m_Filho);
        m_Filho = -1;
        return WIFEXITED(como) ? WEXITSTATUS(como) : 128 + WTERMSIG(como);
    }
    int Roda(const std::vector<std::string> &argumentos, const std::function<void()> &prepara)
    {
        Comeca(argumentos, prepara);
        return Espera();
    }
    // To all of its session.
    void Manda(int sinal) const { ASSERT_EQ(::kill(-m_Filho, sinal), 0); }

    // In the new process: a stream is that file, or none.
    static void Abre(int qual, const std::string &caminho, int modo)
    {
        const int aberto = ::open(caminho.c_str(), modo, 0600);
        ::dup2(aberto, qual);
        ::close(aberto);
    }
    void SemTerminal() const
    {
        Abre(0, "/dev/null", O_RDONLY);
        Abre(1, Em("saida"), O_WRONLY | O_CREAT | O_TRUNC);
        Abre(2, Em("erros"), O_WRONLY | O_CREAT | O_TRUNC);
    }
    std::vector<std::string> ComRegistro(std::vector<std::string> argumentos) const
    {
        argumentos.insert(argumentos.end(), {"--registro", Registro.Caminho()});
        return argumentos;
    }

    Ref<mesa::SessaoServico> Ana;

  private:
    pid_t m_Filho = -1;
};

TEST_F(ProgramaTeste, Codes_AsOthersSeeThem_AreThoseThatAreTold)
{
    EXPECT_EQ(Roda({"--versao"}, [&] { SemTerminal(); }), 0);
    EXPECT_TRUE(BytesDe(Em("saida")).starts_with("registro 1."));
    EXPECT_EQ(BytesDe(Em("erros")), "");
    EXPECT_EQ(Roda(ComRegistro({"cabeca"}), [&] { SemTerminal(); }), 0);
    EXPECT_TRUE(mesa::CabecaAssinada::Le(BytesDe(Em("saida"))).AssinaturaVale());
    EXPECT_EQ(Roda({"voa"}, [&] { SemTerminal(); }), 2);
    EXPECT_EQ(Roda({"cabeca", "--registro", Em("nenhum")}, [&] { SemTerminal(); }), 4);
    EXPECT_EQ(BytesDe(Em("saida")), "");
    EXPECT_EQ(Roda({"cabeca"}, [&] { SemTerminal(); }), 4) << "the data directory of who has none";
    Registro.Sql("UPDATE EQUIPAMENTO SET Descricao = 'Outra'");
    EXPECT_EQ(Roda(ComRegistro({"confere"}), [&] { SemTerminal(); }), 1);
    const std::vector<std::string> pergunta =
        ComRegistro({"consulta", "--codigo", "R-001", "--dia", "30/06/2026", "--usuario", "ana", "--senha-da-entrada"});
    std::ofstream(Em("senha")) << "errada de todo\n";
    EXPECT_EQ(Roda(pergunta,
                   [&] {
                       SemTerminal();
                       Abre(0, Em("senha"), O_RDONLY);
                   }),
              3);
}

TEST_F(ProgramaTeste, Output_ThatTakesNothing_EndsWith4)
{
    const auto erro = [&] { return BytesDe(Em("erros")); };
    const std::string frase = "A resposta não pôde ser escrita inteira na saída padrão.\n";
    EXPECT_EQ(Roda(ComRegistro({"cabeca"}),
                   [&] {
                       SemTerminal();
                       Abre(1, "/dev/full", O_WRONLY);
                   }),
              4);
    EXPECT_EQ(erro(), frase);

    // Closed: what the program opens must not come to stand in its place, for the answer would go into it.
    const std::string antes = BytesDe(Registro.Caminho()) + BytesDe(Registro.Caminho() + "-wal");
    for (const std::vector<std::string> &qual :
         {std::vector<std::string>{"cabeca"}, {"confere"}, {"copia", Em("copias")}}) {
        EXPECT_EQ(Roda(ComRegistro(qual),
                       [&] {
                           SemTerminal();
                           ::close(0);
                           ::close(1);
                       }),
                  4)
            << qual.front();
        EXPECT_NE(erro().find(frase), std::string::npos);
    }
    EXPECT_EQ(BytesDe(Registro.Caminho()) + BytesDe(Registro.Caminho() + "-wal"), antes);
    EXPECT_EQ(Roda(ComRegistro({"cabeca"}),
                   [&] {
                       SemTerminal();
                       ::close(2);
                   }),
              0)
        << "the answer came out";

    std::array<int, 2> cano{};
    ASSERT_EQ(::pipe2(cano.data(), O_CLOEXEC), 0);
    ::close(cano[0]);
    EXPECT_EQ(Roda(ComRegistro({"cabeca"}),
                   [&] {
                       SemTerminal();
                       ::dup2(cano[1], 1);
                   }),
              4);
    ::close(cano[1]);
    EXPECT_EQ(erro(), frase);
}

TEST_F(ProgramaTeste, Certificate_WhereTheDiskTakesNoMore_LeavesNoFile)
{
    const auto outro = EquipamentoDe("R-002");
    Poe(outro,
        Poe(SensorDe(1), AfericaoDe("C-2", DataDe(1, 1, 2026), DataDe(30, 6, 2026), GuardaPdf(Ana, "x", 50000))));
    Inclui(Ana, outro);
    Serve();
    std::ofstream(Em("senha")) << "senha de ana\n";
    ASSERT_EQ(::chmod(Em("senha").c_str(), 0600), 0);
    std::filesystem::create_directory(Em("destino"));
    const auto roda = [&](rlim_t cabe) {
        return Roda({"consulta", "--codigo", "R-002", "--dia", "30/06/2026", "--servidor", Onde(), "--digital",
                     Servidor->Digital(), "--usuario", "ana", "--senha-de", Em("senha"), "--certificado",
                     Em("destino/c.pdf")},
                    [&] {
                        SemTerminal();
                        // A file that may not grow is refused as by a full disk.
                        const rlimit limite{cabe, cabe};
                        ::setrlimit(RLIMIT_FSIZE, &limite);
                        ::signal(SIGXFSZ, SIG_IGN);
                    });
    };
    EXPECT_EQ(roda(20000), 4);
    EXPECT_TRUE(Nomes(Em("destino")).empty());
    EXPECT_EQ(BytesDe(Em("saida")), "");
    EXPECT_NE(BytesDe(Em("erros")).find("Não foi possível gravar " + Em("destino/c.pdf")), std::string::npos)
        << BytesDe(Em("erros"));
    EXPECT_EQ(roda(RLIM_INFINITY), 0) << BytesDe(Em("erros"));
    EXPECT_EQ(Nomes(Em("destino")), std::vector<std::string>{"c.pdf"});
    EXPECT_EQ(BytesDe(Em("destino/c.pdf")).size(), 50000u);
}

// A terminal, and what is seen on it.
class TerminalTeste : public ProgramaTeste {
  protected:
    // Whoever has the terminal waits for it, as a shell does, and ends with its code or 128 and the signal, or with
    // SemEcoNoFim when what is typed is not shown afterwards.
    void ComecaNoTerminal(const std::vector<std::string> &argumentos)
    {
        ASSERT_EQ(::openpty(&m_Mestre, &m_Dela, nullptr, nullptr, nullptr), 0);
        ::fcntl(m_Mestre, F_SETFD, FD_CLOEXEC);
        Comeca(argumentos, [&] {
            ::login_tty(m_Dela);
            ::signal(SIGINT, SIG_IGN);
            ::signal(SIGTERM, SIG_IGN);
            const pid_t programa = ::fork();
            if (programa == 0) {
                ::signal(SIGINT, SIG_DFL);
                ::signal(SIGTERM, SIG_DFL);
                return;
            }
            int como = 0;
            termios terminal{};
            if (programa < 0 || ::waitpid(programa, &como, 0) != programa || ::tcgetattr(0, &terminal) != 0) {
                ::_exit(127);
            }
            ::_exit((terminal.c_lflag & ECHO) == 0 ? SemEcoNoFim
                    : WIFEXITED(como)              ? WEXITSTATUS(como)
                                                   : 128 + WTERMSIG(como));
        });
    }
    // A question at a terminal to whoever has sent a signal before it is waited for, in a process of its own, which
    // ends with what the program would.
    void PerguntaDepoisDoSinal()
    {
        ASSERT_EQ(::openpty(&m_Mestre, &m_Dela, nullptr, nullptr, nullptr), 0);
        Comeca({}, [&] {
            ::login_tty(m_Dela);
            comando::Terminal terminal([] { return true; });
            try {
                terminal.Senha("Senha");
            } catch (const comando::Fim &fim) {
                termios como{};
                ::_exit(::tcgetattr(0, &como) == 0 && (como.c_lflag & ECHO) != 0 ? static_cast<int>(fim.Qual)
                                                                                 : SemEcoNoFim);
            }
            ::_exit(0);
        });
    }
    ~TerminalTeste() override
    {
        ::close(m_Mestre);
        ::close(m_Dela);
    }
    // What is seen, until that is in it.
    void Ve(const std::string &texto)
    {
        while (Visto.find(texto) == std::string::npos) {
            std::array<char, 4096> pedaco{};
            pollfd espera{m_Mestre, POLLIN, 0};
            ASSERT_EQ(::poll(&espera, 1, 60000), 1) << Visto;
            const ssize_t lidos = ::read(m_Mestre, pedaco.data(), pedaco.size());
            ASSERT_GT(lidos, 0) << Visto;
            Visto.append(pedaco.data(), static_cast<std::size_t>(lidos));
        }
    }
    void Digita(const std::string &texto) const
    {
        ASSERT_EQ(::write(m_Mestre, texto.data(), texto.size()), static_cast<ssize_t>(texto.size()));
    }
    bool TemEco() const
    {
        termios como{};
        EXPECT_EQ(::tcgetattr(m_Dela, &como), 0);
        return (como.c_lflag & ECHO) != 0;
    }

    // What is still to be seen after the end.
    void VeOResto()
    {
        ::fcntl(m_Mestre, F_SETFL, O_NONBLOCK);
        std::array<char, 4096> pedaco{};
        for (ssize_t lidos = 0; (lidos = ::read(m_Mestre, pedaco.data(), pedaco.size())) > 0;) {
            Visto.append(pedaco.data(), static_cast<std::size_t>(lidos));
        }
    }

    static constexpr int SemEcoNoFim = 250;
    std::string Visto;

  private:
    int m_Mestre = -1;
    int m_Dela = -1;
};

TEST_F(TerminalTeste, Password_TypedAtATerminal_IsAskedForAndNeverShown)
{
    ComecaNoTerminal(ComRegistro({"consulta", "--codigo", "R-001", "--dia", "30/06/2026", "--usuario", "ana"}));
    Ve("Senha de ana: ");
    EXPECT_FALSE(TemEco());
    Digita("senha de ana\n");
    Ve("Vale até: 30/06/2026");
    EXPECT_EQ(Espera(), 0);
    VeOResto();
    EXPECT_EQ(Visto.find("senha de ana"), std::string::npos) << Visto;
}

TEST_F(TerminalTeste, CtrlC_WhileThePasswordIsAskedFor_EndsBySignalWithTheEchoBack)
{
    ComecaNoTerminal(ComRegistro({"consulta", "--codigo", "R-001", "--dia", "30/06/2026", "--usuario", "ana"}));
    Ve("Senha de ana: ");
    EXPECT_FALSE(TemEco());
    Digita("senha\x03");
    Ve("Interrompido.");
    EXPECT_EQ(Espera(), 128 + SIGINT);
    VeOResto();
    EXPECT_EQ(Visto.find("senha"), std::string::npos) << Visto;
}

TEST_F(TerminalTeste, Signal_BeforeTheWaitForAKey_IsNotLost)
{
    PerguntaDepoisDoSinal();
    EXPECT_EQ(Espera(), static_cast<int>(comando::Codigo::Interrompido));
}

TEST_F(TerminalTeste, Termination_WhileThePasswordIsAskedFor_EndsBySignal)
{
    ComecaNoTerminal(ComRegistro({"consulta", "--codigo", "R-001", "--dia", "30/06/2026", "--usuario", "ana"}));
    Ve("Senha de ana: ");
    Manda(SIGTERM);
    EXPECT_EQ(Espera(), 128 + SIGTERM);
}

} // namespace
