#pragma once

#include "tests/fuzz/Octetos.h"

// Locks or frees a control for the person: itself, by its sight, by its form or in its own way.
template <class Form, class Controle, class Tranca>
void Impede(Octetos &octetos, Form &form, Controle &controle, Tranca &&tranca)
{
    const bool valor = octetos.Sim();
    switch (octetos.Ate(3)) {
    case 0:
        controle.DefineEnabled(valor);
        break;
    case 1:
        controle.DefineVisible(valor);
        break;
    case 2:
        form.DefineEnabled(valor);
        break;
    default:
        tranca(valor);
        break;
    }
}
