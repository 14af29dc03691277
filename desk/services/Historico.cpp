#include "desk/services/Historico.h"

#include "desk/services/Calendario.h"
#include "desk/services/NomesCampos.h"
#include "host/Conversoes.h"

#include <QJsonDocument>

#include <algorithm>
#include <vector>

namespace mesa {

namespace {

constexpr std::size_t MaisNomes = 6; // named in a sentence; the others are counted

QString TextoJson(const QJsonObject &objeto)
{
    return QString::fromUtf8(QJsonDocument(objeto).toJson(QJsonDocument::Compact));
}

QJsonObject LeJson(const std::string &texto)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(texto)).object();
}

std::string NomeDaParte(const std::string &entidade, const QJsonObject &dados)
{
    if (entidade == "SENSOR") {
        return "sensor " + CStr(dados.value("NroSensor").toInt());
    }
    const std::string numero = dados.value("Numero").toString().toStdString();
    return numero.empty() ? "declaração de conformidade" : "aferição " + numero;
}

// Names of what changed in one row.
std::vector<std::string> Nomes(const std::string &raiz, const std::string &entidade, const std::string &acao,
                               const QJsonObject &antes, const QJsonObject &depois)
{
    if (entidade != raiz) {
        const std::string parte = NomeDaParte(entidade, depois);
        const std::string genero = entidade == "SENSOR" ? "o" : "a";
        return {acao == "inclui"     ? parte + " incluíd" + genero
                : acao == "desativa" ? parte + " excluíd" + genero
                : acao == "reativa"  ? parte + " reativad" + genero
                                     : parte};
    }
    if (acao == "desativa") {
        return {"desativação"};
    }
    if (acao == "reativa") {
        return {"reativação"};
    }
    return CamposDiferentes(antes, depois);
}

struct Autoria {
    std::string Quem;
    std::vector<std::string> OQue;
};

std::string Frase(const Autoria &autoria)
{
    std::string oQue;
    for (std::size_t n = 0; n < std::min(autoria.OQue.size(), MaisNomes); ++n) {
        oQue += (n > 0 ? ", " : "") + autoria.OQue[n];
    }
    if (autoria.OQue.size() > MaisNomes) {
        oQue += " e mais " + CStr(autoria.OQue.size() - MaisNomes);
    }
    return autoria.Quem + (oQue.empty() ? "" : " (" + oQue + ")");
}

} // namespace

void Historico::Registra(std::int64_t quando, std::int32_t operador, const Mudanca &mudanca, const QJsonObject &antes,
                         const QJsonObject &depois)
{
    m_Banco.Insere("HISTORICO",
                   {{"Quando", qlonglong(quando)},
                    {"Operador", operador == 0 ? QVariant(QMetaType::fromType<qlonglong>()) : QVariant(operador)},
                    {"Raiz", Q(mudanca.Raiz)},
                    {"NroRaiz", qlonglong(mudanca.NroRaiz)},
                    {"Versao", qlonglong(mudanca.Versao)},
                    {"Entidade", Q(mudanca.Entidade)},
                    {"NroEntidade", qlonglong(mudanca.NroEntidade)},
                    {"Acao", Q(mudanca.Acao)},
                    {"Antes", antes.isEmpty() ? QVariant(QMetaType::fromType<QString>()) : QVariant(TextoJson(antes))},
                    {"Depois", TextoJson(depois)}});
}

std::string Historico::Mudancas(Raiz raiz, std::int32_t numero, std::int64_t depoisDaVersao) const
{
    std::vector<Autoria> autorias;
    Consulta linhas(m_Banco,
                    "SELECT u.Nome, h.Quando, h.Entidade, h.Acao, h.Antes, h.Depois FROM HISTORICO h "
                    "JOIN USUARIO u ON u.Numero = h.Operador "
                    "WHERE h.Raiz = ? AND h.NroRaiz = ? AND h.Versao > ? ORDER BY h.Versao, h.Nro",
                    {Q(Nome(raiz)), numero, qlonglong(depoisDaVersao)});
    while (linhas.Proxima()) {
        const std::string quem = "por " + linhas.Texto(0) + " em " + TextoDoMomento(linhas.Inteiro(1));
        if (autorias.empty() || autorias.back().Quem != quem) {
            autorias.push_back({quem, {}});
        }
        for (std::string &nome :
             Nomes(Nome(raiz), linhas.Texto(2), linhas.Texto(3), LeJson(linhas.Texto(4)), LeJson(linhas.Texto(5)))) {
            std::vector<std::string> &oQue = autorias.back().OQue;
            if (std::find(oQue.begin(), oQue.end(), nome) == oQue.end()) {
                oQue.push_back(std::move(nome));
            }
        }
    }
    std::string frase;
    for (const Autoria &autoria : autorias) {
        frase += (frase.empty() ? "" : " e ") + Frase(autoria);
    }
    return frase;
}

std::string Historico::Ultima(const std::string &entidade, std::int64_t numero) const
{
    Consulta linha(m_Banco,
                   "SELECT u.Nome, h.Quando FROM HISTORICO h JOIN USUARIO u ON u.Numero = h.Operador "
                   "WHERE h.Entidade = ? AND h.NroEntidade = ? ORDER BY h.Nro DESC LIMIT 1",
                   {Q(entidade), qlonglong(numero)});
    return linha.Proxima() ? "por " + linha.Texto(0) + " em " + TextoDoMomento(linha.Inteiro(1)) : "";
}

std::string Historico::Nome(Raiz raiz)
{
    switch (raiz) {
    case Raiz::Equipamento:
        return "EQUIPAMENTO";
    case Raiz::Limite:
        return "LIMITE";
    default:
        return "DIA";
    }
}

} // namespace mesa
