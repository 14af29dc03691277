#pragma once

#include "tela/ILogradouros.h"

namespace mesa {

// Streets of a municipality whose name has the words sought, accents and case ignored, or whose postal code begins with
// the digits sought; in order of name, at most `maximo`.
std::vector<Logradouro> ProcuraLogradouros(std::int32_t codMunic, const std::string &procurado, std::size_t maximo);
std::optional<Logradouro> LogradouroPorCodigo(std::int32_t codigo);

// These streets, for the address pickers.
class LogradourosMesa : public ILogradouros {
  public:
    std::string_view NomeTipo() const override { return "LogradourosMesa"; }

    std::vector<MunicipioDeEndereco> Municipios() const override;
    std::vector<Logradouro> Procura(std::int32_t codMunic, const std::string &procurado,
                                    std::size_t maximo) const override
    {
        return ProcuraLogradouros(codMunic, procurado, maximo);
    }
    std::optional<Logradouro> PorCodigo(std::int32_t codigo) const override { return LogradouroPorCodigo(codigo); }
};

} // namespace mesa
