#include "services/Atividade.h"

#include "host/Indicador.h"
#include "services/Calendario.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <vector>

namespace mesa {

namespace {

struct Mudanca {
    std::int32_t Dia;
    bool Ativa;
};

std::vector<Mudanca> Mudancas(Banco &banco, const std::string &entidade, std::int64_t numero)
{
    std::vector<Mudanca> mudancas;
    Consulta entradas(banco,
                      "SELECT Quando, COALESCE(Fuso, 0), Depois FROM HISTORICO "
                      "WHERE Entidade = ? AND NroEntidade = ? AND Acao <> 'altera' ORDER BY Nro",
                      {Q(entidade), qlonglong(numero)});
    while (entradas.Proxima()) {
        const std::int64_t momento = MaisMinutos(entradas.Inteiro(0), static_cast<std::int32_t>(entradas.Inteiro(1)));
        const QJsonObject linha = QJsonDocument::fromJson(entradas.Valor(2).toString().toUtf8()).object();
        mudancas.push_back(
            {static_cast<std::int32_t>(momento / 1000000), linha.value("Ativo").toInt() != Indicador::Nao});
    }
    return mudancas;
}

} // namespace

std::optional<Atividade> AtividadeNoDia(Banco &banco, const std::string &entidade, std::int64_t numero,
                                        std::int32_t dia)
{
    const std::vector<Mudanca> mudancas = Mudancas(banco, entidade, numero);
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
