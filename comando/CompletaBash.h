#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace comando {

// What makes bash complete a command line, by its own description: its sub-commands and options, files and directories
// for the options that take one.
std::string CompletaBash(const CLI::App &linha);

} // namespace comando
