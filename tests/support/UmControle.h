#pragma once

#include "controls/ControleBase.h"
#include "host/HostServices.h"

#include <cstdint>
#include <string>
#include <utility>

// Controls one by one, for tests that need no form with a description.

// A piece that has a name and the settings of its kind.
template <class Ajustes> Peca Chamado(std::string nome, Ajustes ajustes = {})
{
    return {.Ajustes = std::move(ajustes), .Nome = std::move(nome)};
}

// A control of a class of ours.
template <class C>
Ref<C> Feito(const Ref<IForm> &form, const Peca &peca, const Ref<IControle> &container = nullptr,
             std::int16_t pagina = -1)
{
    return Novo<C>(Origem{form, peca, container, pagina});
}

// A control of the installed host.
template <class Contrato>
Ref<Contrato> CriadoPeloHost(const Ref<IForm> &form, const Peca &peca, const Ref<IControle> &container = nullptr)
{
    return ComoTipo<Contrato>(Host().Controles()->Cria(form, peca, container, -1));
}
