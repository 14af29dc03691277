#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace comando {

// What is wrong with a command line, as a sentence in Portuguese, whatever words the library has for it.
std::string FraseDoErro(const CLI::Error &erro);

} // namespace comando
