#pragma once

#include "host/Data.h"
#include "host/Falha.h"
#include "rede/Endereco.h"
#include "rede/Versao.h"
#include "services/Segue.h"
#include "services/Servicos.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace rede {

// By what a server is known to be the one that it says.
struct Confianca {
    std::string Digital;    // fingerprint of its certificate, as it was shown when it was first met
    std::string Autoridade; // file of the authority's certificate, when the server's is by one
};

// The session with the server has ended, as the sentence says. Nothing was done by the try that found it so; whether
// one before it, which was not answered, did anything is open, and the same asked for in a new session goes with its
// number.
class SessaoEncerrada : public Falha {
  public:
    explicit SessaoEncerrada(const std::string &frase) : Falha(NumeroFalha::PermissaoNegada, "Rede", frase) {}
};

// The server refused what has no other way to say so: by a right or a rule, as the sentence says. Nothing was done.
class PedidoRecusado : public Falha {
  public:
    PedidoRecusado(const std::string &onde, const std::string &frase) : Falha(NumeroFalha::ErroDeAcesso, onde, frase) {}
};

// What a person is asked, and what the caller allows itself, when a server does not answer.
struct Insistencia {
    // A call that was not answered is made again, with the same number, until so much time has passed; each try that
    // nobody sees, each piece of a document, and each silence of the line may last so long.
    std::chrono::milliseconds PorConta{10000};
    std::chrono::milliseconds Cada{20000};
    // Then a person is asked whether it is tried again; the sentence says what happened. Empty: nobody is.
    std::function<bool(const std::string &frase)> TentaDeNovo = {};
    // What is asked for now was asked for before, and nobody knows whether it was done; since then something else was
    // done, or a long time has passed. Whether it is that again, and not a new act of the same content, as the sentence
    // asks; nothing: it is not asked for after all. Empty: it is that again.
    std::function<std::optional<bool>(const std::string &frase)> EhOMesmo = {};
    // Runs a wait that nobody follows otherwise, and hands it what is told now and then that it goes on; its false
    // gives up. Empty: it is waited for without.
    std::function<void(const std::function<void(const mesa::Segue &)> &espera)> Espera = {};
    // Told what the server's clock says, when somebody has signed in and whenever it is learnt again.
    std::function<void(const Data &agora)> Relogio = {};
};

// The fingerprint of the certificate that the server shows: 32 pairs of hexadecimal digits with colons between them;
// empty for a server of this machine that has none, to which an empty Confianca goes. A Falha with a sentence when it
// cannot be reached, or does not answer as a server. segue: asked now and then whether to go on; empty: nobody is.
std::string DigitalDoServidor(const Endereco &endereco, std::chrono::milliseconds prazo = std::chrono::seconds(5),
                              const mesa::Segue &segue = {});

// The services of a registry behind a network, whose sessions are each a SessaoDeServidor. A server that cannot be
// reached, is another one than is trusted, or speaks another version of the contract, is a Falha with a sentence. What
// only the registry's own machine does (PrimeiroAdministrador, CadastraUsuario, CadastraCliente) is refused so.
//
// An operation that was not answered is never known to be done or not: its number is kept, and whoever asks for the
// same again in the session asks with that number, and with the reason that was given for it.
//
// falo: the versions of the contract that the caller understands.
Ref<mesa::Servicos> Conecta(const Endereco &endereco, const Confianca &confianca, const std::string &programa,
                            Insistencia insistencia = {}, const Contratos &falo = {});

} // namespace rede
