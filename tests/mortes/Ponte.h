#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace mortes {

// Where a bridge leads to: a socket in a directory, or a port of the loopback where there is none.
struct Destino {
    std::string Soquete = {};
    std::uint16_t Porta = 0;
};

// Ports of the loopback, in that order.
std::vector<Destino> NasPortas(std::initializer_list<std::uint16_t> portas);

// Leads connections from a port of the loopback to one of several places, as what stands between two machines does, and
// cuts them. Whoever connects is led to the first destination that answers.
class Ponte {
  public:
    enum class Sentido {
        Ida,  // what the one who connected says
        Volta // what it is answered
    };

    // In the order in which they are tried.
    explicit Ponte(std::vector<Destino> destinos);
    Ponte(const Ponte &) = delete;
    Ponte &operator=(const Ponte &) = delete;
    ~Ponte();

    std::uint16_t Porta() const { return m_Porta; }

    void PoeDestinos(std::vector<Destino> destinos);
    // The connection over which, counted from now on, that octet would go is cut before it: what went before arrives.
    // Once; takes the place of a cut that has not come yet.
    void CortaAntesDe(Sentido sentido, std::size_t octeto);
    // Takes back a cut that has not come yet.
    void NaoCorta();
    // Cuts that have come.
    std::size_t Cortes() const { return m_Cortes; }
    // Octets that went that way, over all connections.
    std::size_t Passaram(Sentido sentido) const { return m_Passaram[static_cast<std::size_t>(sentido)]; }

  private:
    struct Ligacao {
        int Cliente = -1;
        int Servidor = -1;
    };

    void Leva();
    void Aceita();
    // What there is to read on one end goes to the other; false when the connection has ended.
    bool Passa(int de, int para, Sentido sentido);
    std::size_t Cabem(Sentido sentido, std::size_t querem, bool &corta);

    std::uint16_t m_Porta = 0; // before the socket, which tells it
    int m_Escuta = -1;
    int m_Aviso = -1; // tells the thread to look again
    std::mutex m_Tranca;
    std::vector<Destino> m_Destinos;
    struct Corte {
        Sentido Onde;
        std::size_t Faltam;
    };
    std::optional<Corte> m_Corte;
    std::atomic<std::size_t> m_Cortes = 0;
    std::array<std::atomic<std::size_t>, 2> m_Passaram{};
    std::atomic<bool> m_Fim = false;
    std::vector<Ligacao> m_Ligacoes;
    std::thread m_Fio;
};

// A port of the loopback on which nobody listens now.
std::uint16_t PortaLivre();
// Whether somebody takes connections on that port.
bool Atende(std::uint16_t porta);

} // namespace mortes
