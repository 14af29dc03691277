#pragma once

#include "desk/services/SessaoServico.h"
#include "host/IMDB.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace mesa {

// The local database: an SQLite file with the tables Municipio, of the whole country, and VOREQUIPTO. The module reads
// it through Abre; only this class writes to it.
class BancoLocalMesa : public Objeto {
  public:
    // Opens the file, and creates it when it is missing. Its municipalities are written when they are not these. A file
    // that cannot be opened is a Falha.
    explicit BancoLocalMesa(std::filesystem::path arquivo);
    std::string_view NomeTipo() const override { return "BancoLocalMesa"; }

    // A read-only connection for the module. The module names one state in what it asks of the municipalities; here it
    // means the state of the client of the last replica.
    Ref<IMDB> Abre();
    // Fetches the replica of the session's client anew, all of it or nothing.
    void AtualizaReplica(SessaoServico &sessao);
    // Moment of which the replica tells; empty before the first refresh.
    Data DataDaReplica() const { return m_DataDaReplica; }

  private:
    std::filesystem::path m_Arquivo;
    Data m_DataDaReplica;
    std::string m_UF; // of the client of the replica; empty before the first
};

} // namespace mesa
