#include "desk/services/Referencias.h"

#include "host/Conversoes.h"
#include "host/Falha.h"
#include "host/Texto.h"

#include <QFile>

#include <vector>

namespace mesa {

namespace {

// Rows of a table; lines that begin with "#" are comments.
std::vector<std::vector<std::string>> LeTabela(const QString &nome)
{
    QFile arquivo(nome);
    if (!arquivo.open(QIODevice::ReadOnly)) {
        throw Falha(NumeroFalha::ArquivoNaoEncontrado, "Servicos",
                    "Falta a tabela " + nome.toStdString() + " no programa.");
    }
    std::vector<std::vector<std::string>> linhas;
    for (const std::string &linha : Divide(arquivo.readAll().toStdString(), "\n")) {
        if (!linha.empty() && linha.front() != '#') {
            linhas.push_back(Divide(linha, "\t"));
        }
    }
    return linhas;
}

} // namespace

Referencias::Referencias()
{
    for (const auto &linha : LeTabela(":/data/municipios.tsv")) {
        m_Municipios.insert(CLng(linha.at(0)));
    }
    for (const auto &linha : LeTabela(":/data/rejeicoes.tsv")) {
        m_Rejeicoes.insert(CLng(linha.at(0)));
    }
    for (const auto &linha : LeTabela(":/data/tipos.tsv")) {
        m_Tipos[linha.at(0)] = {CLng(linha.at(1)), linha.at(2)};
    }
    m_Vias = static_cast<std::int32_t>(LeTabela(":/data/vias.tsv").size());
}

bool Referencias::TemLogradouro(std::int32_t codLograd) const
{
    const std::int32_t municipio = codLograd / ViasPorMunicipio;
    const std::int32_t via = codLograd % ViasPorMunicipio;
    return municipio >= 1 && municipio <= static_cast<std::int32_t>(m_Municipios.size()) && via >= 1 && via <= m_Vias;
}

bool Referencias::Oferece(std::int32_t tipoAgente, const std::string &tipoEquip) const
{
    return m_Tipos.at(tipoEquip).Medidores.find(CStr(tipoAgente)) != std::string::npos;
}

const Referencias &Referencias::Tabelas()
{
    static const Referencias tabelas;
    return tabelas;
}

} // namespace mesa
