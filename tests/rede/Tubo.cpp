#include "Tubo.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace {

sockaddr_in DestaMaquina(std::uint16_t porta)
{
    sockaddr_in onde{};
    onde.sin_family = AF_INET;
    onde.sin_port = htons(porta);
    onde.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return onde;
}

} // namespace

Tubo::Tubo(std::uint16_t para, std::int64_t porSegundo) : m_Para(para), m_PorSegundo(porSegundo)
{
    m_Escuta = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    GuardaPouco(m_Escuta);
    sockaddr_in onde = DestaMaquina(0);
    socklen_t tamanho = sizeof onde;
    if (bind(m_Escuta, reinterpret_cast<sockaddr *>(&onde), sizeof onde) != 0 || listen(m_Escuta, 16) != 0 ||
        getsockname(m_Escuta, reinterpret_cast<sockaddr *>(&onde), &tamanho) != 0 || pipe(m_Fim) != 0) {
        throw std::runtime_error("no port for the test");
    }
    m_Porta = ntohs(onde.sin_port);
    m_Fio = std::thread([this] { Roda(); });
}

Tubo::~Tubo()
{
    close(m_Fim[1]);
    m_Fio.join();
    close(m_Fim[0]);
    close(m_Escuta);
}

void Tubo::CortaEm(Sentido sentido, std::int64_t octetos)
{
    const std::lock_guard guarda(m_Tranca);
    m_Falta[0] = m_Falta[1] = -1;
    m_Falta[static_cast<int>(sentido)] = octetos;
    m_Passaram[0] = m_Passaram[1] = 0;
    m_Cortes = 0;
}

// A slow line has what is on its way in it, and not in the buffers of its ends.
void Tubo::GuardaPouco(int soquete) const
{
    if (m_PorSegundo > 0) {
        const int pouco = 8192;
        setsockopt(soquete, SOL_SOCKET, SO_RCVBUF, &pouco, sizeof pouco);
    }
}

// False when the connection is to end.
bool Tubo::Passa(int de, int para, int sentido)
{
    if (m_Calado) {
        return true;
    }
    char octetos[16384];
    const ssize_t lidos = recv(de, octetos, sizeof octetos, 0);
    if (lidos <= 0) {
        return false;
    }
    if (m_PorSegundo > 0) { // the line is as long taken up
        std::this_thread::sleep_for(
            std::chrono::duration<double>(static_cast<double>(lidos) / static_cast<double>(m_PorSegundo)));
    }
    const std::lock_guard guarda(m_Tranca);
    std::int64_t passam = lidos;
    if (m_Falta[sentido] >= 0) {
        passam = std::min<std::int64_t>(passam, m_Falta[sentido]);
        m_Falta[sentido] -= passam;
    }
    for (std::int64_t foram = 0; foram < passam;) {
        const ssize_t agora = send(para, octetos + foram, static_cast<std::size_t>(passam - foram), MSG_NOSIGNAL);
        if (agora <= 0) {
            return false;
        }
        foram += agora;
    }
    m_Passaram[sentido] += passam;
    if (passam == lidos && m_Falta[sentido] != 0) {
        return true;
    }
    m_Falta[sentido] = -1;
    ++m_Cortes;
    return false;
}

void Tubo::Roda()
{
    for (;;) {
        std::vector<pollfd> olhados{{m_Fim[0], POLLIN, 0}, {m_Escuta, POLLIN, 0}};
        for (const Ligacao &ligacao : m_Ligacoes) {
            const short oQue = m_Calado ? 0 : POLLIN;
            olhados.push_back({m_Calado ? -1 : ligacao.Cliente, oQue, 0});
            olhados.push_back({m_Calado ? -1 : ligacao.Servidor, oQue, 0});
        }
        if (poll(olhados.data(), olhados.size(), -1) < 0) {
            continue;
        }
        if (olhados[0].revents != 0) {
            break;
        }
        std::vector<Ligacao> vivas;
        for (std::size_t n = 0; n < m_Ligacoes.size(); ++n) {
            const Ligacao ligacao = m_Ligacoes[n];
            const bool vive = (olhados[2 + 2 * n].revents == 0 || Passa(ligacao.Cliente, ligacao.Servidor, 0)) &&
                              (olhados[3 + 2 * n].revents == 0 || Passa(ligacao.Servidor, ligacao.Cliente, 1));
            if (vive) {
                vivas.push_back(ligacao);
            } else {
                close(ligacao.Cliente);
                close(ligacao.Servidor);
            }
        }
        if (olhados[1].revents != 0) {
            const int cliente = accept(m_Escuta, nullptr, nullptr);
            const int servidor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
            GuardaPouco(servidor);
            const sockaddr_in onde = DestaMaquina(m_Para);
            if (cliente >= 0 && connect(servidor, reinterpret_cast<const sockaddr *>(&onde), sizeof onde) == 0) {
                vivas.push_back({cliente, servidor});
            } else {
                close(cliente);
                close(servidor);
            }
        }
        m_Ligacoes = std::move(vivas);
    }
    for (const Ligacao &ligacao : m_Ligacoes) {
        close(ligacao.Cliente);
        close(ligacao.Servidor);
    }
}
