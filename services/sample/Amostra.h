#pragma once

#include "services/Servicos.h"

#include <functional>
#include <string>

namespace mesa {

// Password of every sample user.
inline constexpr const char *SenhaDaAmostra = "registro2026";

// Users, clients and permissions of the sample; what an empty registry starts with too, since somebody must sign in.
void CadastraUsuariosDaAmostra(Servicos &servicos);

// Fills a registry that has the sample's users: equipment of all types with sensors, calibrations and certificates,
// limits, days and hours, some calibrations expired, some due soon, some with gaps. All through the services; the same
// for the same day. progresso: called with the part done, 0 to 1.
void PreencheAmostra(Servicos &servicos, Data hoje, const std::function<void(double)> &progresso);

} // namespace mesa
