#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

// The desk's tables to which the records refer.
class Referencias {
  public:
    // Read once from the program's own data.
    static const Referencias &Tabelas();

    bool TemMunicipio(std::int32_t codMunic) const { return m_Municipios.count(codMunic) > 0; }
    bool TemRejeicao(std::int32_t numero) const { return m_Rejeicoes.count(numero) > 0; }
    bool TemTipo(const std::string &tipoEquip) const { return m_TrabFoto.count(tipoEquip) > 0; }
    // 1 for a type of the photo-work mode, 2 for another. The type exists.
    std::int32_t TrabFoto(const std::string &tipoEquip) const { return m_TrabFoto.at(tipoEquip); }

  private:
    Referencias();

    std::set<std::int32_t> m_Municipios;
    std::set<std::int32_t> m_Rejeicoes;
    std::map<std::string, std::int32_t> m_TrabFoto;
};
