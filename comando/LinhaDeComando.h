#pragma once

#include "comando/Subcomando.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <vector>

namespace comando {

// The command line of the program, with all its sub-commands.
class LinhaDeComando {
  public:
    LinhaDeComando();

    CLI::App &App() { return m_App; }
    // What was asked for, by its last words: the one whose line was given. argumentos: without the program's own name.
    // A CLI::Error when they are not understood, and for the help and the version.
    Subcomando &Le(std::vector<std::string> argumentos);
    // The help of the line that was given, as far as it was understood.
    std::string Ajuda() const;

  private:
    CLI::App m_App;
    std::vector<std::unique_ptr<Subcomando>> m_Todos;
};

// The line that is the deepest of those given.
const CLI::App &LinhaDada(const CLI::App &linha);
// Its words from the program's name on: "registro usuarios lista".
std::string NomeDaLinha(const CLI::App &linha);

} // namespace comando
