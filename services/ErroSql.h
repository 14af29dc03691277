#pragma once

#include "host/Falha.h"

#include <string>
#include <string_view>

namespace mesa {

// Why the database did not do what was asked.
enum class MotivoSql {
    Ocupado,   // another one is writing
    Demora,    // it took longer than a statement may
    Queda,     // the connection was lost before the end, and nothing was written
    Incerto,   // it was lost, or given up, while the end was awaited: what was asked may be written or not
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

// What a registry is in, as a sentence names it.
enum class LugarDoRegistro { Arquivo, Servidor };

// A failure of the database, with its sentence for the person.
class ErroSql : public Falha {
  public:
    ErroSql(MotivoSql motivo, const std::string &detalhe, LugarDoRegistro onde = LugarDoRegistro::Arquivo);

    MotivoSql Motivo;
    std::string Detalhe; // the database's own words
};

// PassaFalha of the services: what the database failed of, and a sign-in that no longer stands, stay what they are, so
// that a server knows how to go on. Only valid inside a catch block.
[[noreturn]] void PassaErro(std::string_view cauda);

} // namespace mesa
