#pragma once

#include "desk/services/Servicos.h"

#include <filesystem>
#include <functional>

namespace mesa {

// File of the registry in a data directory.
std::filesystem::path CaminhoDoRegistro(const std::filesystem::path &diretorio);

enum class ConteudoInicial { Amostra, Vazio };

// Opens the registry of a data directory, and creates it first when there is none. It is made beside its place and
// moved there whole, so that an interruption leaves none or all of it. deNovo: the registry that is there is kept
// beside, under a name with the moment, and a new one is made. progresso: part of the making that is done, 0 to 1.
Ref<Servicos> AbreRegistroDoUsuario(const std::filesystem::path &diretorio, ConteudoInicial conteudo, bool deNovo,
                                    const Relogio &agora, const std::function<void(double)> &progresso);

} // namespace mesa
