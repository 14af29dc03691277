#include "desk/host/Caminhos.h"

#include "host/Texto.h"

namespace mesa {

std::filesystem::path CaminhoDoSistema(const std::string &caminhoDoModulo)
{
    const std::string traduzido = Substitui(caminhoDoModulo, "\\", "/");
    return std::filesystem::path(std::u8string(traduzido.begin(), traduzido.end()));
}

std::string CaminhoDoModulo(const std::filesystem::path &caminhoDoSistema)
{
    const std::u8string texto = caminhoDoSistema.u8string();
    return Substitui(std::string(texto.begin(), texto.end()), "/", "\\");
}

} // namespace mesa
