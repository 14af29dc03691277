#pragma once

#include "tests/support/HostRoteirizado.h"
#include "tests/support/Varredura.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// A person's way through some windows, for the sweep. The person goes on whatever happens: a fault that comes out of an
// action is kept, a window that is still open at the end of its script is closed by its own button.
class JornadaVarrida {
  public:
    // Prepares the host with what stays through all runs.
    explicit JornadaVarrida(HostRoteirizado &host) : m_Host(host) {}
    JornadaVarrida(const JornadaVarrida &) = delete;
    JornadaVarrida &operator=(const JornadaVarrida &) = delete;
    virtual ~JornadaVarrida() = default;

    // The whole way, once. Raises nothing.
    virtual void Percorre() = 0;
    // What has to hold after a way without failure.
    virtual void ConfereSucesso() = 0;
    // What has to hold after the way with the failure: the person was told exactly once, by an error box or by the
    // fault itself, whose path starts at the call, unless the call's failure is ignored; the pointer is back.
    void ConfereFalha();
    bool Limpa() const { return m_Escapadas.empty(); }

  protected:
    // Whether a fault that reached the person leaves the hourglass on.
    virtual bool DeixaAmpulheta(const Falha &) const { return false; }

    void Tenta(const std::function<void()> &acao);
    // What the person does in every modal window of a class.
    void NoModal(const std::string &classe, const std::function<void(Pessoa &)> &roteiro);

    HostRoteirizado &m_Host;

  private:
    std::vector<Falha> m_Escapadas;
};

// Sweeps a journey of that class, made anew for every run; as of Varredura::Roda, whose result it prints
// too.
template <class T> std::int32_t VarreJornada(const std::string &chamada = {})
{
    std::unique_ptr<T> jornada;
    bool falhou = false;
    Varredura varredura;
    varredura.Chamada = chamada;
    varredura.Prepara = [&](HostRoteirizado &host) {
        jornada = std::make_unique<T>(host);
        falhou = false;
    };
    varredura.Jornada = [&](HostRoteirizado &host) {
        jornada->Percorre();
        if (falhou || host.FalhasDisparadas() == 0) {
            jornada->ConfereSucesso();
            EXPECT_TRUE(jornada->Limpa());
        }
    };
    varredura.Confere = [&](HostRoteirizado &, const std::optional<Falha> &falha) {
        EXPECT_FALSE(falha);
        jornada->ConfereFalha();
        falhou = true;
    };
    return RelataSobrevividas(varredura.Roda());
}
