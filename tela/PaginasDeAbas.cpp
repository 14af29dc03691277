#include "tela/PaginasDeAbas.h"

#include "controls/ztList.h"
#include "tela/OrdemDeTab.h"

#include <algorithm>

namespace {

bool EstaNaPagina(const IControle &controle, const SSTab &abas, std::int16_t pagina)
{
    std::int16_t daqui = controle.Pagina();
    for (Ref<IControle> dono = controle.Container(); dono; dono = dono->Container()) {
        if (dynamic_cast<const SSTab *>(dono.Ponteiro()) == &abas) {
            return daqui == pagina;
        }
        daqui = dono->Pagina();
    }
    return false;
}

} // namespace

bool PodeAbrir(const ISSTab &abas, std::int16_t pagina)
{
    return abas.TabEnabled(pagina) && abas.TabVisible(pagina);
}

bool AbrePagina(SSTab &abas, std::int16_t pagina)
{
    const Ref<IControle> vivas = Eu(static_cast<IControle &>(abas));
    const Ref<IForm> form = abas.Form();
    if (!form || !abas.Abre(pagina)) {
        return false;
    }
    const std::vector<Ref<IControle>> controles = EmOrdemDeTab(*form);
    const auto primeiro = std::ranges::find_if(controles, [&](const Ref<IControle> &controle) {
        const ControleBase *base = ComoBase(controle);
        return base != nullptr && base->AceitaFoco() && base->Impedimento().empty() &&
               EstaNaPagina(*controle, abas, pagina);
    });
    if (primeiro != controles.end() && (*primeiro)->Especie() == EspecieControle::ztList) {
        ComoBase(*primeiro)->Foco();
    }
    return true;
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
