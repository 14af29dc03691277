#pragma once

#include "host/Ref.h"
#include "shell/clsListaParametros.h"

#include <string>

// What the search window knows of a searchable module.
class IModulo : public Objeto {
  public:
    // The module's name, by which the window selects its criteria.
    virtual std::string Modulo() = 0;
    // Runs the search with these criteria and fills the list.
    virtual void Localizar(const Ref<clsListaParametros> &parametros) = 0;
    // Throws away the visible result, because a criterion changed.
    virtual void LimpaPesquisa() = 0;
    // Whether the module requires a field.
    virtual bool ExigeCampo(const std::string &sNome) = 0;
    // The field's current value; empty for a name that is unknown.
    virtual std::string GetValorCampo(const std::string &sNome) = 0;
    // Stores the field's value; a name that is unknown is ignored.
    virtual void SetValorCampo(const std::string &sNome, const std::string &sValor) = 0;
    // Opens the module's window in menu mode. The list may be Nothing.
    virtual void CarregaJanela(const Ref<clsListaParametros> &parametros) = 0;
};
