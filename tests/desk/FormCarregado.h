#pragma once

#include "host/IForm.h"
#include "host/Ref.h"

// A form of the module with its controls, not yet shown.
template <class Form> class Carregada : public Form {
  public:
    void Abre() { this->Carregar(); }
};

template <class Form> Ref<IForm> Carrega()
{
    auto form = Novo<Carregada<Form>>();
    form->Abre();
    return form;
}
