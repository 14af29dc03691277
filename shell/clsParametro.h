#pragma once

#include "host/Ref.h"

#include <string>

// A named value.
class clsParametro : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "clsParametro"; }

    std::string Nome;
    std::string Valor;
};
