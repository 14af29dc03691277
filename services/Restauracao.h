#pragma once

#include "services/Copia.h"
#include "services/TrabalhoDeCopia.h"

#include <filesystem>
#include <string>
#include <vector>

namespace mesa {

struct PedidoDeRestauracao {
    std::string Arquivo;       // the copy
    std::string Identificador; // of the registry that it has to be of; empty for that of the one in place
    bool DeOutro = false;      // a copy of another registry, or of which it cannot be told, is taken too
};

// Puts a copy in the place of a registry.
class Restauracao {
  public:
    // registro: the file that is replaced, or made when there is none; or how to connect to an empty database, as
    // whoever is to own the registry there. confere: as for the making of copies.
    Restauracao(std::string registro, ConfereArquivo confere);

    // Checks the copy, brings it to the newest schema beside the registry and lets it take the registry's place in one
    // step; what it replaces is kept beside as registro.antes-AAAAMMDD-HHMMSS.db. The registry must be closed here, and
    // is refused while another program has it open. An end in the middle leaves the old registry or the new one.
    //
    // Into a database it goes in one transaction, and is refused where there is anything already.
    DesfechoDaCopia Faz(const PedidoDeRestauracao &pedido, const Instante &agora,
                        const AndamentoDaCopia &andamento = {}) const;

  private:
    using Caminho = std::filesystem::path;
    void NoArquivo(const Caminho &copia, const PedidoDeRestauracao &pedido, const Instante &agora,
                   const AndamentoDaCopia &andamento, DesfechoDaCopia &desfecho) const;
    void NoServidor(const Caminho &copia, const PedidoDeRestauracao &pedido, const Instante &agora,
                    const AndamentoDaCopia &andamento, DesfechoDaCopia &desfecho) const;
    // Copies it into the file and brings that to the newest schema; what is wrong with it. ate: the part of the whole
    // that is done then.
    std::vector<std::string> Prepara(const Caminho &copia, const Caminho &arquivo, const FichaDoRegistro &ficha,
                                     const Instante &agora, const AndamentoDaCopia &andamento, double ate) const;

    std::string m_Registro;
    ConfereArquivo m_Confere;
};

} // namespace mesa
