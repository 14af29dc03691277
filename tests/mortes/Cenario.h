#pragma once

#include "tests/mortes/Cliente.h"
#include "tests/mortes/Ponte.h"
#include "tests/mortes/Processo.h"
#include "tests/mortes/Verificador.h"
#include "tests/services/Motor.h"

#include <array>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace mortes {

// Asks again and again, for so long, until it is so. std::runtime_error with what was waited for otherwise.
void Espera(const std::string &oQue, std::chrono::seconds prazo, const std::function<bool()> &chegou);

// Two machines with a database engine, of which the second follows the first and commits wait for it; two servers on
// the one that writes; and desks that save. Between desks and servers, and between servers and engines, stand bridges:
// each desk has one that leads to its server and, while that is not there, to the other one, as what balances the load
// of an authority does.
class Cenario {
  public:
    struct Como {
        int Clientes = 50;
        bool ComReserva = true;
        bool Duravel = true;              // commits wait for the disk; of no use where no engine dies
        std::filesystem::path Disco = {}; // directory of the first engine; a temporary one without it
    };

    explicit Cenario(const Como &como);
    Cenario(const Cenario &) = delete;
    Cenario &operator=(const Cenario &) = delete;
    ~Cenario();

    // The engine that writes, and the one that follows.
    motor::Aglomerado &Primario() { return *m_Motores[m_Primario]; }
    motor::Aglomerado &Reserva() { return *m_Motores[1 - m_Primario]; }
    Ponte &PonteDoPrimario() { return *m_PontesDosMotores[m_Primario]; }
    // The standby writes from now on, and nobody waits for another one.
    void PromoveReserva();
    // The machine that died comes back empty, and follows the one that writes; commits wait for it again.
    void RefazReserva();

    void LigaServidor(std::size_t qual);
    Processo &Servidor(std::size_t qual) { return *m_Servidores.at(qual); }
    std::uint16_t PortaDoServidor(std::size_t qual) const { return m_PortasDosServidores.at(qual); }
    // Its settings, and how it connects.
    std::filesystem::path Configuracao(std::size_t qual) const;
    std::string Ligacao() const;

    // A session of that client's user at one of the servers.
    Ref<mesa::SessaoServico> Sessao(std::size_t servidor, int cliente) const;
    // The same through that port, a server's or a bridge's.
    Ref<mesa::SessaoServico> SessaoPor(std::uint16_t porta, int cliente) const;

    const std::vector<std::unique_ptr<Cliente>> &Clientes() const { return m_Clientes; }
    Ponte &PonteDoCliente(std::size_t qual) { return *m_PontesDosClientes.at(qual); }

    void Comeca();
    void Para();
    std::size_t Respondidas() const;
    // Until each has been answered so many times more.
    void EsperaDeCada(std::size_t vezes);
    // Until all together have been.
    void EsperaDeTodos(std::size_t vezes);

    // Of the servers that ended by themselves, with what they said last; each ought to live but for a moment of a
    // round.
    Achados Mortos() const;
    // An orderly end of both, and what they have to say against it.
    Achados EncerraServidores();
    // Of all, while none works.
    Diario Diarios() const;
    // What is there on the engine that writes, against what was answered.
    Achados Confere();
    // How the harness connects to a database of that engine.
    static std::string Direto(const motor::Aglomerado &motor, const std::string &banco = Banco);

    const std::filesystem::path &Pasta() const { return m_Pasta; }

    static constexpr const char *Banco = "registro";

  private:
    void CriaRegistro();
    void EscreveConfiguracao(std::size_t qual);
    std::string Queixas() const;
    std::filesystem::path DitoPor(std::size_t qual) const;
    std::string FimDoDitoPor(std::size_t qual) const;

    Como m_Como;
    std::filesystem::path m_Pasta;
    std::array<std::unique_ptr<motor::Aglomerado>, 2> m_Motores;
    std::size_t m_Primario = 0;
    std::array<std::unique_ptr<Ponte>, 2> m_PontesDosMotores;
    std::array<std::uint16_t, 2> m_PortasDosServidores{};
    std::array<std::unique_ptr<Processo>, 2> m_Servidores;
    std::vector<std::unique_ptr<Ponte>> m_PontesDosClientes;
    std::vector<std::unique_ptr<Cliente>> m_Clientes;
};

} // namespace mortes
