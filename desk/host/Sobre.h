#pragma once

#include <filesystem>
#include <string>

namespace mesa {

// What whoever helps an operator asks first: versions, and where the data stands.
std::string TextoDoSobre(const std::filesystem::path &dados);

} // namespace mesa
