#pragma once

#include "services/Banco.h"

#include <cstdint>
#include <span>
#include <string>

namespace mesa {

// A right that a user may have, in words.
struct Direito {
    std::string Objeto;
    std::string Acao;
    std::string Palavras;
};

// What each user may do, by system, object and action.
namespace Permissoes {

inline const std::string Sistema = "NAB";
inline const std::string Objeto = "VOR-EQP-CS";
inline const std::string ObjetoAdministracao = "VOR-EQP-ADM";

// Actions of the administration.
inline const std::string Usuarios = "U"; // and clients
inline const std::string Tabelas = "T";  // streets and layouts
inline const std::string Copias = "C";   // check, copies, restoring

// All that there are, in the order of the screen.
std::span<const Direito> Direitos();
// The right in words; its object and action where there is no such right.
std::string EmPalavras(const std::string &objeto, const std::string &acao);

// Whether an active user has the permission; nobody does who has to change the password first.
bool Tem(Banco &banco, std::int32_t operador, const std::string &sistema, const std::string &objeto,
         const std::string &acao);

} // namespace Permissoes

} // namespace mesa
