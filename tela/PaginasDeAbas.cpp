#include "tela/PaginasDeAbas.h"

bool PodeAbrir(const ISSTab &abas, std::int16_t pagina)
{
    return abas.TabEnabled(pagina) && abas.TabVisible(pagina);
}

std::optional<std::int16_t> PaginaVizinha(const ISSTab &abas, int passo)
{
    for (int pagina = abas.Tab() + passo; pagina >= 0 && pagina < abas.Tabs(); pagina += passo) {
        if (PodeAbrir(abas, static_cast<std::int16_t>(pagina))) {
            return static_cast<std::int16_t>(pagina);
        }
    }
    return std::nullopt;
}
