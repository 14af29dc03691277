#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace planilhas {

// A file that is made under a name of its own beside its place, and takes the place when it is whole, with the rights
// of the file that it replaces. Where the place is a link, it is made where that points. Goes away with its scope
// unless it took the place.
class ArquivoNovo {
  public:
    // lugar: the file that is to be.
    explicit ArquivoNovo(std::filesystem::path lugar);
    ArquivoNovo(const ArquivoNovo &) = delete;
    ArquivoNovo &operator=(const ArquivoNovo &) = delete;
    ~ArquivoNovo();

    // The name under which it is made, for what writes by name.
    const std::filesystem::path &Caminho() const { return m_Caminho; }
    // Takes the place; what was written is there after a power cut too.
    void TomaOLugar();
    // What cannot be written there is told as this act.
    std::string Ato() const;

  private:
    std::filesystem::path m_Pedido; // as it is told
    std::filesystem::path m_Lugar;
    std::filesystem::path m_Caminho;
    std::optional<mode_t> m_Direitos; // of the file that is there
    bool m_NoLugar = false;
};

// Bytes that are put one behind the other into an open file.
class Gravacao {
  public:
    // ato: what is told of a write that fails, as "Não foi possível gravar x".
    Gravacao(int aberto, std::string ato) : m_Aberto(aberto), m_Ato(std::move(ato)) {}

    void Poe(std::string_view octetos);
    // Whatever was put is with the system.
    void Descarrega();

  private:
    int m_Aberto;
    std::string m_Ato;
    std::string m_Guardados;
};

// An open file without a name, which is gone when it is closed.
class ArquivoTemporario {
  public:
    ArquivoTemporario();
    ArquivoTemporario(const ArquivoTemporario &) = delete;
    ArquivoTemporario &operator=(const ArquivoTemporario &) = delete;
    ~ArquivoTemporario();

    int Aberto() const { return m_Aberto; }

  private:
    int m_Aberto;
};

} // namespace planilhas
