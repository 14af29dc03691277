#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace mesa {

struct Municipio {
    std::int32_t Codigo = 0; // of the statistics institute
    std::string Nome;
    std::string UF;
    std::int32_t CodReceita = 0;
};

// A type of equipment.
struct TipoOferecido {
    std::string Codigo;
    bool TrabFoto = false; // of the photo-work mode
    std::string Medidores; // the meter types that have equipment of it, one digit each
    std::string Nome;      // as the screens have it

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

    bool TemMunicipio(std::int32_t codMunic) const { return AchaMunicipio(codMunic) != nullptr; }
    // Null for a code that there is not.
    const Municipio *AchaMunicipio(std::int32_t codMunic) const;
    bool TemEstado(const std::string &uf) const { return m_Estados.count(uf) > 0; }
    bool TemRejeicao(std::int32_t numero) const;
    // Null for a code that there is not.
    const TipoOferecido *Tipo(const std::string &codigo) const;

    // Of the whole country, in order of code.
    const std::vector<Municipio> &Municipios() const { return m_Municipios; }
    // Their letters, in order.
    const std::set<std::string> &Estados() const { return m_Estados; }
    const std::vector<TipoOferecido> &Tipos() const { return m_Tipos; }
    const std::vector<Rejeicao> &Rejeicoes() const { return m_Rejeicoes; }

  private:
    Referencias();

    std::vector<Municipio> m_Municipios;
    std::set<std::string> m_Estados;
    std::vector<Rejeicao> m_Rejeicoes;
    std::vector<TipoOferecido> m_Tipos;
};

} // namespace mesa
