#pragma once

#include "tela/Pessoa.h"
#include "tests/host_contract/AdaptadorHost.h"

#include <string>

// A host of ours in front of the suite: its forms have a person without a screen, and no box or viewer waits to be
// closed.
class AdaptadorComPessoa : public AdaptadorHost {
  public:
    void FechaProximaCaixa() override {}
    void FechaProximoVisor() override {}

    bool Clica(const Ref<IForm> &form, const std::string &controle) override { return Pessoa(form).Clica(controle); }
    bool Digita(const Ref<IForm> &form, const std::string &controle, const std::string &texto) override
    {
        return Pessoa(form).Digita(controle, texto);
    }
    bool Escolhe(const Ref<IForm> &form, const std::string &combo, const std::string &texto) override
    {
        return Pessoa(form).Escolhe(combo, texto);
    }
    bool AbrePagina(const Ref<IForm> &form, const std::string &tab, std::int16_t pagina) override
    {
        return Pessoa(form).Abre(tab, pagina);
    }
    bool ClicaLinha(const Ref<IForm> &form, const std::string &lista, std::int32_t linha) override
    {
        return Pessoa(form).ClicaLinha(lista, linha);
    }
    bool EscolheMenu(const Ref<IForm> &form, const std::string &lista, const std::string &chave) override
    {
        return Pessoa(form).EscolheMenu(lista, chave);
    }
};
