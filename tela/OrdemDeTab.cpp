#include "tela/OrdemDeTab.h"

#include <algorithm>

std::vector<Ref<IControle>> EmOrdemDeTab(const IForm &form)
{
    std::vector<Ref<IControle>> ordem = form.Controles();
    std::ranges::stable_sort(ordem, {}, [](const Ref<IControle> &controle) { return controle->TabIndex(); });
    return ordem;
}
