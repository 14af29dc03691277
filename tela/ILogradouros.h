#pragma once

#include "host/Ref.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// A street of a municipality.
struct Logradouro {
    std::int32_t Codigo = 0; // of no other street
    std::int32_t CodMunic = 0;
    std::string Nome;   // with its kind: "Rua Bento Gonçalves"; empty: nobody but the code knows the street
    std::string Bairro; // may be empty
    std::string Cep;    // eight digits

    // As it goes on a notification, with the house number and the complement when there are any; empty without a name.
    std::string Descricao(std::int32_t numero, const std::string &complemento) const;
};

// A municipality that an address may be in.
struct MunicipioDeEndereco {
    std::int32_t Codigo = 0;
    std::string Nome; // as it is offered, told from others of the same name
};

// The streets, as the address picker knows them.
class ILogradouros : public Objeto {
  public:
    // In the order in which they are offered. They are thousands: what is given stays as long as the streets do.
    virtual const std::vector<MunicipioDeEndereco> &Municipios() const = 0;
    // Streets of a municipality whose name has the words sought, accents and case ignored, or whose postal code begins
    // with the digits sought; in order of name, at most `maximo`.
    virtual std::vector<Logradouro> Procura(std::int32_t codMunic, const std::string &procurado,
                                            std::size_t maximo) const = 0;
    virtual std::optional<Logradouro> PorCodigo(std::int32_t codigo) const = 0;
};
