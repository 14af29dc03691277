#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace nativo {

// A script under the platform's script host, in a process of its own, with the name of a file as its first argument. It
// runs while this thread's windows and objects go on answering.
class Roteiro {
  public:
    // caminho: of the script, from the root of the project.
    explicit Roteiro(const std::string &caminho);
    Roteiro(const Roteiro &) = delete;
    Roteiro &operator=(const Roteiro &) = delete;
    ~Roteiro();

    // Until the script has ended.
    void Espera();
    // What it wrote, a line each.
    std::vector<std::string> Linhas() const;

  private:
    std::wstring m_Saida;
    PROCESS_INFORMATION m_Processo = {};
};

} // namespace nativo
