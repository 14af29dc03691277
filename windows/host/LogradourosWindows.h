#pragma once

#include "tela/ILogradouros.h"

#include <vector>

namespace nativo {

// The streets of the address picker. The contract offers the municipalities of the local database, and no streets:
// those are asked of an object of the class "Logradouros" where the table of classes tells one,
//
//     Procura(CodMunic, Texto, Maximo)   a collection of streets
//     PorCodigo(Codigo)                  a street, or Nothing
//
// where a street has Codigo, CodMunic, Nome, Bairro and Cep, and a collection Count and Item from 1. Without the class
// a street is entered by its code.
class LogradourosWindows : public ILogradouros {
  public:
    std::string_view NomeTipo() const override { return "LogradourosWindows"; }

    const std::vector<MunicipioDeEndereco> &Municipios() const override;
    std::vector<Logradouro> Procura(std::int32_t codMunic, const std::string &procurado,
                                    std::size_t maximo) const override;
    std::optional<Logradouro> PorCodigo(std::int32_t codigo) const override;

  private:
    mutable std::vector<MunicipioDeEndereco> m_Municipios; // once they could be read
};

} // namespace nativo
