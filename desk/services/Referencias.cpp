#include "desk/services/Referencias.h"

#include "host/Conversoes.h"
#include "host/Falha.h"
#include "host/Texto.h"

#include <QFile>

#include <vector>

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
        m_TrabFoto[linha.at(0)] = CLng(linha.at(1));
    }
}

const Referencias &Referencias::Tabelas()
{
    static const Referencias tabelas;
    return tabelas;
}
