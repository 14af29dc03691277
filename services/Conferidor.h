#pragma once

#include "services/Cabeca.h"
#include "services/Historico.h"
#include "services/Instante.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace mesa {

// Told on the way: the part that is done, from 0 to 1, and what is being looked at. False gives up.
using SegueConferencia = std::function<bool(double parte, const std::string &oQue)>;

struct ResultadoDaConferencia {
    enum class Desfecho {
        Inteira,     // looked through, and nothing was found
        ComAchados,  // looked through as far as it can be read
        Cancelada,   // given up on the way
        NaoConferida // the file could not be looked at: Frase says why
    };

    Desfecho Como = Desfecho::NaoConferida;
    std::string Frase;                // what came of it, and what it cannot prove
    std::vector<std::string> Achados; // faults, a sentence each
    std::vector<std::string> Avisos;  // what is no fault, and deserves a look
    Historico::Cabeca Fim;            // of the history, as it was found
    // Words of the database on a server, each of which stands in parentheses in the sentences.
    std::vector<std::string> Palavras = {};

    int CodigoDeSaida() const; // of a command: 0 whole, 1 findings, 2 not looked through
};

// Looks through a registry for what was not written by the services: faults of the disk, and the work of somebody who
// had the file, or the database. Reads it over a connection of its own, trusts nothing in it, and never writes. A
// damaged registry gives findings and neither a fault nor a crash.
//
// On a server the tables, guards and rights are held against those of a new registry, and the rest is looked at in a
// private file of the temporary directory, into which one moment of the registry is brought: all of it, or for the
// quick check what that looks at.
class Conferidor {
  public:
    enum class Lugar {
        EmUso, // the registry, which others may have open
        Parado // a file that nobody has open, as it alone stands
    };

    // registro: its file, or how to connect to its database.
    explicit Conferidor(std::string registro, Lugar lugar = Lugar::EmUso);

    // All of it. desde: a head of the history that was kept elsewhere, to hold it against. Blocks; may run on any
    // thread; segue is called on the same one.
    ResultadoDaConferencia Confere(const SegueConferencia &segue = {}, const CabecaAssinada *desde = nullptr) const;
    // What can be looked at while somebody waits: schema, guards, references, the end of the history, and the rows that
    // it touches.
    ResultadoDaConferencia ConfereRapido(const SegueConferencia &segue = {},
                                         const CabecaAssinada *desde = nullptr) const;

    // The result as a text to be kept.
    std::string Relatorio(const ResultadoDaConferencia &resultado, const Instante &agora) const;

    // For who needs the findings only, of a file that nobody has open; a file that cannot be looked at is one.
    static std::vector<std::string> Achados(const std::string &arquivo);

  private:
    std::string m_Registro;
    Lugar m_Lugar;
};

// The commands without windows: --confere, with or without --desde.
namespace ComandoDeConferencia {

struct Saida {
    int Codigo = 2; // 0 whole, 1 findings, 2 not looked through
    std::string Texto;
};

// desde: path of a head; empty for none.
Saida Confere(const std::string &registro, const std::string &desde, const Instante &agora);

} // namespace ComandoDeConferencia

} // namespace mesa
