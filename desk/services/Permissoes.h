#pragma once

#include "desk/services/Banco.h"

#include <cstdint>
#include <string>

namespace mesa {

// What each user may do, by system, object and action.
namespace Permissoes {

inline const std::string Sistema = "NAB";
inline const std::string Objeto = "VOR-EQP-CS";
inline const std::string ObjetoAdministracao = "VOR-EQP-ADM";

// Whether an active user has the permission.
bool Tem(Banco &banco, std::int32_t operador, const std::string &sistema, const std::string &objeto,
         const std::string &acao);

} // namespace Permissoes

} // namespace mesa
