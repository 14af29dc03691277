#pragma once

#include "desk/services/SessaoServico.h"
#include "host/IMDB.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace mesa {

// One row of the municipality table.
struct Municipio {
    std::int32_t Codigo = 0; // of the statistics institute
    std::string Nome;
    std::int32_t CodReceita = 0;
};

// The municipalities of the state, in order of code.
const std::vector<Municipio> &Municipios();

// The local database: an SQLite file with the tables Municipio and VOREQUIPTO. The module reads it through Abre; only
// this class writes to it.
class BancoLocalMesa : public Objeto {
  public:
    // Opens the file, and creates it with its municipalities when it is missing. A file that cannot be opened is a
    // Falha.
    explicit BancoLocalMesa(std::filesystem::path arquivo);
    std::string_view NomeTipo() const override { return "BancoLocalMesa"; }

    // A read-only connection for the module.
    Ref<IMDB> Abre();
    // Fetches the replica of the session's client anew, all of it or nothing.
    void AtualizaReplica(SessaoServico &sessao);
    // Moment of which the replica tells; empty before the first refresh.
    Data DataDaReplica() const { return m_DataDaReplica; }

  private:
    std::filesystem::path m_Arquivo;
    Data m_DataDaReplica;
};

} // namespace mesa
