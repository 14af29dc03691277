#pragma once

#include <filesystem>
#include <string>

namespace mesa {

// The module writes paths with "\"; this system with "/". Here a name may have a "\" of its own: to the module it goes
// as another character, which no name has.
std::filesystem::path CaminhoDoSistema(const std::string &caminhoDoModulo);
std::string CaminhoDoModulo(const std::filesystem::path &caminhoDoSistema);
// A path as a person chose it here, for the module, with this system's "/".
std::string CaminhoEscolhido(const std::string &caminho);
// A text that the module made, as a person reads it.
std::string ComNomesDoSistema(const std::string &texto);

} // namespace mesa
