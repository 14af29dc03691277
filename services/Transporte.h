#pragma once

#include "services/ArquivoSQLite.h"
#include "services/LigacaoPostgres.h"
#include "services/TrabalhoDeCopia.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace mesa {

// A row that refers to one that is not there.
struct ReferenciaSolta {
    std::string Tabela;
    std::int64_t Chave = 0;
    std::string Para; // table
};

// What came of taking a registry out of a server.
struct RegistroTrazido {
    std::int64_t Entradas = 0;           // of the history, as the server counts them
    std::vector<ReferenciaSolta> Soltas; // where not all rows come along, as the server finds them
    std::vector<std::string> Achados;    // what did not fit into the tables of a registry, a sentence each
    std::set<std::string> NaoLidas = {}; // tables that could not be read; there is nothing, or not all, of them
    std::vector<std::string> Palavras;   // of the databases, each of which stands in parentheses in a finding
};

// The connection went away in the last step, and whether it was done is not known.
class SemCerteza : public Falha {
  public:
    using Falha::Falha;
};

// Takes registries from a database of a server into a file and back, table by table and row by row, every value as it
// is stored, so that the history's chain holds on the other side. No more than a row is in memory at a time. Failures
// of the server raise ErroDoServidor, those of the file ErroSql; giving up raises Desistencia.
namespace Transporte {

// The whole registry, as it is at one moment, into an empty file, which is a registry of its own then, alone and
// without a log. What the server's tables should have refused comes along, as far as a file can hold it.
RegistroTrazido Traz(LigacaoPostgres &de, const std::filesystem::path &para, const ParteDoAndamento &andamento);

// Of one moment, too: the last entries of the history and the one before, the rows that they are about, what tells
// their names, the registry's identity, and the entry of that number. All references are looked at where they are.
RegistroTrazido TrazFim(LigacaoPostgres &de, const std::filesystem::path &para, std::int64_t quantas,
                        std::optional<std::int64_t> entrada, const ParteDoAndamento &andamento);

// A registry of the present version in a file, into an empty database; all or nothing, also when this process ends in
// the middle. A Falha with a sentence when the database is not empty.
void Leva(ArquivoSQLite &de, LigacaoPostgres &para, const ParteDoAndamento &andamento);

// A Falha with a sentence unless the database is empty, and unless there is a registry in it.
void ExigeVazio(LigacaoPostgres &para);
void ExigeRegistro(LigacaoPostgres &de);
std::string Identificador(LigacaoPostgres &de);

} // namespace Transporte

} // namespace mesa
