#pragma once

#include "host/Data.h"
#include "services/Instante.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace mesa {

// Looks through a registry in a file, which nobody works on, without writing to it: its findings, a sentence each; none
// when all is well.
using ConfereArquivo = std::function<std::vector<std::string>(const std::string &arquivo)>;

// Told how much is done, from 0 to 1; answers false to give up.
using AndamentoDaCopia = std::function<bool(double parte)>;

// What came of making a copy, or of restoring one.
struct DesfechoDaCopia {
    bool Feita = false;
    bool Cancelada = false;       // given up by whoever watched; nothing is left of it
    bool SoPorSerDeOutro = false; // refused for that only: it may be asked for again with PedidoDeRestauracao.DeOutro
    std::string Arquivo;          // the new copy; of a restoration, the file that keeps what was replaced, if any
    std::string Frase;            // what was done, or why nothing was
    std::vector<std::string> Achados; // what is wrong with the copy, when that is why
};

// A copy in a directory, by its name: registro.AAAAMMDD-HHMMSS.db.
struct CopiaGuardada {
    std::string Arquivo;
    Data Quando;
    int Numero = 1; // from 2 on: a further one of the same second
};

// The copies of a registry, made while people work.
class Copia {
  public:
    static constexpr int QuantasPadrao = 14;

    // The directory of copies that a registry in a file has beside it unless another one is chosen; a Falha with a
    // sentence for one on a server, which has none.
    static std::string PastaPadrao(const std::string &registro);

    // registro: its file, or how to connect to its database. confere: looks through each copy before it counts as made;
    // the integrity of the database and the identifier of the registry are looked at in any case.
    Copia(std::string registro, ConfereArquivo confere);

    // Makes a copy in the directory, which is made when it is not there: the registry as it was at one moment, whole in
    // one file, of a server's too. Then removes all but the newest `quantas` copies of this registry there. Blocks
    // until it is done; andamento is called from time to time on the same thread. The registry may be open here and
    // elsewhere.
    DesfechoDaCopia Faz(const std::string &pasta, const Instante &agora, int quantas = QuantasPadrao,
                        const AndamentoDaCopia &andamento = {}) const;

    // Whether today's copy of this registry is still to be made there.
    bool Devida(const std::string &pasta, const Instante &agora) const;

    // The copies of this registry in the directory, the newest first.
    std::vector<CopiaGuardada> Guardadas(const std::string &pasta) const;

  private:
    std::string m_Registro;
    ConfereArquivo m_Confere;
};

} // namespace mesa
