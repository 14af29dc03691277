#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace mesa {

// What the standard library does not tell about files, or does not do with them. Failures are a Falha with a sentence.

// Kind of network that the system's number of a kind of disk stands for; empty for those of a machine.
std::string RedeDoTipo(unsigned tipo);

// Kind of network on which a file or directory stands, as "NFS"; empty for a disk of this machine. One that is not
// there yet stands where its directory does.
using DetectorDeRede = std::function<std::string(const std::filesystem::path &)>;
std::string DiscoDeRede(const std::filesystem::path &caminho);

// Makes the directory, with those above it, for its owner alone; one that is there and belongs to whoever runs this is
// closed to everybody else.
void FazPastaPrivada(const std::filesystem::path &pasta);
// Closes a file of whoever runs this to everybody else.
void FazArquivoPrivado(const std::filesystem::path &arquivo);
// Makes an empty file for its owner alone, if there is none of that name.
void CriaArquivoPrivado(const std::filesystem::path &arquivo);

// Whether whoever runs this may write to it, or make files in it; false also on a disk that takes no writes.
bool PodeGravar(const std::filesystem::path &caminho);

// What stands in a directory is there after a power cut too.
void SincronizaPasta(const std::filesystem::path &pasta);

// Why the system did not do what was asked, by its number.
std::string MotivoDoSistema(int erro);
// Failure of the system in an act on a file, with the sentence "<act>: <reason>.".
[[noreturn]] void FalhaDoSistema(int erro, const std::string &ato);

// Keeps a directory to oneself, or shares it with others that only open files in it, for its scope. Waits some seconds.
class TravaDaPasta {
  public:
    enum class Uso { DeTodos, DeUm };

    // recusa: the sentence when somebody else keeps it.
    TravaDaPasta(const std::filesystem::path &pasta, Uso uso, const std::string &recusa);
    TravaDaPasta(const TravaDaPasta &) = delete;
    TravaDaPasta &operator=(const TravaDaPasta &) = delete;
    ~TravaDaPasta();

  private:
    int m_Pasta;
};

// A file that is made under a name of its own, for its owner alone, and takes its place when it is whole. One at a time
// of a name: what an interrupted one has left is made anew. Goes away with its scope unless it took its place.
class ArquivoEmPreparo {
  public:
    // recusa: the sentence when another one is being made.
    ArquivoEmPreparo(std::filesystem::path caminho, const std::string &recusa);
    ArquivoEmPreparo(const ArquivoEmPreparo &) = delete;
    ArquivoEmPreparo &operator=(const ArquivoEmPreparo &) = delete;
    ~ArquivoEmPreparo();

    const std::filesystem::path &Caminho() const { return m_Caminho; }
    // What was written into it is there after a power cut too.
    void Sincroniza();
    // Takes the place, of whatever has it, in one step.
    void TomaOLugar(const std::filesystem::path &lugar);

  private:
    std::filesystem::path m_Caminho;
    int m_Aberto = -1;
    bool m_NoLugar = false;
};

} // namespace mesa
