#include "server/Programa.h"

#include "host/Data.h"

#include <QCoreApplication>

#include <malloc.h>
#include <signal.h>
#include <sys/stat.h>
#include <time.h>

#include <atomic>
#include <iostream>

namespace servidor {

namespace {

// The moment it is, by the machine's clock, with the offset of its time zone. The toolkit looks for the zone anew each
// time that it is asked; here that is once a second.
mesa::Instante Agora()
{
    static std::atomic<time_t> olhou = 0;
    const time_t relogio = ::time(nullptr);
    if (olhou.exchange(relogio) != relogio) {
        ::tzset();
    }
    tm agora{};
    ::localtime_r(&relogio, &agora);
    return {DataDe(agora.tm_mday, agora.tm_mon + 1, agora.tm_year + 1900, agora.tm_hour, agora.tm_min, agora.tm_sec),
            static_cast<std::int32_t>(agora.tm_gmtoff / 60)};
}

} // namespace

} // namespace servidor

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
    return servidor::Programa(linha, {std::cin, std::cout, std::cerr}, servidor::Agora, [&fim] {
        int sinal = 0;
        ::sigwait(&fim, &sinal);
    });
}
