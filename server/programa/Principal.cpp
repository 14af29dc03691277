#include "server/Programa.h"

#include "services/Relogio.h"

#include <QCoreApplication>

#include <malloc.h>
#include <signal.h>
#include <sys/stat.h>

#include <iostream>

int main(int argc, char **argv)
{
    ::umask(S_IRWXG | S_IRWXO); // whatever is written is the server's own
    ::signal(SIGPIPE, SIG_IGN);
    // Many threads, each with a pool of memory that has holes of its own, make the server grow under load.
    ::mallopt(M_ARENA_MAX, 2);
    const QCoreApplication aplicacao(argc, argv);
    QCoreApplication::setApplicationName("registro-servidor");
    const servidor::LinhaDeComando linha = servidor::LinhaDeComando::Le(QCoreApplication::arguments());
    sigset_t fim;
    ::sigemptyset(&fim);
    for (const int sinal : {SIGTERM, SIGINT, SIGHUP}) {
        ::sigaddset(&fim, sinal);
    }
    // A server ends in order. Before there is any thread, so that all of them leave these to the one that waits for
    // them. Whatever else is done ends where it stands, and leaves nothing half done.
    if (linha.OQue == servidor::LinhaDeComando::Ato::Serve) {
        ::pthread_sigmask(SIG_BLOCK, &fim, nullptr);
    }
    return servidor::Programa(linha, {std::cin, std::cout, std::cerr}, mesa::Agora, [&fim] {
        int sinal = 0;
        ::sigwait(&fim, &sinal);
    });
}
