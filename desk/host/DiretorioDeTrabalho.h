#pragma once

#include <filesystem>
#include <memory>

class QTemporaryDir;

namespace mesa {

// Where a desk keeps its own files: the data directory or, where nothing can be written, a private one that goes away
// with this object.
class DiretorioDeTrabalho {
  public:
    explicit DiretorioDeTrabalho(const std::filesystem::path &dados);
    ~DiretorioDeTrabalho();

    const std::filesystem::path &Caminho() const { return m_Caminho; }

  private:
    std::unique_ptr<QTemporaryDir> m_Temporario;
    std::filesystem::path m_Caminho;
};

} // namespace mesa
