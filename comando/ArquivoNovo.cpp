#include "comando/ArquivoNovo.h"

#include "comando/Fim.h"
#include "services/Disco.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace comando {

void ExigeLivre(const std::string &caminho)
{
    std::error_code erro;
    if (std::filesystem::symlink_status(caminho, erro).type() != std::filesystem::file_type::not_found) {
        throw Fim(Codigo::Recusado, "Já existe " + caminho + ", e nada é gravado por cima.");
    }
    const std::filesystem::path pasta = std::filesystem::absolute(caminho).parent_path();
    if (!std::filesystem::is_directory(pasta, erro)) {
        throw Fim(Codigo::NaoAlcancado, "A pasta " + pasta.string() + " não existe.");
    }
}

void GravaNovo(const std::string &caminho, const Bytes &bytes)
{
    ExigeLivre(caminho);
    const std::filesystem::path lugar = std::filesystem::absolute(caminho);
    mesa::ArquivoEmPreparo preparo(lugar.parent_path() / ("." + lugar.filename().string() + ".em-preparo"),
                                   "Outro programa está gravando " + caminho + ".");
    std::FILE *arquivo = std::fopen(preparo.Caminho().c_str(), "wbe");
    const bool gravado = arquivo != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), arquivo) == bytes.size() &&
                         std::fflush(arquivo) == 0;
    const int erro = errno;
    if (arquivo != nullptr) {
        std::fclose(arquivo);
    }
    if (!gravado) {
        mesa::FalhaDoSistema(erro, "Não foi possível gravar " + caminho);
    }
    preparo.TomaOLugar(lugar);
}

} // namespace comando
