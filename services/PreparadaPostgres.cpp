#include "services/PreparadaPostgres.h"

#include <libpq-fe.h>

#include <QByteArray>

#include <algorithm>
#include <charconv>
#include <string_view>
#include <utility>

namespace mesa {

namespace {

// The numbers that types have in every server.
constexpr Oid Logico = 16;
constexpr Oid Octetos = 17;
constexpr Oid Inteiro8 = 20;
constexpr Oid Inteiro2 = 21;
constexpr Oid Inteiro4 = 23;
constexpr Oid TextoLivre = 25;
constexpr Oid TextoLimitado = 1043;

bool EhInteiro(Oid tipo)
{
    return tipo == Inteiro8 || tipo == Inteiro4 || tipo == Inteiro2;
}

bool EhConhecido(Oid tipo)
{
    return EhInteiro(tipo) || tipo == Logico || tipo == Octetos || tipo == TextoLivre || tipo == TextoLimitado;
}

// The most significant byte first, in two's complement.
std::int64_t DaRede(std::string_view octetos)
{
    std::uint64_t numero = !octetos.empty() && (octetos.front() & 0x80) != 0 ? ~std::uint64_t(0) : 0;
    for (const char octeto : octetos) {
        numero = numero << 8 | static_cast<unsigned char>(octeto);
    }
    return static_cast<std::int64_t>(numero);
}

// What the server wrote of bytes as text.
QByteArray DoTexto(const QByteArray &texto)
{
    std::size_t quantos = 0;
    const std::unique_ptr<unsigned char, void (*)(void *)> octetos(
        PQunescapeBytea(reinterpret_cast<const unsigned char *>(texto.constData()), &quantos), PQfreemem);
    return {reinterpret_cast<const char *>(octetos.get()), static_cast<qsizetype>(quantos)};
}

// A text or bytes that were never given are nothing, as they are to the toolkit's drivers.
bool EhNulo(const QVariant &valor)
{
    return valor.isNull() || (valor.typeId() == QMetaType::QString && valor.toString().isNull()) ||
           (valor.typeId() == QMetaType::QByteArray && valor.toByteArray().isNull());
}

} // namespace

PreparadaPostgres::PreparadaPostgres(pg_conn *ligacao, std::string nome, const QString &sql, Falhou falhou)
    : m_Ligacao(ligacao),
      m_Nome(std::move(nome)),
      m_Falhou(std::move(falhou)),
      m_Resultado(nullptr, PQclear)
{
    Aceita(PQprepare(m_Ligacao, m_Nome.c_str(), ComLugares(sql.toStdString()).c_str(), 0, nullptr));
    const Resultado descrita = Aceita(PQdescribePrepared(m_Ligacao, m_Nome.c_str()));
    for (int coluna = 0; coluna < PQnfields(descrita.get()); ++coluna) {
        m_Tipos.push_back(PQftype(descrita.get(), coluna));
    }
    m_Binaria = std::all_of(m_Tipos.begin(), m_Tipos.end(), EhConhecido);
}

std::string PreparadaPostgres::ComLugares(const std::string &sql)
{
    std::string com;
    int lugar = 0;
    char aspas = 0;
    for (const char letra : sql) {
        if (aspas != 0) {
            aspas = letra == aspas ? 0 : aspas;
        } else if (letra == '\'' || letra == '"') {
            aspas = letra;
        } else if (letra == '?') {
            com += "$" + std::to_string(++lugar);
            continue;
        }
        com += letra;
    }
    return com;
}

PreparadaPostgres::Resultado PreparadaPostgres::Aceita(pg_result *resultado) const
{
    Resultado dono(resultado, PQclear);
    const ExecStatusType como = PQresultStatus(resultado);
    if (como != PGRES_COMMAND_OK && como != PGRES_TUPLES_OK) {
        throw m_Falhou(resultado);
    }
    return dono;
}

void PreparadaPostgres::Executa(const QVariantList &valores)
{
    Termina();
    const auto quantos = static_cast<std::size_t>(valores.size());
    std::vector<QByteArray> guardados(quantos);
    std::vector<const char *> lugares(quantos);
    std::vector<int> tamanhos(quantos);
    std::vector<int> formas(quantos);
    for (std::size_t n = 0; n < quantos; ++n) {
        const QVariant &valor = valores[static_cast<qsizetype>(n)];
        if (EhNulo(valor)) {
            continue; // a null pointer
        }
        const bool octetos = valor.typeId() == QMetaType::QByteArray;
        guardados[n] = octetos ? valor.toByteArray() : valor.toString().toUtf8();
        lugares[n] = guardados[n].constData();
        tamanhos[n] = static_cast<int>(guardados[n].size());
        formas[n] = octetos ? 1 : 0;
    }
    m_Resultado = Aceita(PQexecPrepared(m_Ligacao, m_Nome.c_str(), static_cast<int>(quantos), lugares.data(),
                                        tamanhos.data(), formas.data(), m_Binaria ? 1 : 0));
}

bool PreparadaPostgres::Proxima()
{
    if (m_Resultado && m_Linha < PQntuples(m_Resultado.get())) {
        ++m_Linha;
    }
    return TemLinha();
}

bool PreparadaPostgres::TemLinha() const
{
    return m_Resultado && m_Linha >= 0 && m_Linha < PQntuples(m_Resultado.get());
}

QVariant PreparadaPostgres::Valor(int coluna) const
{
    const Oid tipo = m_Tipos.at(static_cast<std::size_t>(coluna));
    if (!TemLinha() || PQgetisnull(m_Resultado.get(), m_Linha, coluna) != 0) {
        return QVariant(QMetaType(EhInteiro(tipo)   ? QMetaType::LongLong
                                  : tipo == Octetos ? QMetaType::QByteArray
                                  : tipo == Logico  ? QMetaType::Bool
                                                    : QMetaType::QString));
    }
    if (EhInteiro(tipo)) {
        return QVariant(qlonglong(Inteiro(coluna)));
    }
    if (tipo == Octetos) {
        const QByteArray valor(PQgetvalue(m_Resultado.get(), m_Linha, coluna),
                               PQgetlength(m_Resultado.get(), m_Linha, coluna));
        return m_Binaria ? valor : DoTexto(valor);
    }
    if (tipo == Logico) {
        return Inteiro(coluna) != 0;
    }
    return QString::fromUtf8(PQgetvalue(m_Resultado.get(), m_Linha, coluna),
                             PQgetlength(m_Resultado.get(), m_Linha, coluna));
}

std::int64_t PreparadaPostgres::Inteiro(int coluna) const
{
    if (!TemLinha()) {
        return 0;
    }
    const std::string_view valor(PQgetvalue(m_Resultado.get(), m_Linha, coluna),
                                 static_cast<std::size_t>(PQgetlength(m_Resultado.get(), m_Linha, coluna)));
    const Oid tipo = m_Tipos.at(static_cast<std::size_t>(coluna));
    if (m_Binaria && (EhInteiro(tipo) || tipo == Logico)) {
        return DaRede(valor);
    }
    if (tipo == Logico) {
        return valor == "t" ? 1 : 0;
    }
    std::int64_t numero = 0;
    std::from_chars(valor.data(), valor.data() + valor.size(), numero);
    return numero;
}

std::string PreparadaPostgres::Texto(int coluna) const
{
    if (!TemLinha() || PQgetisnull(m_Resultado.get(), m_Linha, coluna) != 0) {
        return "";
    }
    const Oid tipo = m_Tipos.at(static_cast<std::size_t>(coluna));
    if (EhInteiro(tipo) || tipo == Logico) {
        return Valor(coluna).toString().toStdString();
    }
    return {PQgetvalue(m_Resultado.get(), m_Linha, coluna),
            static_cast<std::size_t>(PQgetlength(m_Resultado.get(), m_Linha, coluna))};
}

void PreparadaPostgres::Termina()
{
    m_Resultado.reset();
    m_Linha = -1;
}

} // namespace mesa
