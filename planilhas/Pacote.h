#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

struct zip;
struct zip_file;

namespace planilhas {

// One part of a package, unpacked as it is read.
class ParteDoPacote {
  public:
    ParteDoPacote(zip_file *aberta, std::uint64_t limite);
    ParteDoPacote(const ParteDoPacote &) = delete;
    ParteDoPacote &operator=(const ParteDoPacote &) = delete;
    ~ParteDoPacote();

    // Puts up to `quantos` bytes there and tells how many; 0 at the end. A Falha past the limit, whatever size the
    // package tells, and where the part is damaged.
    std::size_t Le(char *destino, std::size_t quantos);

  private:
    zip_file *m_Aberta;
    std::uint64_t m_Resta;
};

// The file of a spreadsheet: parts in a compressed archive.
class Pacote {
  public:
    // limite: bytes that a part may have unpacked.
    Pacote(const std::filesystem::path &arquivo, std::uint64_t limite);
    Pacote(const Pacote &) = delete;
    Pacote &operator=(const Pacote &) = delete;
    ~Pacote();

    bool Tem(const std::string &parte) const;
    // A Falha when there is no such part, when it needs a password, and when it is larger than a part may be.
    std::unique_ptr<ParteDoPacote> Abre(const std::string &parte);
    // The same for a part that is small in every honest file: it has a limit of its own.
    std::unique_ptr<ParteDoPacote> AbrePequena(const std::string &parte);

  private:
    std::int64_t Lugar(const std::string &parte) const;
    std::unique_ptr<ParteDoPacote> Abre(const std::string &parte, std::uint64_t limite);

    zip *m_Aberto;
    std::uint64_t m_Limite;
};

} // namespace planilhas
