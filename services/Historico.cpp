#include "services/Historico.h"

#include "host/Conversoes.h"
#include "services/Calendario.h"
#include "services/Esquema.h"
#include "services/NomesCampos.h"
#include "services/Permissoes.h"
#include "services/Resumo.h"

#include <QJsonDocument>
#include <QStringList>
#include <QtEndian>

#include <algorithm>
#include <vector>

namespace mesa {

namespace {

constexpr std::size_t MaisNomes = 6; // named in a sentence; the others are counted

// What the hashes are made over begins with the version of the way in which they are made, and with what they are for.
constexpr char VersaoDoElo = 1;
constexpr std::string_view DominioDaOrigem = "registro de equipamentos: origem do historico";
constexpr std::string_view DominioDoElo = "registro de equipamentos: entrada do historico";

enum class Presenca : char { Falta = 0, Ha = 1 };

void Junta(QByteArray &tudo, const QByteArray &campo)
{
    const quint64 tamanho = qToBigEndian(static_cast<quint64>(campo.size()));
    tudo.append(static_cast<char>(Presenca::Ha));
    tudo.append(reinterpret_cast<const char *>(&tamanho), sizeof tamanho);
    tudo.append(campo);
}

void Junta(QByteArray &tudo, const QVariant &campo)
{
    if (campo.isNull()) {
        tudo.append(static_cast<char>(Presenca::Falta));
    } else {
        Junta(tudo, campo.toString().toUtf8());
    }
}

QByteArray Inicio(std::string_view dominio)
{
    QByteArray tudo(1, VersaoDoElo);
    Junta(tudo, QByteArray(dominio.data(), static_cast<qsizetype>(dominio.size())));
    return tudo;
}

const Esquema::Tabela &Historiada(const std::string &tabela)
{
    return *Esquema::Acha(tabela);
}

std::vector<const Esquema::Coluna *> Retratadas(const Esquema::Tabela &tabela)
{
    std::vector<const Esquema::Coluna *> colunas;
    for (const Esquema::Coluna &coluna : tabela.Colunas) {
        if (coluna.Tipo != Esquema::Forma::Octetos) {
            colunas.push_back(&coluna);
        }
    }
    return colunas;
}

QString NomesDas(const std::vector<const Esquema::Coluna *> &colunas)
{
    QStringList nomes;
    for (const Esquema::Coluna *coluna : colunas) {
        nomes.push_back(QString::fromUtf8(coluna->Nome.data(), static_cast<qsizetype>(coluna->Nome.size())));
    }
    return nomes.join(", ");
}

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
    if (entidade == "SETOR") {
        return "setor " + dados.value("Nome").toString().toStdString();
    }
    const std::string numero = dados.value("Numero").toString().toStdString();
    return numero.empty() ? "declaração de conformidade" : "aferição " + numero;
}

// Names of what changed in one row.
std::vector<std::string> Nomes(const std::string &raiz, const std::string &entidade, const std::string &acao,
                               const QJsonObject &antes, const QJsonObject &depois)
{
    if (entidade == "PERMISSAO") {
        return {std::string(acao == "desativa" ? "direito retirado: " : "direito dado: ") +
                Permissoes::EmPalavras(S(depois.value("Objeto").toString()), S(depois.value("Acao").toString()))};
    }
    if (entidade != raiz) {
        const std::string parte = NomeDaParte(entidade, depois);
        const std::string genero = entidade == "AFERICAO" ? "a" : "o";
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

QString Historico::ColunasDoRetrato(const std::string &tabela)
{
    return NomesDas(Retratadas(Historiada(tabela)));
}

bool Historico::EhSegredo(std::string_view coluna)
{
    return coluna == "Senha" || coluna == "ChaveSecreta";
}

std::string Historico::RetratoDe(const std::string &tabela, const Consulta &linha, int primeira)
{
    QVariantList valores;
    for (std::size_t n = Retratadas(Historiada(tabela)).size(); n > 0; --n) {
        valores.push_back(linha.Valor(primeira++));
    }
    return RetratoDe(tabela, valores);
}

std::string Historico::RetratoDe(const std::string &tabela, const QVariantList &valores)
{
    QJsonObject retrato;
    auto proximo = valores.begin();
    for (const Esquema::Coluna *coluna : Retratadas(Historiada(tabela))) {
        // What is not there is written down as an empty text, whatever type a database gives its absence.
        const QVariant valor = proximo->isNull() ? QVariant(QString()) : *proximo;
        ++proximo;
        retrato.insert(QString::fromUtf8(coluna->Nome.data(), static_cast<qsizetype>(coluna->Nome.size())),
                       EhSegredo(coluna->Nome) ? QJsonValue(Q(Resumo(valor.toString().toUtf8())))
                                               : QJsonValue::fromVariant(valor));
    }
    return TextoJson(retrato).toStdString();
}

std::string Historico::Retrato(Banco &banco, const std::string &tabela, std::int64_t chave)
{
    Consulta linha(banco,
                   "SELECT " + ColunasDoRetrato(tabela) + " FROM " + Q(tabela) + " WHERE " +
                       Q(std::string(Historiada(tabela).Chave().Nome)) + " = ?",
                   {qlonglong(chave)});
    return linha.Proxima() ? RetratoDe(tabela, linha, 0) : "";
}

std::string Historico::Origem(const std::string &identificador)
{
    QByteArray tudo = Inicio(DominioDaOrigem);
    Junta(tudo, QByteArray::fromStdString(identificador));
    return Resumo(tudo);
}

std::string Historico::Encadeia(const std::string &anterior, std::int64_t nro, const QVariantList &campos)
{
    QByteArray tudo = Inicio(DominioDoElo);
    Junta(tudo, QByteArray::fromStdString(anterior));
    Junta(tudo, QByteArray::number(qlonglong(nro)));
    for (const QVariant &campo : campos) {
        Junta(tudo, campo);
    }
    return Resumo(tudo);
}

bool Historico::EloVale(std::int64_t nro) const
{
    std::string anterior;
    if (nro == 1) {
        Consulta registro(m_Banco, "SELECT Identificador FROM REGISTRO");
        registro.Proxima();
        anterior = Origem(registro.Texto(0));
    } else {
        Consulta linha(m_Banco, "SELECT Elo FROM HISTORICO WHERE Nro = ?", {qlonglong(nro - 1)});
        if (!linha.Proxima()) {
            return false;
        }
        anterior = linha.Texto(0);
    }
    Consulta linha(m_Banco, "SELECT " + ColunasDoElo() + ", Elo FROM HISTORICO WHERE Nro = ?", {qlonglong(nro)});
    if (!linha.Proxima()) {
        return false;
    }
    const auto colunas = static_cast<int>(ColunasDoElo().split(", ").size());
    QVariantList campos;
    for (int coluna = 0; coluna < colunas; ++coluna) {
        campos.push_back(linha.Valor(coluna));
    }
    return Encadeia(anterior, nro, campos) == linha.Texto(colunas);
}

QString Historico::ColunasDoElo()
{
    std::vector<const Esquema::Coluna *> colunas = Retratadas(Historiada("HISTORICO"));
    return NomesDas({colunas.begin() + 1, colunas.end() - 1});
}

Historico::Cabeca Historico::Fim() const
{
    Cabeca cabeca;
    {
        Consulta ultima(m_Banco, "SELECT Nro, Elo, Quando, Fuso FROM HISTORICO ORDER BY Nro DESC LIMIT 1");
        if (ultima.Proxima()) {
            return {ultima.Inteiro(0), ultima.Texto(1), ultima.Inteiro(2), !ultima.Valor(3).isNull()};
        }
    }
    Consulta registro(m_Banco, "SELECT Identificador FROM REGISTRO");
    registro.Proxima();
    cabeca.Elo = Origem(registro.Texto(0));
    return cabeca;
}

void Historico::Acrescenta(const QVariantList &campos)
{
    const Cabeca fim = Fim();
    const QStringList nomes = ColunasDoElo().split(", ");
    Celulas celulas{{"Nro", qlonglong(fim.Tamanho + 1)}};
    const std::vector<std::string> colunas = [&] {
        std::vector<std::string> textos;
        for (const QString &nome : nomes) {
            textos.push_back(nome.toStdString());
        }
        return textos;
    }();
    for (std::size_t n = 0; n < colunas.size(); ++n) {
        celulas.push_back({colunas[n], campos[static_cast<qsizetype>(n)]});
    }
    celulas.push_back({"Elo", Q(Encadeia(fim.Elo, fim.Tamanho + 1, campos))});
    m_Banco.Insere("HISTORICO", celulas);
}

void Historico::Acrescenta(const Instante &agora, std::int32_t operador, const Mudanca &mudanca, const QVariant &antes,
                           const std::string &depois)
{
    const std::int64_t quando = agora.Utc();
    const auto poe = [&](const Mudanca &m, const QVariant &de, const std::string &para) {
        Acrescenta({qlonglong(quando), agora.Fuso,
                    operador == 0 ? QVariant(QMetaType::fromType<qlonglong>()) : QVariant(operador), Q(m.Raiz),
                    qlonglong(m.NroRaiz), qlonglong(m.Versao), Q(m.Entidade), qlonglong(m.NroEntidade), Q(m.Acao),
                    m.Motivo.empty() ? QVariant(QMetaType::fromType<QString>()) : QVariant(Q(m.Motivo)), de, Q(para)});
    };
    const Cabeca fim = Fim();
    if (fim.ComFuso && quando < fim.Quando) {
        const QJsonObject volta{{"Ultimo", qlonglong(fim.Quando)}, {"Agora", qlonglong(quando)}};
        poe({"RELOGIO", 0, 0, "RELOGIO", 0, "volta"}, QVariant(QMetaType::fromType<QString>()),
            TextoJson(volta).toStdString());
    }
    poe(mudanca, antes, depois);
}

void Historico::Registra(const Instante &agora, std::int32_t operador, const Mudanca &mudanca)
{
    QVariant antes(QMetaType::fromType<QString>());
    {
        Consulta anterior(
            m_Banco, "SELECT Depois FROM HISTORICO WHERE Entidade = ? AND NroEntidade = ? ORDER BY Nro DESC LIMIT 1",
            {Q(mudanca.Entidade), qlonglong(mudanca.NroEntidade)});
        if (anterior.Proxima()) {
            antes = anterior.Valor(0);
        }
    }
    Acrescenta(agora, operador, mudanca, antes, Retrato(m_Banco, mudanca.Entidade, mudanca.NroEntidade));
}

void Historico::RegistraFato(const Instante &agora, std::int32_t operador, const Mudanca &mudanca,
                             const QJsonObject &dados)
{
    Acrescenta(agora, operador, mudanca, QVariant(QMetaType::fromType<QString>()), TextoJson(dados).toStdString());
}

std::string Historico::Mudancas(Raiz raiz, std::int32_t numero, std::int64_t depoisDaVersao) const
{
    std::vector<Autoria> autorias;
    Consulta linhas(
        m_Banco,
        "SELECT u.Nome, h.Quando, COALESCE(h.Fuso, 0), h.Entidade, h.Acao, h.Antes, h.Depois FROM HISTORICO h "
        "JOIN USUARIO u ON u.Numero = h.Operador "
        "WHERE h.Raiz = ? AND h.NroRaiz = ? AND h.Versao > ? ORDER BY h.Versao, h.Nro",
        {Q(Nome(raiz)), numero, qlonglong(depoisDaVersao)});
    while (linhas.Proxima()) {
        const std::string quem =
            "por " + linhas.Texto(0) + " em " +
            TextoDoMomento(MaisMinutos(linhas.Inteiro(1), static_cast<std::int32_t>(linhas.Inteiro(2))));
        if (autorias.empty() || autorias.back().Quem != quem) {
            autorias.push_back({quem, {}});
        }
        for (std::string &nome :
             Nomes(Nome(raiz), linhas.Texto(3), linhas.Texto(4), LeJson(linhas.Texto(5)), LeJson(linhas.Texto(6)))) {
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
                   "SELECT 'por ' || u.Nome, h.Quando, COALESCE(h.Fuso, 0) FROM HISTORICO h "
                   "LEFT JOIN USUARIO u ON u.Numero = h.Operador WHERE h.Entidade = ? AND h.NroEntidade = ? "
                   "ORDER BY CASE WHEN h.Operador IS NULL THEN 1 ELSE 0 END, h.Nro DESC LIMIT 1",
                   {Q(entidade), qlonglong(numero)});
    return linha.Proxima()
               ? (linha.Valor(0).isNull() ? "pelo sistema" : linha.Texto(0)) + " em " +
                     TextoDoMomento(MaisMinutos(linha.Inteiro(1), static_cast<std::int32_t>(linha.Inteiro(2))))
               : "";
}

std::string Historico::Nome(Raiz raiz)
{
    switch (raiz) {
    case Raiz::Equipamento:
        return "EQUIPAMENTO";
    case Raiz::Limite:
        return "LIMITE";
    case Raiz::Usuario:
        return "USUARIO";
    case Raiz::Cliente:
        return "CLIENTE";
    default:
        return "DIA";
    }
}

} // namespace mesa
