#include "comando/Programa.h"
#include "comando/Terminal.h"
#include "rede/LugaresConhecidos.h"
#include "services/Relogio.h"

#include <QCoreApplication>

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>

#include <iostream>
#include <optional>

namespace comando {

namespace {

volatile sig_atomic_t chegou = 0; // the signal that came

extern "C" void Anota(int sinal)
{
    chegou = sinal;
}

// The first of these ends the program in order; a second one, at once. No wait goes on by itself after it.
void OuveSinais()
{
    struct sigaction como {};
    como.sa_handler = Anota;
    como.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int sinal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction antes {};
        // What whoever called has told this program to pass over stays so, as under nohup.
        if (::sigaction(sinal, nullptr, &antes) == 0 && antes.sa_handler != SIG_IGN) {
            ::sigaction(sinal, &como, nullptr);
        }
    }
    ::signal(SIGPIPE, SIG_IGN); // who reads the answer no more is told of by the writing
}

// A registry must not be opened in the place of a standard stream that was closed: what is written there would go into
// it. Writing to what stands in instead fails, as it would have.
void OcupaFechados()
{
    for (int qual = 0; qual <= 2; ++qual) {
        if (::fcntl(qual, F_GETFD) == -1) {
            ::open("/dev/null", qual == 0 ? O_WRONLY : O_RDONLY); // the lowest that is free
        }
    }
}

} // namespace

} // namespace comando

int main(int argc, char **argv)
{
    using namespace comando;
    OcupaFechados();
    OuveSinais();
    ::umask(S_IRWXG | S_IRWXO); // whatever is written is the user's own
    const QCoreApplication aplicacao(argc, argv);
    const auto interrompido = [] { return chegou != 0; };
    Terminal terminal(interrompido);
    Ambiente ambiente{std::cin,
                      std::cout,
                      std::cerr,
                      Terminal::Ha() ? &terminal : nullptr,
                      rede::LugaresConhecidos::ArquivoDoUsuario(),
                      mesa::Agora,
                      interrompido};
    const Codigo codigo = Programa({argv + 1, argv + argc}, ambiente);
    if (codigo == Codigo::Interrompido && chegou != 0) {
        ::raise(chegou); // whoever called sees what ended it
    }
    return static_cast<int>(codigo);
}
