#pragma once

#include "host/IControlesPadrao.h"

#include <cstdint>
#include <optional>

// Whether the person is offered the page.
bool PodeAbrir(const ISSTab &abas, std::int16_t pagina);

// The nearest page behind the current one, passo 1, or before it, passo -1, that can be opened; none at either end.
std::optional<std::int16_t> PaginaVizinha(const ISSTab &abas, int passo);
