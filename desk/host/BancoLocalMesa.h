#pragma once

#include "desk/host/Andamento.h"
#include "host/IMDB.h"
#include "services/SessaoServico.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

class QLockFile;

namespace mesa {

// The local database: an SQLite file with the tables Municipio, of the whole country, and VOREQUIPTO. The module reads
// it through Abre; only this class writes to it.
class BancoLocalMesa : public Objeto {
  public:
    // Opens a file of the directory that no other desk is using, "local.db" or the next number, and creates it when it
    // is missing. Its municipalities are written when they are not these. One that cannot be opened is a Falha.
    explicit BancoLocalMesa(const std::filesystem::path &diretorio);
    ~BancoLocalMesa() override;
    std::string_view NomeTipo() const override { return "BancoLocalMesa"; }

    // A read-only connection for the module. The module names one state in what it asks of the municipalities; here it
    // means the state of the client of the last replica, and the municipality to which the operator is tied.
    Ref<IMDB> Abre();
    // Brings the replica up to date for the session's operator, all of it or nothing: by what changed since the last
    // time, and whole where that cannot be. False when the person has given it up, which they can if it is cancelavel:
    // the old one stays. One of another operator never does.
    bool AtualizaReplica(SessaoServico &sessao, bool cancelavel = false);
    // Shows how far it is.
    FazComAndamento Acompanha = SemAndamento;
    // Moment of which the replica tells; empty before the first refresh.
    Data DataDaReplica() const { return m_DataDaReplica; }
    // Whether the last refresh failed or was given up: something is stored that it does not tell.
    bool Atrasada() const { return m_Atrasada; }

  private:
    bool AtualizaReplica(SessaoServico &sessao, const Segue &segue);
    void TomaArquivo(const std::filesystem::path &diretorio);

    std::filesystem::path m_Arquivo;
    std::unique_ptr<QLockFile> m_Tranca; // held for as long as the file is ours
    Data m_DataDaReplica;
    bool m_Atrasada = false;
    std::string m_Estado; // what the module's state means, as a condition; empty before the first replica
};

} // namespace mesa
