#pragma once

#include "controls/SSTab.h"
#include "host/IControlesPadrao.h"

#include <cstdint>
#include <optional>

// Whether the person is offered the page.
bool PodeAbrir(const ISSTab &abas, std::int16_t pagina);

// The person opens the page, and has not to go to what is on it when that begins with a list: the list has the focus,
// without which it offers no command. Who walks along the strip with the arrow keys stays in it: SSTab::Abre.
bool AbrePagina(SSTab &abas, std::int16_t pagina);

// The nearest page behind the current one, passo 1, or before it, passo -1, that can be opened; none at either end.
std::optional<std::int16_t> PaginaVizinha(const ISSTab &abas, int passo);
