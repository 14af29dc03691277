#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace mesa {

// The code of a street is its place in the table of streets, from 1, behind that of its municipality.
inline constexpr std::int32_t ViasPorMunicipio = 1000;

// A type of equipment.
struct TipoOferecido {
    std::string Codigo;
    bool TrabFoto = false; // of the photo-work mode
    std::string Medidores; // the meter types that have equipment of it, one digit each

    bool Em(std::int32_t tipoAgente) const;
};

struct Rejeicao {
    std::int32_t Numero = 0;
    std::string Nome;
};

// The desk's tables to which the records refer.
class Referencias {
  public:
    // Read once from the program's own data.
    static const Referencias &Tabelas();

    bool TemMunicipio(std::int32_t codMunic) const { return m_Municipios.count(codMunic) > 0; }
    bool TemRejeicao(std::int32_t numero) const;
    bool TemLogradouro(std::int32_t codLograd) const;
    // Null for a code that there is not.
    const TipoOferecido *Tipo(const std::string &codigo) const;

    const std::vector<TipoOferecido> &Tipos() const { return m_Tipos; }
    const std::vector<Rejeicao> &Rejeicoes() const { return m_Rejeicoes; }

  private:
    Referencias();

    std::set<std::int32_t> m_Municipios;
    std::vector<Rejeicao> m_Rejeicoes;
    std::vector<TipoOferecido> m_Tipos;
    std::int32_t m_Vias = 0;
};

} // namespace mesa
