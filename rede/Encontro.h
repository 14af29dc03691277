#pragma once

#include "rede/LugaresConhecidos.h"

#include <functional>
#include <optional>
#include <string>

namespace rede {

// 32 pairs of hexadecimal digits with colons between them, however they were written. Nothing when it is none.
std::optional<std::string> LeDigital(const std::string &texto);

// How servers are reached. What cannot be had is a Falha with a sentence.
struct ConectaServidor {
    // The fingerprint of the certificate that a server shows.
    std::function<std::string(const Endereco &servidor)> Digital;
    std::function<Ref<mesa::Servicos>(const Endereco &servidor, const Confianca &confianca)> Conecta;
};

// Whoever meets a server, and decides what no program decides.
struct QuemEncontra {
    // A server that was never met shows this fingerprint; whether it is the one that its administrator tells.
    std::function<bool(const std::string &servidor, const std::string &digital)> Confia;
    // A question of yes or no.
    std::function<bool(const std::string &pergunta)> Aceita;
    // How a new fingerprint is told to this program, as the end of a sentence.
    std::string ComoInformar;
};

// What came of meeting a server.
struct Encontrado {
    enum class Como {
        Conectado,
        SemConfianca,  // it is not known to be the one that it says; nothing was sent to it
        OutroRegistro, // it has another registry than before, which was not accepted
        SemServidor    // it could not be reached, or is no server of a registry
    };

    Como Desfecho = Como::SemServidor;
    std::string Frase; // why not
    Ref<mesa::Servicos> Servicos;
    Confianca Confiado; // by what it is known from now on
    std::string Identificador;
};

// Connects to a server that is trusted by what was told now, or by what the settings know, or by whoever meets it, and
// has the registry that it had; then the settings know it.
Encontrado Encontra(const Endereco &servidor, const Confianca &dita, LugaresConhecidos &lugares,
                    const ConectaServidor &rede, const QuemEncontra &quem);

} // namespace rede
