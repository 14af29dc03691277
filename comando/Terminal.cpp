#include "comando/Terminal.h"

#include "comando/Fim.h"
#include "host/Texto.h"

#include <poll.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace comando {

namespace {

// What is typed is not shown while this lives.
class SemEco {
  public:
    SemEco()
    {
        if (::tcgetattr(STDIN_FILENO, &m_Antes) != 0) {
            throw Fim(Codigo::NaoAlcancado, "O terminal não deixa esconder o que se digita. Nada foi lido.");
        }
        termios calado = m_Antes;
        calado.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        calado.c_lflag |= ECHONL;
        if (::tcsetattr(STDIN_FILENO, TCSAFLUSH, &calado) != 0) {
            throw Fim(Codigo::NaoAlcancado, "O terminal não deixa esconder o que se digita. Nada foi lido.");
        }
    }
    SemEco(const SemEco &) = delete;
    SemEco &operator=(const SemEco &) = delete;
    ~SemEco() { ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_Antes); }

  private:
    termios m_Antes{};
};

// While this lives, the signals that end the program come only where it waits for a key: none is lost between the look
// at whether one came and the wait.
class SinaisNaEspera {
  public:
    SinaisNaEspera()
    {
        sigset_t deles;
        ::sigemptyset(&deles);
        for (const int sinal : {SIGINT, SIGTERM, SIGHUP}) {
            ::sigaddset(&deles, sinal);
        }
        ::pthread_sigmask(SIG_BLOCK, &deles, &m_Antes);
    }
    SinaisNaEspera(const SinaisNaEspera &) = delete;
    SinaisNaEspera &operator=(const SinaisNaEspera &) = delete;
    ~SinaisNaEspera() { ::pthread_sigmask(SIG_SETMASK, &m_Antes, nullptr); }

    // Whether there is something to read; not when a signal came. It does not wait for ever: with a server there are
    // other threads, and one of them may have had the signal.
    bool EsperaTecla() const
    {
        pollfd tecla{STDIN_FILENO, POLLIN, 0};
        const timespec bastante{1, 0};
        return ::ppoll(&tecla, 1, &bastante, &m_Antes) > 0;
    }

  private:
    sigset_t m_Antes{};
};

} // namespace

bool Terminal::Ha()
{
    return ::isatty(STDIN_FILENO) != 0 && ::isatty(STDERR_FILENO) != 0;
}

// Octet by octet, and into memory that wipes itself: no stream keeps a copy.
mesa::Segredo Terminal::Linha() const
{
    constexpr std::size_t bastante = 1024;
    std::vector<char, mesa::AlocadorQueLimpa<char>> linha;
    linha.reserve(bastante);
    const SinaisNaEspera sinais;
    for (;;) {
        if (m_Interrompido()) {
            throw Interrupcao();
        }
        if (!sinais.EsperaTecla()) {
            continue;
        }
        char um = 0;
        const ssize_t lidos = ::read(STDIN_FILENO, &um, 1);
        if (lidos < 0 && errno == EAGAIN) { // another one read it first
            continue;
        }
        if (lidos <= 0) {
            throw Interrupcao();
        }
        if (um == '\n') {
            return mesa::Segredo(std::string_view(linha.data(), linha.size()));
        }
        linha.push_back(um);
    }
}

mesa::Segredo Terminal::Senha(const std::string &pergunta)
{
    const SemEco semEco;
    std::cerr << pergunta << ": " << std::flush;
    return Linha();
}

bool Terminal::Aceita(const std::string &pergunta)
{
    std::cerr << pergunta << " (sim/não) " << std::flush;
    const std::string resposta = UCase(Trim(Linha().Texto()));
    return resposta == "SIM" || resposta == "S";
}

} // namespace comando
