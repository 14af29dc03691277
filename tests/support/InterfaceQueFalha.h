#pragma once

#include "host/IAplicacaoHost.h"

// Interface services of a host that fails once the form is on the screen.
class InterfaceQueFalha : public IObjInterface {
  public:
    std::string_view NomeTipo() const override { return "ObjInterface"; }

    void MostraJanela(const Ref<IForm> &form, std::int16_t, Ref<IForm> &, std::int16_t, Ref<Objeto> &) override
    {
        form->DefineVisible(true);
        throw Falha(NumeroFalha::ErroInterno, "ObjInterface", "Janela perdida");
    }
    Ref<ITrataBD> pTrataBD() override { return nullptr; }
};
