#pragma once

#include "host/AfericaoED.h"
#include "services/Atividade.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace mesa {

// What has to hold of an active row of AFERICAO under the name a to be in force on a day, as far as its own row tells:
// takes the day twice.
inline const QString TemODiaComDocumento =
    "a.DataVerificacao <= ? AND a.DataVencimento >= ? AND a.NroIntImgCertif IS NOT NULL";

struct AfericaoDeSensor {
    Ref<AfericaoED> Afericao;
    std::int64_t NroIntSensor = 0;
};

// Why no calibration is in force on a day.
enum class SemVigencia {
    Nenhuma,             // one is
    SemAfericao,         // none that is active and has a document has the day in its period
    EquipamentoNaoConta, // on that day
    SensorNaoConta,      // none of the sensors that have one does on that day
    Varias               // more than one, and nothing tells which is meant
};

// The calibration in force, or none and why.
struct Vigencia {
    Ref<AfericaoED> Afericao = {};
    std::int64_t NroIntSensor = 0;
    SemVigencia Porque = SemVigencia::SemAfericao;
    std::vector<AfericaoDeSensor> Varias = {}; // those between which nothing tells
};

// Of so many calibrations that have the day with equal right the one in force: when it is one. Otherwise why there is
// none.
SemVigencia PorQuantas(std::size_t quantas);

// Whether the equipment or a sensor counts on the day (Atividade.h).
using AtividadeDoEquipamento = std::function<std::optional<Atividade>()>;
using AtividadeDoSensor = std::function<std::optional<Atividade>(std::int64_t nroIntSensor)>;

// The one rule of what is in force, over the calibrations of an equipment as the registry has them, or had them: one of
// a sensor and an equipment that counted on that day, first day <= day <= last day, with its document. One that was
// withdrawn since was wrong, and is in force on no day. The sensors that the registry knew as active on that day go
// before those that it came to know later. One or none, never a guess: when more than one sensor has a calibration in
// force there is no telling which is meant, and the answer is none.
Vigencia VigenciaNoDia(std::int32_t dia, const std::vector<AfericaoDeSensor> &afericoes,
                       const AtividadeDoEquipamento &doEquipamento, const AtividadeDoSensor &doSensor);

} // namespace mesa
