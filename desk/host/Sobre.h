#pragma once

#include <filesystem>
#include <string>

namespace mesa {

// What whoever helps an operator asks first: versions, and where the data stands. registro: which one, and where.
std::string TextoDoSobre(const std::filesystem::path &dados, const std::string &registro);

} // namespace mesa
