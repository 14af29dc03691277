#pragma once

#include "server/Trabalhadores.h"

#include <grpcpp/server_context.h>

#include <functional>
#include <optional>
#include <string>

namespace servidor {

// One call, as whoever makes it presents itself.
struct Chamada {
    Chamada() = default;
    explicit Chamada(grpc::ServerContext &contexto);

    std::string Sessao;                // key; empty for none
    std::optional<std::string> Numero; // of a changing operation
    std::optional<std::string> Motivo; // of a correction
    bool Repetidos = false;            // one of these came more than once
    std::string Endereco;
    Momento Ate = Momento::max(); // by then the caller has given up
    std::function<bool()> Cancelada = [] { return false; };
    // Ends the stream of the call from another thread.
    std::function<void()> Corta = [] {};
    // What goes with the end of the call.
    std::function<void(const std::string &chave, const std::string &valor)> NoFim = [](const auto &, const auto &) {};
};

} // namespace servidor
