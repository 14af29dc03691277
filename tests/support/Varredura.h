#pragma once

#include "tests/support/HostTeste.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// One round of a sweep: a scripted host of its own, installed, and a shell logged on to it. At its end the module is
// taken away, and every problem that the host has seen fails the test, except what a failure left undone.
class Rodada {
  public:
    Rodada();
    Rodada(const Rodada &) = delete;
    Rodada &operator=(const Rodada &) = delete;
    ~Rodada();

    Ref<HostRoteirizado> Host = Novo<HostRoteirizado>();
    Ref<Geral> Shell;

    // Does what a person does; a fault that comes out of it is kept in Escapadas.
    void Tenta(const std::function<void()> &acao);
    // The same, for an action that leads to a question, and perhaps does not.
    void TentaPerguntado(const std::string &pergunta, bool sim, const std::function<void()> &acao);
    // The same, for an action that opens a modal window, and perhaps does not. A window that the script leaves open is
    // closed by its own button.
    void TentaModal(const std::string &classe, const std::function<void(Pessoa &)> &roteiro,
                    const std::function<void()> &acao);

    std::vector<Falha> Escapadas;

    // The line of the log with the call that failed; empty before that.
    std::string ChamadaQueFalhou();

  private:
    void EsqueceSobras();
};

// What a sweep runs. A new one is made for every round, from its Rodada.
class Jornada {
  public:
    explicit Jornada(Rodada &rodada) : m_Rodada(rodada) {}
    Jornada(const Jornada &) = delete;
    Jornada &operator=(const Jornada &) = delete;
    virtual ~Jornada() = default;

    // The whole way, once.
    virtual void Percorre() = 0;
    // What has to hold after a way without failure.
    virtual void ConfereSucesso() = 0;
    // Calls whose failure nobody is told of: their beginnings.
    virtual std::vector<std::string> Ignoradas() const
    {
        return {"FormMDI.FecharEnviaRecebe(", "cGlobal.gsubSetaAutoModuloAtivo("};
    }
    // Whether a fault that reached the person may leave the hourglass on.
    virtual bool DeixaAmpulheta(const Falha &) const { return false; }

  protected:
    HostRoteirizado &host() const { return *m_Rodada.Host; }

    Rodada &m_Rodada;
};

// Checks a round after the way with the failing call: the person was told exactly once, by an error box or by the fault
// itself, whose path starts at the call; nobody was told of an ignored one; the pointer is back; no window is left.
void ConfereFalha(Rodada &rodada, const Jornada &jornada);

// Runs the journey with its first host call failing, then with the second, until it meets no failure any more; after
// each failure it is run again and has to succeed. Returns how many calls were made to fail.
template <class T> std::int32_t VarreFalhas()
{
    for (std::int32_t chamada = 1;; ++chamada) {
        SCOPED_TRACE("falha na chamada " + std::to_string(chamada));
        Rodada rodada;
        T jornada(rodada);
        rodada.Host->LimpaRegistro();
        rodada.Host->FalhaNaChamada(chamada, 70, "Falha da varredura");
        jornada.Percorre();
        if (rodada.Host->FalhasDisparadas() == 0) {
            jornada.ConfereSucesso();
            EXPECT_TRUE(rodada.Host->Erros().empty());
            return chamada - 1;
        }
        SCOPED_TRACE(rodada.ChamadaQueFalhou());
        ConfereFalha(rodada, jornada);
        const std::size_t erros = rodada.Host->Erros().size();
        rodada.Escapadas.clear();
        jornada.Percorre();
        jornada.ConfereSucesso();
        EXPECT_EQ(rodada.Host->Erros().size(), erros);
        EXPECT_TRUE(rodada.Escapadas.empty());
        if (testing::Test::HasFailure()) {
            return chamada;
        }
    }
}
