#pragma once

#include "host/Falha.h"
#include "rede/Endereco.h"
#include "services/Segue.h"

#include <chrono>
#include <stdexcept>
#include <string>
#include <vector>

namespace rede {

// There was no answer, or none that a server gives. what() is what happened, in words that follow a colon.
class SemServidor : public std::runtime_error {
  public:
    explicit SemServidor(const std::string &porque) : std::runtime_error(porque) {}
};

// Nobody waits for the answer any more.
class EsperaDesistida : public SemServidor {
  public:
    EsperaDesistida() : SemServidor("a espera foi cancelada") {}
};

// The server takes connections, and none with TLS.
class SemTls : public SemServidor {
  public:
    using SemServidor::SemServidor;
};

// The certificate that a server shows.
struct Certificado {
    std::string Pem;
    std::string Digital; // SHA-256 of its DER: 32 pairs of hexadecimal digits with colons between them
    std::string Nome;    // one that it is for
    std::string Defeito; // why it does not count, in words that follow a colon; empty when it does
    Endereco Onde;       // who shows it, by the machine's number

    // autoridade: file of the certificates that it has to be by; empty: it only has to be of this time, whoever it is
    // by and whatever name it is for. segue: asked now and then; its false gives up; empty: nobody is. SemServidor when
    // none is shown in time; Falha when that file is none.
    static Certificado De(const Endereco &endereco, const std::string &autoridade, std::chrono::milliseconds prazo,
                          const mesa::Segue &segue);
    // The same of a machine of that name which has these addresses, one at least, all by number: of the first that
    // shows one. Each has its share of the time that is left, so that a dead one does not take it all.
    static Certificado De(const std::string &maquina, const std::vector<Endereco> &numeros,
                          const std::string &autoridade, std::chrono::milliseconds prazo, const mesa::Segue &segue);
};

} // namespace rede
