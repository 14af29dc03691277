#pragma once

#include "windows/automation/Tardio.h"

#include <string_view>

namespace nativo {

// An element of an indexed collection: its default value with the index, or its member Item where it has none.
template <class T, class Indice> Ref<T> Elemento(const Tardio &colecao, const Indice &indice)
{
    try {
        return DeVariante<Ref<T>>(colecao.Padrao(indice).Bruta());
    } catch (const Falha &falha) {
        if (falha.Numero != NumeroFalha::MembroInexistente || !colecao.Tem("Item")) {
            throw;
        }
    }
    return colecao.Chama<Ref<T>>("Item", indice);
}

// The same of the collection that a member of the object gives: the index goes with the request of the member, and only
// where that takes none to what it gives.
template <class T, class Indice>
Ref<T> Elemento(const ObjetoRemoto &objeto, std::string_view membro, const Indice &indice)
{
    const Tardio tardio(objeto);
    try {
        return tardio.Chama<Ref<T>>(membro, indice);
    } catch (const Falha &falha) {
        if (falha.Numero != NumeroAutomacao::NumeroDeArgumentos) {
            throw;
        }
    }
    return Elemento<T>(Tardio(LeObjeto(tardio.Chama<Variante>(membro).Bruta())), indice);
}

} // namespace nativo
