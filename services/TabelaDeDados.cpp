#include "services/TabelaDeDados.h"

#include "host/Falha.h"
#include "host/Texto.h"

#include <QFile>

namespace mesa {

std::vector<LinhaDeDados> LeTabelaDeDados(const std::string &nome)
{
    QFile dados(":/data/" + QString::fromStdString(nome));
    if (!dados.open(QIODevice::ReadOnly)) {
        throw Falha(NumeroFalha::ArquivoNaoEncontrado, "Servicos", "Falta a tabela " + nome + " no programa.");
    }
    std::vector<LinhaDeDados> linhas;
    for (const std::string &linha : Divide(dados.readAll().toStdString(), "\n")) {
        if (!linha.empty() && linha.front() != '#') {
            linhas.push_back(Divide(linha, "\t"));
        }
    }
    return linhas;
}

} // namespace mesa
