#pragma once

#include "bench/servidor/Carga.h"
#include "bench/servidor/Ligacao.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

// What the server says to the engine, statement by statement, taken from the engine's own log, and said again without
// the server.
namespace Instrucoes {

// A statement as it was sent: a prepared one with the values of this time, or a plain one.
struct Instrucao {
    std::size_t Preparada = 0; // 1 + position among the prepared ones; 0: plain
    std::string Texto;         // of a plain one
    Ligacao::Valores Valores;  // of a prepared one
};

struct Operacao {
    Carga::Tipo Tipo{};
    std::vector<Instrucao> Passos;
};

struct Gravacao {
    std::vector<std::string> Preparadas;
    std::vector<std::string> Inicio; // what each new connection begins with
    std::vector<Instrucao> Antes;    // of the first operation: the sign-ins, which leave entries in the history
    std::vector<Operacao> Operacoes;

    std::size_t Instrucoes() const;
};

// Marks the log of a database, in which every statement is told, where an operation begins.
class Marcador {
  public:
    explicit Marcador(const std::string &onde);
    ~Marcador();
    void Marca(Carga::Tipo tipo);
    // Ends the telling, and gives the log's file, which has everything in it when this comes back.
    std::filesystem::path Termina();

  private:
    struct Interior;
    std::unique_ptr<Interior> m_Interior;
};

// Reads what the log of the marked database tells. Raises std::runtime_error on what could not be said again.
Gravacao Le(const std::filesystem::path &registro, const std::string &banco);

struct Repetidas {
    std::array<std::vector<double>, Carga::Tipos> Segundos;
    double Tempo = 0;
    std::vector<std::string> Falhas;

    std::size_t Operacoes() const;
};

// Says it all again, over so many connections, each with the next operation as soon as it is free; what changes the
// registry one after the other, as it was. noComeco and noFim: when all connections are ready, and when all is done.
Repetidas Repete(const std::string &onde, const Gravacao &gravacao, int conexoes, const std::function<void()> &noComeco,
                 const std::function<void()> &noFim);

} // namespace Instrucoes
