#include "tests/mortes/Ponte.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <random>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace mortes {

namespace {

[[noreturn]] void Falhou(const char *oQue)
{
    throw std::system_error(errno, std::generic_category(), oQue);
}

sockaddr_in NaMaquina(std::uint16_t porta)
{
    sockaddr_in endereco{};
    endereco.sin_family = AF_INET;
    endereco.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    endereco.sin_port = htons(porta);
    return endereco;
}

int Soquete(int familia)
{
    const int soquete = socket(familia, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (soquete < 0) {
        Falhou("socket");
    }
    return soquete;
}

// Bound to a port that the system chooses.
int SoqueteLigado(std::uint16_t &porta)
{
    const int soquete = Soquete(AF_INET);
    sockaddr_in endereco = NaMaquina(0);
    socklen_t tamanho = sizeof endereco;
    if (bind(soquete, reinterpret_cast<sockaddr *>(&endereco), sizeof endereco) != 0 ||
        getsockname(soquete, reinterpret_cast<sockaddr *>(&endereco), &tamanho) != 0) {
        Falhou("bind");
    }
    porta = ntohs(endereco.sin_port);
    return soquete;
}

template <class Endereco> int Liga(int familia, const Endereco &endereco)
{
    const int soquete = Soquete(familia);
    if (connect(soquete, reinterpret_cast<const sockaddr *>(&endereco), sizeof endereco) != 0) {
        close(soquete);
        return -1;
    }
    return soquete;
}

// -1 when nobody answers there.
int Liga(const Destino &destino)
{
    if (destino.Soquete.empty()) {
        const int soquete = Liga(AF_INET, NaMaquina(destino.Porta));
        const int sim = 1;
        setsockopt(soquete, IPPROTO_TCP, TCP_NODELAY, &sim, sizeof sim);
        return soquete;
    }
    sockaddr_un endereco{};
    endereco.sun_family = AF_UNIX;
    if (destino.Soquete.size() >= sizeof endereco.sun_path) {
        throw std::runtime_error("the name of the socket is too long: " + destino.Soquete);
    }
    std::ranges::copy(destino.Soquete, endereco.sun_path);
    return Liga(AF_UNIX, endereco);
}

// Ends it so that the other end sees it broken, and not ended in order.
void Quebra(int soquete)
{
    const linger nada{1, 0};
    setsockopt(soquete, SOL_SOCKET, SO_LINGER, &nada, sizeof nada);
    close(soquete);
}

bool EscreveTudo(int para, const char *octetos, std::size_t tamanho)
{
    while (tamanho > 0) {
        const ssize_t escritos = send(para, octetos, tamanho, MSG_NOSIGNAL);
        if (escritos <= 0) {
            return false;
        }
        octetos += escritos;
        tamanho -= static_cast<std::size_t>(escritos);
    }
    return true;
}

} // namespace

std::vector<Destino> NasPortas(std::initializer_list<std::uint16_t> portas)
{
    std::vector<Destino> destinos;
    for (const std::uint16_t porta : portas) {
        destinos.push_back({.Soquete = {}, .Porta = porta});
    }
    return destinos;
}

Ponte::Ponte(std::vector<Destino> destinos)
    : m_Escuta(SoqueteLigado(m_Porta)),
      m_Aviso(eventfd(0, EFD_CLOEXEC)),
      m_Destinos(std::move(destinos))
{
    if (listen(m_Escuta, SOMAXCONN) != 0 || m_Aviso < 0) {
        Falhou("listen");
    }
    m_Fio = std::thread([this] { Leva(); });
}

Ponte::~Ponte()
{
    m_Fim = true;
    eventfd_write(m_Aviso, 1);
    m_Fio.join();
    close(m_Escuta);
    close(m_Aviso);
}

void Ponte::PoeDestinos(std::vector<Destino> destinos)
{
    const std::lock_guard tranca(m_Tranca);
    m_Destinos = std::move(destinos);
}

void Ponte::CortaAntesDe(Sentido sentido, std::size_t octeto)
{
    const std::lock_guard tranca(m_Tranca);
    m_Corte = Corte{sentido, octeto};
}

void Ponte::NaoCorta()
{
    const std::lock_guard tranca(m_Tranca);
    m_Corte.reset();
}

std::size_t Ponte::Cabem(Sentido sentido, std::size_t querem, bool &corta)
{
    const std::lock_guard tranca(m_Tranca);
    if (!m_Corte || m_Corte->Onde != sentido) {
        return querem;
    }
    if (querem <= m_Corte->Faltam) {
        m_Corte->Faltam -= querem;
        return querem;
    }
    corta = true;
    const std::size_t cabem = m_Corte->Faltam;
    m_Corte.reset();
    ++m_Cortes;
    return cabem;
}

bool Ponte::Passa(int de, int para, Sentido sentido)
{
    std::array<char, 16384> parte{};
    const ssize_t lidos = recv(de, parte.data(), parte.size(), 0);
    if (lidos <= 0) {
        return false;
    }
    bool corta = false;
    const std::size_t cabem = Cabem(sentido, static_cast<std::size_t>(lidos), corta);
    m_Passaram[static_cast<std::size_t>(sentido)] += cabem;
    return EscreveTudo(para, parte.data(), cabem) && !corta;
}

void Ponte::Aceita()
{
    const int cliente = accept4(m_Escuta, nullptr, nullptr, SOCK_CLOEXEC);
    if (cliente < 0) {
        return;
    }
    std::vector<Destino> destinos;
    {
        const std::lock_guard tranca(m_Tranca);
        destinos = m_Destinos;
    }
    for (const Destino &destino : destinos) {
        if (const int servidor = Liga(destino); servidor >= 0) {
            const int sim = 1;
            setsockopt(cliente, IPPROTO_TCP, TCP_NODELAY, &sim, sizeof sim);
            m_Ligacoes.push_back({cliente, servidor});
            return;
        }
    }
    Quebra(cliente);
}

void Ponte::Leva()
{
    std::vector<pollfd> espera;
    while (!m_Fim) {
        espera = {{m_Aviso, POLLIN, 0}, {m_Escuta, POLLIN, 0}};
        for (const Ligacao &ligacao : m_Ligacoes) {
            espera.push_back({ligacao.Cliente, POLLIN, 0});
            espera.push_back({ligacao.Servidor, POLLIN, 0});
        }
        if (poll(espera.data(), espera.size(), -1) < 0) {
            continue;
        }
        std::vector<Ligacao> seguem;
        for (std::size_t n = 0; n < m_Ligacoes.size(); ++n) {
            const Ligacao ligacao = m_Ligacoes[n];
            if (espera[2 + 2 * n].revents != 0 && !Passa(ligacao.Cliente, ligacao.Servidor, Sentido::Ida)) {
                Quebra(ligacao.Cliente);
                close(ligacao.Servidor); // what went before arrives
            } else if (espera[3 + 2 * n].revents != 0 && !Passa(ligacao.Servidor, ligacao.Cliente, Sentido::Volta)) {
                Quebra(ligacao.Servidor);
                close(ligacao.Cliente);
            } else {
                seguem.push_back(ligacao);
            }
        }
        m_Ligacoes = std::move(seguem);
        if (espera[1].revents != 0) {
            Aceita();
        }
    }
    for (const Ligacao &ligacao : m_Ligacoes) {
        Quebra(ligacao.Cliente);
        Quebra(ligacao.Servidor);
    }
}

std::uint16_t PortaLivre()
{
    // Below those that the system gives to who asks for any, so that nobody is given it before it is used.
    static std::random_device acaso;
    std::uniform_int_distribution<int> alguma(10000, 32000);
    for (;;) {
        const auto porta = static_cast<std::uint16_t>(alguma(acaso));
        const int soquete = Soquete(AF_INET);
        const sockaddr_in endereco = NaMaquina(porta);
        const bool livre = bind(soquete, reinterpret_cast<const sockaddr *>(&endereco), sizeof endereco) == 0;
        close(soquete);
        if (livre) {
            return porta;
        }
    }
}

bool Atende(std::uint16_t porta)
{
    const int soquete = Liga(Destino{{}, porta});
    if (soquete < 0) {
        return false;
    }
    close(soquete);
    return true;
}

} // namespace mortes
