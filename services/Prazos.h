#pragma once

#include "services/PeriodoDaAfericao.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace mesa {

// How an equipment stands on a civil day, by the deadlines of its calibrations. In the order of how bad it is, but for
// the last one; the numbers are part of the contract.
enum class EstadoDePrazo : std::uint8_t {
    Nenhum = 0,       // of a calibration that has not begun; no equipment has it
    Valido = 1,       // due later than in 90 days
    Em90 = 2,         // due within 61 to 90 days
    Em60 = 3,         // within 31 to 60
    Em30 = 4,         // within 30, today too
    Vencido = 5,      // the last one has ended
    Lacuna = 6,       // one has ended, and the next has not begun
    NuncaAferido = 7, // none has begun yet
    SemDocumento = 8, // the one that has the day has no document, or a damaged one
    Dispensado = 9    // equipment of its type has no calibrations
};

namespace Prazos {

inline constexpr std::int32_t Meses = 24; // of which the deadlines are counted: the present one and those behind it

// In the order of the screen, which is that of the numbers. Each active equipment has one of them.
std::span<const EstadoDePrazo> Estados();
// "Vence em até 30 dias"; empty for none.
const std::string &Nome(EstadoDePrazo estado);
// The rule by which each equipment has its state, for people.
const std::string &Regra();

// A calibration under its number.
struct Afericao {
    PeriodoDaAfericao Periodo;
    std::int64_t Numero = 0;
};

// How a sensor, or a single calibration, stands on a day.
struct Situacao {
    EstadoDePrazo Estado = EstadoDePrazo::NuncaAferido;
    std::int32_t Vencimento = 0; // last day of the calibration by which it stands so, 0 for none
    std::int32_t Dias = 0;       // from the day on, negative when it is past
    std::int64_t Afericao = 0;   // that calibration

    bool operator==(const Situacao &) const = default;
};

// From the first day to the second.
std::int32_t DiasEntre(std::int32_t de, std::int32_t ate);

Situacao DaAfericao(const Afericao &afericao, std::int32_t dia);
// afericoes: the active ones of the sensor. Nothing when more than one is in force on the day, since there is no
// telling by which it stands.
std::optional<Situacao> DoSensor(std::span<const Afericao> afericoes, std::int32_t dia);
// Whether an equipment with both sensors stands by the first one: it is in a worse state, or in the same and due
// before.
bool Pior(const Situacao &um, const Situacao &outro);

} // namespace Prazos

} // namespace mesa
