#pragma once

#include "windows/automation/Valores.h"

namespace nativo {

// A value as an optional argument: left out when it is empty.
inline Variante OuAusente(const Valor &valor)
{
    return valor.EhVazio() ? ParaVariante(Ausente{}) : ParaVariante(valor);
}

// The same of an object: left out when there is none.
template <class T> Variante OuAusente(const Ref<T> &objeto)
{
    return objeto.Nada() ? ParaVariante(Ausente{}) : ParaVariante(objeto);
}

} // namespace nativo
