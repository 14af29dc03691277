#pragma once

#include "services/HistoriaDoEquipamento.h"

#include <string>

namespace mesa {

// What the history tells of an equipment and its rows, in the words of the screens.
namespace PalavrasDaHistoria {

// The row that the entry is about: "aferição 123", "limite diferenciado de Segunda, 07:00 a 08:00".
std::string Assunto(const EntradaDaHistoria &entrada);
// What was done: "incluída: ..." or each member with what it was before and after. antes: the entry of the same row
// before this one; null for none.
std::string OQue(const EntradaDaHistoria &entrada, const EntradaDaHistoria *antes);
// "20/11/2026 às 14:32:10", by the clock of the place.
std::string Momento(const EntradaDaHistoria &entrada);

} // namespace PalavrasDaHistoria

} // namespace mesa
