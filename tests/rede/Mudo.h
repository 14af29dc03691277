#pragma once

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <stdexcept>

// Takes connections on a port of this machine, and never says a word.
class Mudo {
  public:
    explicit Mudo(std::uint16_t porta = 0) : m_Soquete(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in onde{};
        onde.sin_family = AF_INET;
        onde.sin_port = htons(porta);
        onde.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t tamanho = sizeof onde;
        const int sim = 1;
        setsockopt(m_Soquete, SOL_SOCKET, SO_REUSEADDR, &sim, sizeof sim);
        if (bind(m_Soquete, reinterpret_cast<sockaddr *>(&onde), sizeof onde) != 0 || listen(m_Soquete, 16) != 0 ||
            getsockname(m_Soquete, reinterpret_cast<sockaddr *>(&onde), &tamanho) != 0) {
            throw std::runtime_error("no port for the test");
        }
        m_Porta = ntohs(onde.sin_port);
    }
    Mudo(const Mudo &) = delete;
    Mudo &operator=(const Mudo &) = delete;
    ~Mudo() { close(m_Soquete); }
    std::uint16_t Porta() const { return m_Porta; }

  private:
    int m_Soquete;
    std::uint16_t m_Porta = 0;
};
