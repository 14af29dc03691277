#pragma once

#include "host/Falha.h"

#include <string>

namespace mesa {

// Why the database did not do what was asked.
enum class MotivoSql {
    Ocupado,   // another one is writing
    Unicidade, // the row exists already
    Regra,     // a rule of the schema refused; Regra tells which
    DiscoCheio,
    NaoGravou,   // the disk did not take a write
    ForaDoLugar, // the file was moved, replaced or erased meanwhile
    SoLeitura,
    Danificado, // not a registry, or no longer a sound one
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
