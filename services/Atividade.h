#pragma once

#include "services/Banco.h"

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mesa {

// Whether an equipment or a sensor counts on a civil day, by its history alone: the present state of the row is not
// asked. It counts on a day at some moment of which it was active, so that the day on which it is deactivated still
// counts, the day on which it is reactivated too, and those between do not. It also counts on days before the registry
// knew it, since what is registered has worked before, unless it was registered as inactive. Days are those of the
// place where the change was made: by its offset where the history has one, and as written where it has none.
//
// In the order in which they are believed: those that were active on the day; then those that the registry came to know
// first, and of the same day the ones that were not deactivated since.
struct Atividade {
    std::int32_t RegistradaEm = 0; // a day later than the one asked for; 0 when it was active on that day
    bool Desativada = false;       // since then

    auto operator<=>(const Atividade &) const = default;
};

// A moment from which a row was active, or was not; they come in the order of the history.
struct MudancaDeAtividade {
    std::int32_t Dia = 0;
    bool Ativa = false;

    // Of an entry of the history. quando: yyyymmddhhmmss, UTC where there is an offset; fuso: 0 where there is none;
    // depois: the row as the entry has it.
    static MudancaDeAtividade De(std::int64_t quando, std::int32_t fuso, const std::string &depois);
};

// Nothing when it does not count. A row of which the history knows nothing does not.
std::optional<Atividade> AtividadeNoDia(const std::vector<MudancaDeAtividade> &mudancas, std::int32_t dia);
// The same of a row of the registry, by all that its history tells.
std::optional<Atividade> AtividadeNoDia(Banco &banco, const std::string &entidade, std::int64_t numero,
                                        std::int32_t dia);

} // namespace mesa
