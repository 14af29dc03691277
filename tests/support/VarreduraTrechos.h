#pragma once

#include <optional>
#include <string>

// Pieces of call trees that several journeys share (VarreduraCaminho); "$1" stands for what a tree writes behind the
// name. No value for a piece that does not exist.
std::optional<std::string> TrechoDeCaminho(const std::string &nome);
