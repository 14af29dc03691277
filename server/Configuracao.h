#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace servidor {

// The server's settings, from one file.
struct Configuracao {
    // Where the registry is: the path of a file, or "postgresql://usuario@maquina1:5432,maquina2:5432/banco?...".
    std::string Registro;
    std::string Escuta = "0.0.0.0:50443";
    // The certificate made at the first start is kept here.
    std::string PastaDoCertificado = "/var/lib/registro-servidor";
    std::string Certificado; // file of an authority's certificate, and of its key; empty: its own
    std::string Chave;
    bool SemTls = false;               // on the loopback only
    std::string Numeros;               // where the figures are asked for, "127.0.0.1:9464"; empty: nowhere
    std::string Diario = "-";          // file of the line that each operation leaves; "-": the standard output
    std::size_t Conexoes = 4;          // with the database
    std::size_t Esperando = 64;        // operations that may wait for one; further ones are told "ocupado"
    std::size_t PorSessao = 4;         // operations of one session at a time
    std::size_t SessoesPorUsuario = 8; // a further one ends the one that was used least recently
    std::size_t MaiorPedido = 8 << 20; // octets of one message
    std::chrono::seconds PrazoDaOperacao{30};
    std::chrono::seconds PrazoDaGravacao{10}; // for which a commit may wait for another machine
    std::chrono::minutes Ociosidade{30};
    std::chrono::seconds PrazoDoFim{20};
    bool ExigeMotivo = true;

    // Reads the file. What is wrong with it goes to `erros`, a sentence each, with the line where there is one.
    static Configuracao Le(const std::string &arquivo, std::vector<std::string> &erros);
    // What is wrong with the values together, and with what they name: files, addresses, the certificate.
    std::vector<std::string> Confere() const;

    bool NoBanco() const; // the registry is not in a file
    // Whether it listens on the loopback only.
    bool SoNestaMaquina() const;

    // The keys of the file, in the order of the file that comes with the program.
    static std::vector<std::string> Chaves();

    bool operator==(const Configuracao &) const = default;
};

} // namespace servidor
