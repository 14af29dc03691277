#pragma once

#include "planilhas/Celula.h"

#include <optional>
#include <string>
#include <string_view>

namespace planilhas {

// A day or moment as "2024-01-31" or "2024-01-31T10:30:00.5", without a time zone, its seconds rounded. Nothing when
// the text is no such thing, or a day that does not exist.
std::optional<Celula> CelulaDoInstante(std::string_view texto);
// A time as "PT10H30M00.5S", any of the three left out. Nothing when the text is no such thing.
std::optional<Celula> CelulaDaDuracao(std::string_view texto);

// The same as text.
std::string InstanteEmIso(const Celula &celula);

} // namespace planilhas
