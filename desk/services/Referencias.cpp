#include "desk/services/Referencias.h"

#include "desk/services/TabelaDeDados.h"
#include "host/Conversoes.h"

#include <algorithm>

namespace mesa {

Referencias::Referencias()
{
    for (const LinhaDeDados &linha : LeTabelaDeDados("municipios.tsv")) {
        m_Municipios.insert(CLng(linha.at(0)));
    }
    for (const LinhaDeDados &linha : LeTabelaDeDados("rejeicoes.tsv")) {
        m_Rejeicoes.push_back({CLng(linha.at(0)), linha.at(1)});
    }
    for (const LinhaDeDados &linha : LeTabelaDeDados("tipos.tsv")) {
        m_Tipos.push_back({linha.at(0), linha.at(1) == "1", linha.at(2)});
    }
    m_Vias = static_cast<std::int32_t>(LeTabelaDeDados("vias.tsv").size());
}

bool TipoOferecido::Em(std::int32_t tipoAgente) const
{
    return Medidores.find(CStr(tipoAgente)) != std::string::npos;
}

bool Referencias::TemRejeicao(std::int32_t numero) const
{
    return std::ranges::find(m_Rejeicoes, numero, &Rejeicao::Numero) != m_Rejeicoes.end();
}

const TipoOferecido *Referencias::Tipo(const std::string &codigo) const
{
    const auto achado = std::ranges::find(m_Tipos, codigo, &TipoOferecido::Codigo);
    return achado == m_Tipos.end() ? nullptr : &*achado;
}

bool Referencias::TemLogradouro(std::int32_t codLograd) const
{
    const std::int32_t municipio = codLograd / ViasPorMunicipio;
    const std::int32_t via = codLograd % ViasPorMunicipio;
    return municipio >= 1 && municipio <= static_cast<std::int32_t>(m_Municipios.size()) && via >= 1 && via <= m_Vias;
}

const Referencias &Referencias::Tabelas()
{
    static const Referencias tabelas;
    return tabelas;
}

} // namespace mesa
