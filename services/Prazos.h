#pragma once

#include "services/PeriodoDaAfericao.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace mesa {

// How an equipment stands on a civil day, by the deadlines of its calibrations. In the order of the screen; the numbers
// are part of the contract.
enum class EstadoDePrazo : std::uint8_t {
    NaoComecou = 0,    // of a calibration whose first day is to come; no equipment has it
    Valido = 1,        // due later than in 90 days
    Em90 = 2,          // due within 61 to 90 days
    Em60 = 3,          // within 31 to 60
    Em30 = 4,          // within 30, today too
    Vencido = 5,       // the last one has ended
    Lacuna = 6,        // one has ended, and the next has not begun
    NuncaAferido = 7,  // none has begun yet
    SemDocumento = 8,  // the one that has the day has no document, or a damaged one
    VariasEmVigor = 9, // more than one is in force, and nothing tells which is meant
    Dispensado = 10    // equipment of its type has no calibrations
};

namespace Prazos {

inline constexpr std::int32_t Meses = 24; // of which the deadlines are counted: the present one and those behind it

// Of an equipment; each active one has one of them.
std::span<const EstadoDePrazo> Estados();
// "Vence em até 30 dias".
const std::string &Nome(EstadoDePrazo estado);
// The rule by which each equipment has its state, for people.
const std::string &Regra();

// From the first day to the second.
std::int32_t DiasEntre(std::int32_t de, std::int32_t ate);

// The last days of the stretches of days to go, the nearest first: two calibrations in force that end in the same
// stretch give their equipment the same state.
std::array<std::int32_t, 3> FimDosTrechos(std::int32_t dia);

// What there is of an equipment's calibrations on a day, of sensors that count on it: all that its state depends on.
struct Balanco {
    std::size_t EmVigor = 0;      // how many are; above 1 it makes no difference
    std::int32_t Vencimento = 0;  // last day of the one in force, when it is one
    bool TemSemDocumento = false; // one has the day, and no document
    bool TemAcabada = false;      // one has ended
    bool TemPorComecar = false;   // one has not begun
};
EstadoDePrazo DoEquipamento(const Balanco &balanco, std::int32_t dia);
EstadoDePrazo DaAfericao(const PeriodoDaAfericao &afericao, std::int32_t dia);

} // namespace Prazos

} // namespace mesa
