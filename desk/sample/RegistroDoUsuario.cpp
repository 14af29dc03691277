#include "desk/sample/RegistroDoUsuario.h"

#include "desk/sample/Amostra.h"
#include "desk/services/Disco.h"
#include "host/Conversoes.h"

#include <array>

namespace mesa {

namespace {

constexpr const char *NomeDoRegistro = "registro.db";
// What the embedded database may keep beside its file.
constexpr std::array<const char *, 3> Partes = {"", "-wal", "-shm"};

void Move(const std::filesystem::path &de, const std::filesystem::path &para)
{
    for (const char *parte : Partes) {
        const std::filesystem::path origem = de.string() + parte;
        if (std::filesystem::exists(origem)) {
            std::filesystem::rename(origem, para.string() + parte);
        }
    }
}

// Name for a registry that is kept beside, taken by none yet: the moment, and a number from the second on.
std::filesystem::path LugarAoLado(const std::filesystem::path &diretorio, Data momento)
{
    const std::string nome = "registro." + Format(momento, "yyyymmdd-hhnnss");
    std::filesystem::path lugar = diretorio / (nome + ".db");
    for (int numero = 2; std::filesystem::exists(lugar); ++numero) {
        lugar = diretorio / (nome + "-" + std::to_string(numero) + ".db");
    }
    return lugar;
}

void Apaga(const std::filesystem::path &arquivo)
{
    for (const char *parte : Partes) {
        std::filesystem::remove(arquivo.string() + parte);
    }
}

} // namespace

std::filesystem::path CaminhoDoRegistro(const std::filesystem::path &diretorio)
{
    return diretorio / NomeDoRegistro;
}

Ref<Servicos> AbreRegistroDoUsuario(const std::filesystem::path &diretorio, ConteudoInicial conteudo, bool deNovo,
                                    const Relogio &agora, const std::function<void(double)> &progresso)
{
    FazPastaPrivada(diretorio);
    const std::filesystem::path registro = CaminhoDoRegistro(diretorio);
    const std::filesystem::path emPreparo = diretorio / "registro.em-preparo.db";
    if (deNovo && std::filesystem::exists(registro)) {
        // Opening and closing brings all that was written into the one file. What cannot be opened is kept as it is.
        IgnoraErro([&] { Servicos::Abre(registro.string(), agora); });
        Move(registro, LugarAoLado(diretorio, agora().Local));
    }
    if (!std::filesystem::exists(registro)) {
        Apaga(emPreparo);
        {
            const Ref<Servicos> novo = Servicos::Cria(emPreparo.string(), TipoDeRegistro::Amostra, agora);
            CadastraUsuariosDaAmostra(*novo);
            if (conteudo == ConteudoInicial::Amostra) {
                PreencheAmostra(*novo, agora().Local, progresso);
            }
        }
        Move(emPreparo, registro);
    }
    return Servicos::Abre(registro.string(), agora);
}

} // namespace mesa
