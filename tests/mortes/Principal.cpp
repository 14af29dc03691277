// Rounds in which machines, programs and connections die while many save, and a table of what came of them.
#include "tests/mortes/Mistura.h"
#include "tests/mortes/Rodadas.h"

#include <QCoreApplication>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

using namespace mortes;

namespace {

constexpr int RodadasPorCenario = 20; // then everything is made anew, so that what is looked through stays small

// A small disk of this process's own, and of those that it starts.
class DiscoPequeno {
  public:
    DiscoPequeno()
    {
        if (mkdtemp(m_Ponto.data()) == nullptr || mount("tmpfs", m_Ponto.c_str(), "tmpfs", 0, "size=250m") != 0) {
            throw std::runtime_error("no small disk");
        }
    }
    DiscoPequeno(const DiscoPequeno &) = delete;
    DiscoPequeno &operator=(const DiscoPequeno &) = delete;
    ~DiscoPequeno()
    {
        umount(m_Ponto.c_str());
        rmdir(m_Ponto.c_str());
    }
    const std::string &Ponto() const { return m_Ponto; }

  private:
    std::string m_Ponto = "/tmp/disco-XXXXXX";
};

struct Pedidas {
    int Rodadas = 20;
    std::string Tipo; // only of that kind
    int Clientes = 50;
    int Mistura = 0; // so many mixed operations, and no rounds
    std::uint64_t Semente = 20261122;
};

template <class Numero> bool Le(std::string_view texto, Numero &numero)
{
    const auto [ate, erro] = std::from_chars(texto.data(), texto.data() + texto.size(), numero);
    return erro == std::errc() && ate == texto.data() + texto.size() && numero > 0;
}

bool Le(int argc, char **argv, Pedidas &pedidas)
{
    for (int n = 1; n < argc; n += 2) {
        const std::string_view opcao = argv[n];
        if (n + 1 == argc) {
            return false;
        }
        const std::string_view valor = argv[n + 1];
        if (opcao == "--tipo") {
            pedidas.Tipo = valor;
        } else if (!(opcao == "--rodadas" && Le(valor, pedidas.Rodadas)) &&
                   !(opcao == "--mistura" && Le(valor, pedidas.Mistura)) &&
                   !(opcao == "--clientes" && Le(valor, pedidas.Clientes)) &&
                   !(opcao == "--semente" && Le(valor, pedidas.Semente))) {
            return false;
        }
    }
    return true;
}

// What was asked for cannot be done here, for the reason.
struct Pulada {
    std::string Motivo;
};

// One kind for each round: of twenty rounds the first are one of each, and the others mixed.
std::vector<const Tipo *> Ordem(const Pedidas &pedidas)
{
    std::vector<const Tipo *> umaDeCada;
    std::vector<const Tipo *> outras;
    // In its own mounts from now on, if any.
    const bool comDisco =
        geteuid() == 0 && unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    for (const Tipo &tipo : Tipos()) {
        if (tipo.DiscoProprio && !comDisco && pedidas.Tipo == tipo.Nome) {
            throw Pulada{"a small disk takes the rights of root"};
        }
        if (tipo.DiscoProprio && !comDisco) {
            std::fprintf(stderr, "%s: left out, a small disk takes the rights of root\n", tipo.Nome.c_str());
        } else if (pedidas.Tipo.empty() || pedidas.Tipo == tipo.Nome) {
            umaDeCada.push_back(&tipo);
            outras.insert(outras.end(), static_cast<std::size_t>(pedidas.Tipo.empty() ? tipo.DeVinte - 1 : 0), &tipo);
        }
    }
    if (umaDeCada.empty()) {
        throw std::runtime_error("no kind of that name: " + pedidas.Tipo);
    }
    std::vector<const Tipo *> ordem;
    std::mt19937_64 sorteio(pedidas.Semente);
    while (ordem.size() < static_cast<std::size_t>(pedidas.Rodadas)) {
        for (auto *parte : {&umaDeCada, &outras}) {
            std::shuffle(parte->begin(), parte->end(), sorteio);
            ordem.insert(ordem.end(), parte->begin(), parte->end());
        }
    }
    ordem.resize(static_cast<std::size_t>(pedidas.Rodadas));
    return ordem;
}

double Segundos(std::chrono::steady_clock::duration tempo)
{
    return std::chrono::duration<double>(tempo).count();
}

void Linha(const std::string &morte, const Medida &m)
{
    std::printf("| %s | %d | %zu | %zu | %zu | %zu | %zu | %zu | %.1f | %.0f |\n", morte.c_str(), m.Rodadas,
                m.Respondidas, m.SemResposta, m.Perdidas, m.Duplas, m.Metades, m.Outros, Segundos(m.Pausa),
                Segundos(m.Durou));
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
try {
    const QCoreApplication aplicacao(argc, argv);
    Pedidas pedidas;
    if (!Le(argc, argv, pedidas)) {
        std::fputs("usage: mortes [--rodadas N] [--tipo KIND] [--clientes N] [--semente N]\n"
                   "       mortes --mistura N\nkinds:",
                   stderr);
        for (const Tipo &tipo : Tipos()) {
            std::fprintf(stderr, " %s", tipo.Nome.c_str());
        }
        std::fputs("\n", stderr);
        return 2;
    }
    if (pedidas.Mistura > 0) {
        const auto inicio = std::chrono::steady_clock::now();
        Cenario cenario({.Clientes = 4, .ComReserva = false, .Duravel = false});
        const std::vector<std::string> erradas = Mistura(cenario, pedidas.Mistura);
        for (const std::string &errada : erradas) {
            std::puts(errada.c_str());
        }
        std::printf("%d operations in %.0f s, %zu sums wrong\n", pedidas.Mistura,
                    Segundos(std::chrono::steady_clock::now() - inicio), erradas.size());
        return erradas.empty() ? 0 : 1;
    }
    std::mt19937_64 sorteio(pedidas.Semente);
    std::map<std::string, Medida> porTipo;
    Medida todas;
    std::unique_ptr<Cenario> cenario;
    int noCenario = 0;
    const auto termina = [&todas](Cenario &este) {
        const Achados achados = este.EncerraServidores();
        std::fputs(achados.Texto().c_str(), stderr);
        todas.Outros += achados.Outros.size();
    };
    for (const Tipo *tipo : Ordem(pedidas)) {
        Medida medida;
        if (tipo->DiscoProprio) {
            const DiscoPequeno disco;
            Cenario neste({.Clientes = pedidas.Clientes, .ComReserva = false, .Disco = disco.Ponto()});
            medida = Roda(*tipo, neste, sorteio);
            termina(neste);
        } else {
            if (cenario != nullptr && noCenario == RodadasPorCenario) {
                termina(*cenario);
                cenario.reset();
            }
            if (cenario == nullptr) {
                cenario = std::make_unique<Cenario>(Cenario::Como{.Clientes = pedidas.Clientes});
                noCenario = 0;
            }
            medida = Roda(*tipo, *cenario, sorteio);
            ++noCenario;
            if (!medida.Boa()) {
                cenario.reset(); // it stays broken, and would be found again
            }
        }
        porTipo[tipo->Nome] += medida;
        todas += medida;
        std::fprintf(stderr, "%d %s: %zu answered, %.1f s\n", todas.Rodadas, tipo->Nome.c_str(), medida.Respondidas,
                     Segundos(medida.Durou));
    }
    if (cenario != nullptr) {
        termina(*cenario);
    }
    std::puts("| what dies | rounds | answered saves | not answered | lost | double | half | other | longest wait, s | "
              "seconds |\n|---|---:|---:|---:|---:|---:|---:|---:|---:|---:|");
    for (const Tipo &tipo : Tipos()) {
        if (const auto medida = porTipo.find(tipo.Nome); medida != porTipo.end()) {
            Linha(tipo.Morte, medida->second);
        }
    }
    Linha("all", todas);
    return todas.Boa() ? 0 : 1;
} catch (const Pulada &pulada) {
    std::printf("mortes: Skipped\n%s\n\n", pulada.Motivo.c_str());
    return 77;
} catch (const std::exception &erro) {
    std::fprintf(stderr, "%s\n", erro.what());
    return 1;
}
