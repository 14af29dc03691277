#pragma once

#include "host/IControlesPadrao.h"

#include <cstdint>
#include <string>
#include <utility>

// The stored settings of a control that are told for all of them; the page is that of a tab strip.
template <class Ajustes = AjustesControle>
Ajustes Ajusta(std::string nome, std::string caption, const Ref<IControle> &recipiente, std::int16_t pagina = -1)
{
    Ajustes ajustes;
    ajustes.Nome = std::move(nome);
    ajustes.Caption = std::move(caption);
    ajustes.Container = recipiente;
    ajustes.Pagina = pagina;
    return ajustes;
}
