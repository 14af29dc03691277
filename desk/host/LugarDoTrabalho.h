#pragma once

#include "rede/Encontro.h"

#include <optional>
#include <string>

namespace mesa {

using rede::ConectaServidor;
using rede::LeDigital;

// Where the registry is that a desk works on, as a person says it.
struct LugarDoTrabalho {
    std::optional<rede::Endereco> Servidor; // nothing: it is on this computer
    std::string Digital; // of the server's certificate, as its administrator told it; empty: it is shown and asked for
    std::string Autoridade; // file of the authority's certificate, when the server's is by one
};

// In words: "este computador", or which server.
std::string OndeFica(const LugarDoTrabalho &lugar);

enum class CampoDoLugar { Servidor, Digital, Autoridade };

// What is wrong with it: the sentence, and the field to look at.
struct ProblemaDoLugar {
    CampoDoLugar Campo = CampoDoLugar::Servidor;
    std::string Frase;
};

// A server as it was typed: address, fingerprint, authority's file, of which the last two may be empty. Nothing with
// the problem when it is none.
std::optional<LugarDoTrabalho> LeServidor(const std::string &endereco, const std::string &digital,
                                          const std::string &autoridade, ProblemaDoLugar &problema);

} // namespace mesa
