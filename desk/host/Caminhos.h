#pragma once

#include <filesystem>
#include <string>

namespace mesa {

// The module writes paths with "\"; this system with "/".
std::filesystem::path CaminhoDoSistema(const std::string &caminhoDoModulo);
std::string CaminhoDoModulo(const std::filesystem::path &caminhoDoSistema);

} // namespace mesa
