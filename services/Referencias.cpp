#include "services/Referencias.h"

#include "host/Conversoes.h"
#include "services/TabelaDeDados.h"

#include <algorithm>

namespace mesa {

Referencias::Referencias()
{
    for (const LinhaDeDados &linha : LeTabelaDeDados("municipios.tsv")) {
        m_Municipios.push_back({CLng(linha.at(0)), linha.at(1), linha.at(2), CLng(linha.at(3))});
        m_Estados.insert(linha.at(2));
    }
    for (const LinhaDeDados &linha : LeTabelaDeDados("rejeicoes.tsv")) {
        m_Rejeicoes.push_back({CLng(linha.at(0)), linha.at(1)});
    }
    for (const LinhaDeDados &linha : LeTabelaDeDados("tipos.tsv")) {
        m_Tipos.push_back({linha.at(0), linha.at(1) == "1", linha.at(2), linha.at(3)});
    }
}

bool TipoOferecido::Em(std::int32_t tipoAgente) const
{
    return Medidores.find(CStr(tipoAgente)) != std::string::npos;
}

const Municipio *Referencias::AchaMunicipio(std::int32_t codMunic) const
{
    const auto achado = std::ranges::lower_bound(m_Municipios, codMunic, {}, &Municipio::Codigo);
    return achado == m_Municipios.end() || achado->Codigo != codMunic ? nullptr : &*achado;
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

const Referencias &Referencias::Tabelas()
{
    static const Referencias tabelas;
    return tabelas;
}

} // namespace mesa
