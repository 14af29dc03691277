#include "bench/servidor/Processos.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <stdexcept>

namespace {

constexpr std::chrono::seconds PrazoDoFim{30};

struct Estado {
    pid_t Pai = 0;
    double Seus = 0;      // seconds
    double DosFilhos = 0; // that it waited for
};

Estado EstadoDe(pid_t processo)
{
    std::ifstream arquivo("/proc/" + std::to_string(processo) + "/stat");
    std::string tudo;
    std::getline(arquivo, tudo);
    const std::size_t nome = tudo.rfind(')'); // the name may have blanks
    if (nome == std::string::npos) {
        return {};
    }
    std::istringstream campos(tudo.substr(nome + 1));
    std::string pulado;
    Estado estado;
    campos >> pulado >> estado.Pai;
    for (int campo = 5; campo <= 13; ++campo) {
        campos >> pulado;
    }
    double usuario = 0;
    double sistema = 0;
    double filhosUsuario = 0;
    double filhosSistema = 0;
    campos >> usuario >> sistema >> filhosUsuario >> filhosSistema;
    const auto porSegundo = static_cast<double>(sysconf(_SC_CLK_TCK));
    estado.Seus = (usuario + sistema) / porSegundo;
    estado.DosFilhos = (filhosUsuario + filhosSistema) / porSegundo;
    return estado;
}

// A socket of the loopback for that port.
template <class Usa> bool NaPorta(std::uint16_t porta, Usa &&usa)
{
    sockaddr_in onde{};
    onde.sin_family = AF_INET;
    onde.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    onde.sin_port = htons(porta);
    const int tomada = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool feito = usa(tomada, reinterpret_cast<sockaddr *>(&onde), socklen_t{sizeof onde});
    close(tomada);
    return feito;
}

} // namespace

Processo::Processo(const std::vector<std::string> &comando, const std::string &registro)
{
    std::vector<char *> argumentos;
    for (const std::string &parte : comando) {
        argumentos.push_back(const_cast<char *>(parte.c_str()));
    }
    argumentos.push_back(nullptr);
    const pid_t pai = getpid();
    m_Numero = fork();
    if (m_Numero < 0) {
        throw std::runtime_error("fork");
    }
    if (m_Numero == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != pai) {
            _exit(126);
        }
        const int saida = open(registro.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        dup2(saida, STDOUT_FILENO);
        dup2(saida, STDERR_FILENO);
        execv(argumentos.front(), argumentos.data());
        _exit(127);
    }
}

Processo::~Processo()
{
    Encerra();
}

bool Processo::Anda()
{
    if (m_Numero != 0 && waitpid(m_Numero, nullptr, WNOHANG) != 0) {
        m_Numero = 0;
    }
    return m_Numero != 0;
}

int Processo::Encerra()
{
    if (m_Numero == 0) {
        return -1;
    }
    kill(m_Numero, SIGTERM);
    int estado = 0;
    const auto ate = std::chrono::steady_clock::now() + PrazoDoFim;
    while (waitpid(m_Numero, &estado, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > ate) {
            kill(m_Numero, SIGKILL);
            waitpid(m_Numero, &estado, 0);
            m_Numero = 0;
            return -1;
        }
        usleep(10'000);
    }
    m_Numero = 0;
    return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
}

double SegundosDe(pid_t processo)
{
    const Estado estado = EstadoDe(processo);
    return estado.Seus + estado.DosFilhos;
}

double SegundosDaArvore(pid_t raiz)
{
    std::multimap<pid_t, pid_t> filhos;
    for (const auto &entrada : std::filesystem::directory_iterator("/proc")) {
        const std::string nome = entrada.path().filename();
        if (nome.find_first_not_of("0123456789") == std::string::npos) {
            const pid_t processo = std::stoi(nome);
            filhos.emplace(EstadoDe(processo).Pai, processo);
        }
    }
    double soma = 0;
    std::vector<pid_t> caminho{raiz};
    while (!caminho.empty()) {
        const pid_t processo = caminho.back();
        caminho.pop_back();
        soma += SegundosDe(processo);
        const auto [de, ate] = filhos.equal_range(processo);
        for (auto filho = de; filho != ate; ++filho) {
            caminho.push_back(filho->second);
        }
    }
    return soma;
}

std::uint16_t PortaLivre()
{
    // Below those that the system gives to who asks for any, so that nobody is given it before it is used.
    std::random_device acaso;
    std::uniform_int_distribution<int> alguma(10000, 32000);
    for (;;) {
        const auto porta = static_cast<std::uint16_t>(alguma(acaso));
        if (NaPorta(porta,
                    [](int tomada, sockaddr *onde, socklen_t tamanho) { return bind(tomada, onde, tamanho) == 0; })) {
            return porta;
        }
    }
}

bool Atende(std::uint16_t porta)
{
    return NaPorta(porta,
                   [](int tomada, sockaddr *onde, socklen_t tamanho) { return connect(tomada, onde, tamanho) == 0; });
}

std::size_t MemoriaDe(pid_t processo)
{
    std::ifstream arquivo("/proc/" + std::to_string(processo) + "/statm");
    std::size_t todas = 0;
    std::size_t residentes = 0;
    arquivo >> todas >> residentes;
    return residentes * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}
