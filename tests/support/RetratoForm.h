#pragma once

#include "shell/Formulario.h"

#include <gtest/gtest.h>

#include <string>

// A form's controls as text, one line each in the order of creation: kind, name, container and page, caption, label
// beside it, then what differs from a plain control of that kind. For example
//   ztMask txtVelocPerm em fraVelocPerm, rotulo "Veloc. Permitida:", max 3, tipo 1
//   SSTab sstDados ["Geral", "Opções" oculta]
// What was typed, chosen or filled in is left out, except that a box is checked or an option is on.

// The line of one control.
std::string RetratoControle(const Ref<IControle> &controle);

// Compares a form with its portrait, the file <class of the form>.txt in `pasta`: class and caption, then the controls,
// with their place in the order of Tab where it is not that of creation. As by ArquivoIgual.
testing::AssertionResult RetratoIgual(const Ref<IForm> &form, const std::string &pasta);

// A form of the module that is loaded and has been told nothing yet.
template <class Form> Ref<Form> SoCarregada()
{
    class Carregada : public Form {
      public:
        using Formulario::Carregar;
    };
    auto form = Novo<Carregada>();
    form->Carregar();
    return form;
}
