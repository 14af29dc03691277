#include "desk/host/Caminhos.h"

#include "host/Texto.h"

namespace mesa {

namespace {

// Of those that no text uses: U+F05C.
constexpr const char *BarraDeNome = "\xEF\x81\x9C";

} // namespace

std::filesystem::path CaminhoDoSistema(const std::string &caminhoDoModulo)
{
    const std::string traduzido = ComNomesDoSistema(Substitui(caminhoDoModulo, "\\", "/"));
    return std::filesystem::path(std::u8string(traduzido.begin(), traduzido.end()));
}

std::string CaminhoDoModulo(const std::filesystem::path &caminhoDoSistema)
{
    const std::u8string texto = caminhoDoSistema.u8string();
    return Substitui(CaminhoEscolhido(std::string(texto.begin(), texto.end())), "/", "\\");
}

std::string CaminhoEscolhido(const std::string &caminho)
{
    return Substitui(caminho, "\\", BarraDeNome);
}

std::string ComNomesDoSistema(const std::string &texto)
{
    return Substitui(texto, BarraDeNome, "\\");
}

} // namespace mesa
