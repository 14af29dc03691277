#pragma once

#include "host/Falha.h"

#include <string>

namespace mesa {

// Why the database did not do what was asked.
enum class MotivoSql {
    Ocupado,   // another one is writing
    Unicidade, // the row exists already
    Regra,     // a guard of the schema refused; Detalhe tells which
    Coluna,    // a value that its column does not take
    DiscoCheio,
    NaoGravou,   // the disk did not take a write
    ForaDoLugar, // the file was moved, replaced or erased meanwhile
    SoLeitura,
    Danificado, // not a registry, or no longer a sound one
    Ausente,    // there is no file
    Vazio,      // the file has nothing in it
    Estranho,   // a database of something else
    JaExiste,   // where a new registry should come to be there is a file
    Acesso,     // the file cannot be opened, read or written
    Outro
};

// A failure of the database, with its sentence for the person.
class ErroSql : public Falha {
  public:
    ErroSql(MotivoSql motivo, const std::string &detalhe);

    MotivoSql Motivo;
    std::string Detalhe; // the database's own words
};

} // namespace mesa
