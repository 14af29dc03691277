#pragma once

#include "services/Operacao.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace mesa {

// What the tables that people maintain, streets and layouts, have in common. Each refuses with a Recusa.
namespace RegrasDeTabela {

// oQue: what was tried, for the refusal, as "incluir logradouros".
void ExigeManutencao(const Operacao &operacao, const std::string &oQue);
// Looking takes the right to maintain, or the one to consult equipment.
void ExigeConsulta(const Operacao &operacao, const std::string &oQue);

// Refuses a change of a copy that is not of the version that is stored. nome: the row with its article.
void ConfereVersao(const Operacao &operacao, const std::string &tabela, std::int32_t numero, std::int32_t daCopia,
                   std::int32_t atual, const std::string &nome);

// A text of the column as it is stored: composed, without blanks at its ends. Refuses what the column does not take,
// and what cannot be seen.
std::string TextoLimpo(std::string_view tabela, std::string_view coluna, const std::string &texto);

} // namespace RegrasDeTabela

} // namespace mesa
