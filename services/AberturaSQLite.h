#pragma once

#include "services/Disco.h"

#include <filesystem>
#include <optional>
#include <string>

namespace mesa {

// The opening of a registry's file, as long as it lasts. Keeps restorations out meanwhile, ends one that was
// interrupted, and sees to what an earlier registry left beside the file. A Falha with a sentence when the file cannot
// even be looked at.
class AberturaSQLite {
  public:
    AberturaSQLite(const std::filesystem::path &arquivo, const DetectorDeRede &rede);

    // Why the file may only be looked at, as it stands alone; empty when it may be worked on.
    const std::string &SoConsulta() const { return m_SoConsulta; }

  private:
    std::filesystem::path m_Arquivo;
    std::optional<TravaDaPasta> m_Trava;
    std::string m_SoConsulta;
};

// The same file by the name that it has where it stands, past all links.
std::filesystem::path LugarVerdadeiro(const std::filesystem::path &arquivo);

// What follows is for whoever keeps the directory to himself, and for nobody who has the file open.

// Undoes what an interrupted restoration has left beside a registry.
void DesfazRestauracao(const std::filesystem::path &arquivo);
// Puts aside a log that cannot be this file's.
void SeparaDiarioAlheio(const std::filesystem::path &arquivo);
// Whether there is an interrupted write beside that would change the file and is not of this program.
bool TemJornalAlheio(const std::filesystem::path &arquivo);

// Name of the file that a restoration prepares, and how those begin that keep what one replaced.
std::filesystem::path LugarEmRestauracao(const std::filesystem::path &arquivo);
std::string ComecoDosGuardados(const std::filesystem::path &arquivo);

} // namespace mesa
