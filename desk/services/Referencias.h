#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace mesa {

// The code of a street is its place in the table of streets, from 1, behind that of its municipality.
inline constexpr std::int32_t ViasPorMunicipio = 1000;

// The desk's tables to which the records refer.
class Referencias {
  public:
    // Read once from the program's own data.
    static const Referencias &Tabelas();

    bool TemMunicipio(std::int32_t codMunic) const { return m_Municipios.count(codMunic) > 0; }
    bool TemRejeicao(std::int32_t numero) const { return m_Rejeicoes.count(numero) > 0; }
    bool TemLogradouro(std::int32_t codLograd) const;
    bool TemTipo(const std::string &tipoEquip) const { return m_Tipos.count(tipoEquip) > 0; }
    // 1 for a type of the photo-work mode, 2 for another. The type exists.
    std::int32_t TrabFoto(const std::string &tipoEquip) const { return m_Tipos.at(tipoEquip).TrabFoto; }
    // Whether the meter type has equipment of the type. The type exists.
    bool Oferece(std::int32_t tipoAgente, const std::string &tipoEquip) const;

  private:
    struct Tipo {
        std::int32_t TrabFoto = 0;
        std::string Medidores; // one digit each
    };

    Referencias();

    std::set<std::int32_t> m_Municipios;
    std::set<std::int32_t> m_Rejeicoes;
    std::map<std::string, Tipo> m_Tipos;
    std::int32_t m_Vias = 0;
};

} // namespace mesa
