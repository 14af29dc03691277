#pragma once

#include "host/Texto.h"
#include "tela/ILogradouros.h"

#include <string>
#include <vector>

inline constexpr std::int32_t Canoas = 100;
inline constexpr std::int32_t Alegrete = 200;
inline constexpr std::int32_t Erebango = 300;

// Three streets of one municipality, one of another.
class RuasDeTeste : public ILogradouros {
  public:
    std::string_view NomeTipo() const override { return "RuasDeTeste"; }

    const std::vector<MunicipioDeEndereco> &Municipios() const override { return Oferecidos; }
    std::vector<Logradouro> Procura(std::int32_t codMunic, const std::string &procurado,
                                    std::size_t maximo) const override
    {
        Procurados.push_back(std::to_string(codMunic) + " " + procurado + " " + std::to_string(maximo));
        std::vector<Logradouro> achados;
        for (const Logradouro &rua : Ruas) {
            if (rua.CodMunic == codMunic && LCase(rua.Nome).find(LCase(procurado)) != std::string::npos) {
                achados.push_back(rua);
            }
        }
        return achados;
    }
    std::optional<Logradouro> PorCodigo(std::int32_t codigo) const override
    {
        for (const Logradouro &rua : Ruas) {
            if (rua.Codigo == codigo) {
                return rua;
            }
        }
        return std::nullopt;
    }

    std::vector<MunicipioDeEndereco> Oferecidos = {
        {Erebango, "Erebango"}, {Canoas, "Canoas"}, {Alegrete, "Água Santa"}};
    std::vector<Logradouro> Ruas = {{1, Canoas, "Rua Bento", "Centro", "92000010"},
                                    {2, Canoas, "Rua Benta", "Norte", "92000020"},
                                    {3, Canoas, "Av. Brasil", "Sul", "92000030"},
                                    {4, Alegrete, "Rua Bento", "Centro", "97000010"}};
    mutable std::vector<std::string> Procurados;
};
