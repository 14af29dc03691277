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

namespace {

Fim JaExiste(const std::string &caminho)
{
    return {Codigo::Recusado, "Já existe " + caminho + ", e nada é gravado por cima."};
}

} // namespace

void ExigeLivre(const std::string &caminho)
{
    std::error_code erro;
    if (std::filesystem::symlink_status(caminho, erro).type() != std::filesystem::file_type::not_found) {
        throw JaExiste(caminho);
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
    preparo.Sincroniza();
    PoeNoLugar(preparo.Caminho(), caminho);
}

void PoeNoLugar(const std::filesystem::path &pronto, const std::string &caminho)
{
    int posto = ::renameat2(AT_FDCWD, pronto.c_str(), AT_FDCWD, caminho.c_str(), RENAME_NOREPLACE);
    if (posto != 0 && (errno == EINVAL || errno == ENOSYS)) { // disks of the network do not know how to
        posto = ::link(pronto.c_str(), caminho.c_str());
        if (posto == 0) {
            ::unlink(pronto.c_str());
        }
    }
    const int erro = errno;
    if (posto != 0 && erro == EEXIST) {
        throw JaExiste(caminho);
    }
    if (posto != 0) {
        mesa::FalhaDoSistema(erro, "Não foi possível gravar " + caminho);
    }
    mesa::SincronizaPasta(std::filesystem::absolute(caminho).parent_path());
}

} // namespace comando
