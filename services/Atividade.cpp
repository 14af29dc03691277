#include "services/Atividade.h"

#include "host/Indicador.h"
#include "services/Calendario.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <vector>

namespace mesa {

namespace {

std::vector<MudancaDeAtividade> Mudancas(Banco &banco, const std::string &entidade, std::int64_t numero)
{
    std::vector<MudancaDeAtividade> mudancas;
    Consulta entradas(banco,
                      "SELECT Quando, COALESCE(Fuso, 0), Depois FROM HISTORICO "
                      "WHERE Entidade = ? AND NroEntidade = ? AND Acao <> 'altera' ORDER BY Nro",
                      {Q(entidade), qlonglong(numero)});
    while (entradas.Proxima()) {
        mudancas.push_back(MudancaDeAtividade::De(entradas.Inteiro(0), static_cast<std::int32_t>(entradas.Inteiro(1)),
                                                  entradas.Texto(2)));
    }
    return mudancas;
}

} // namespace

MudancaDeAtividade MudancaDeAtividade::De(std::int64_t quando, std::int32_t fuso, const std::string &depois)
{
    const QJsonObject linha = QJsonDocument::fromJson(QByteArray::fromStdString(depois)).object();
    return {static_cast<std::int32_t>(MaisMinutos(quando, fuso) / 1000000),
            linha.value("Ativo").toInt() != Indicador::Nao};
}

std::optional<Atividade> AtividadeNoDia(Banco &banco, const std::string &entidade, std::int64_t numero,
                                        std::int32_t dia)
{
    return AtividadeNoDia(Mudancas(banco, entidade, numero), dia);
}

std::optional<Atividade> AtividadeNoDia(const std::vector<MudancaDeAtividade> &mudancas, std::int32_t dia)
{
    for (std::size_t n = 0; n < mudancas.size(); ++n) {
        const bool ultima = n + 1 == mudancas.size();
        // A clock that went back makes no day disappear on which it was active.
        if (mudancas[n].Ativa && dia >= mudancas[n].Dia &&
            (ultima || dia <= std::max(mudancas[n].Dia, mudancas[n + 1].Dia))) {
            return Atividade{};
        }
    }
    if (mudancas.empty() || !mudancas.front().Ativa || dia >= mudancas.front().Dia) {
        return std::nullopt;
    }
    return Atividade{mudancas.front().Dia, !mudancas.back().Ativa};
}

} // namespace mesa
