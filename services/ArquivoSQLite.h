#pragma once

#include <sqlite3.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace mesa {

// What the embedded database keeps beside a file: the log, its index, and the journal of a file without a log.
inline constexpr std::array<const char *, 3> PartesAoLado = {"-wal", "-shm", "-journal"};

// A database in a file, for work on the file as a whole. Failures are an ErroSql.
//
// The file of an open database is never to be opened by other means in the same program: when those close it, the
// system drops the locks that the database holds.
class ArquivoSQLite {
  public:
    enum class Modo {
        Parado, // to look at, as the file alone stands, which nobody writes to: nothing beside it is seen or made
        Gravar  // the file is there
    };

    ArquivoSQLite(const std::filesystem::path &arquivo, Modo modo);

    sqlite3 *Aberto() const { return m_Aberto.get(); }

    void Comanda(const std::string &sql);
    // First column of the rows.
    std::vector<std::string> Coluna(const std::string &sql);
    // The first of them, or nothing.
    std::string Texto(const std::string &sql);
    std::int64_t Inteiro(const std::string &sql);

    // The file's first bytes, as it stands on the disk.
    std::vector<unsigned char> Comeco(std::size_t quantos);
    // Whether nobody else has the file open; it need not be a sound database.
    bool SoMeu();

    // Raises what the database's answer stands for; nothing for success.
    void Exige(int codigo) const;

  private:
    std::unique_ptr<sqlite3, int (*)(sqlite3 *)> m_Aberto;
};

// Name under which the file is opened to be looked at, as it alone stands.
std::string NomeDeArquivoParado(const std::filesystem::path &arquivo);

} // namespace mesa
