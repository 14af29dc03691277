#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <thread>
#include <vector>

// A connection through which what goes to a port of this machine passes, and that can be cut.
class Tubo {
  public:
    enum class Sentido { Ida, Volta }; // to the server; back from it

    // porSegundo: octets that pass in a second, of both ways together; 0: as many as come.
    explicit Tubo(std::uint16_t para, std::int64_t porSegundo = 0);
    ~Tubo();
    Tubo(const Tubo &) = delete;
    Tubo &operator=(const Tubo &) = delete;

    std::uint16_t Porta() const { return m_Porta; }
    // Cuts once, when so many more octets have passed that way: what is after them does not arrive.
    void CortaEm(Sentido sentido, std::int64_t octetos);
    // From now on nothing passes, and nothing is said of it: the line is dead.
    void Cala() { m_Calado = true; }
    bool Cortou() const
    {
        const std::lock_guard guarda(m_Tranca);
        return m_Cortes > 0;
    }
    // Octets that have passed since the last cut was ordered.
    std::int64_t Passaram(Sentido sentido) const
    {
        const std::lock_guard guarda(m_Tranca);
        return m_Passaram[static_cast<int>(sentido)];
    }

  private:
    struct Ligacao {
        int Cliente;
        int Servidor;
    };
    void Roda();
    bool Passa(int de, int para, int sentido);
    void GuardaPouco(int soquete) const;

    std::uint16_t m_Para;
    std::int64_t m_PorSegundo;
    std::uint16_t m_Porta = 0;
    int m_Escuta = -1;
    int m_Fim[2] = {-1, -1};
    std::vector<Ligacao> m_Ligacoes;
    mutable std::mutex m_Tranca;        // held while octets pass, so that what arrived has been counted
    std::int64_t m_Falta[2] = {-1, -1}; // to the cut; below 0 for none
    std::int64_t m_Passaram[2] = {0, 0};
    int m_Cortes = 0;
    std::atomic<bool> m_Calado{false};
    std::thread m_Fio;
};
