#pragma once

#include "tests/support/HostRoteirizado.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

// The sweep: runs a journey again and again, each time on a new host on which a shell has logged on, and makes the
// first host call of the journey fail, then the second, until it runs to its end undisturbed. After each failure the
// journey runs once more on the same host and must then raise nothing and show no error box; the host's own problems
// (objects not released, modal windows and questions without a script) fail the test as always.
struct Varredura {
    // Scripts, services and records. What happens in every run needs the scripts that stay: RespondeSempre,
    // AoMostrarModalSempre, EscolheArquivoSempre, Servico.
    std::function<void(HostRoteirizado &)> Prepara;
    std::function<void(HostRoteirizado &)> Jornada;
    // After a failure, before the second run: what must hold then. The fault, when one came out of the journey.
    // ChamadaQueFalhou of the host names the call.
    std::function<void(HostRoteirizado &, const std::optional<Falha> &)> Confere;
    // Only the calls of that name, which then need not be logged ones; empty: every logged call.
    std::string Chamada;

    // How many failures the journey went through.
    std::int32_t Roda() const;
};

// Prints the line "faults survived: N", by which the sweeps of all tests are added up, and returns N.
std::int32_t RelataSobrevividas(std::int32_t quantas);
