#include "services/LeitorSQLite.h"

#include "services/TextoQt.h"

#include <QFileInfo>
#include <QUrl>

#include <sqlite3.h>

#include <array>
#include <utility>

namespace mesa {

namespace {

constexpr int EsperaPorOutros = 5000; // milliseconds
constexpr int PassosEntrePerguntas = 20000;
constexpr std::int64_t PassosDeQualquerArquivo = 20000000;
constexpr std::int64_t PassosPorOcteto = 20;

// The largest value is a document, of five megabytes.
constexpr std::array<std::pair<int, int>, 6> Limites = {{{SQLITE_LIMIT_LENGTH, 8000000},
                                                         {SQLITE_LIMIT_SQL_LENGTH, 1000000},
                                                         {SQLITE_LIMIT_COLUMN, 200},
                                                         {SQLITE_LIMIT_EXPR_DEPTH, 200},
                                                         {SQLITE_LIMIT_ATTACHED, 0},
                                                         {SQLITE_LIMIT_TRIGGER_DEPTH, 1}}};

QString NomeDoArquivo(const QFileInfo &arquivo, const char *como)
{
    return QString::fromUtf8(QUrl::fromLocalFile(arquivo.absoluteFilePath()).toEncoded()) + como;
}

std::unique_ptr<sqlite3, int (*)(sqlite3 *)> Abre(const QString &nome)
{
    sqlite3 *aberto = nullptr;
    sqlite3_open_v2(nome.toUtf8().constData(), &aberto, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr);
    return {aberto, sqlite3_close};
}

// A statement that the present schema takes fails otherwise only because the file has another one.
bool EhDano(int codigo)
{
    const int motivo = codigo & 0xff;
    return motivo == SQLITE_CORRUPT || motivo == SQLITE_ERROR || motivo == SQLITE_TOOBIG;
}

// Nothing that the file brings along is run, and pages are looked at before they are used.
void Desconfia(sqlite3 *banco)
{
    for (const auto &[qual, valor] : Limites) {
        sqlite3_limit(banco, qual, valor);
    }
    for (const auto &[opcao, valor] : {std::pair{SQLITE_DBCONFIG_DEFENSIVE, 1},
                                       {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
                                       {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
                                       {SQLITE_DBCONFIG_ENABLE_VIEW, 0}}) {
        sqlite3_db_config(banco, opcao, valor, nullptr);
    }
    sqlite3_busy_timeout(banco, EsperaPorOutros);
    for (const char *pragma : {"PRAGMA cell_size_check = ON", "PRAGMA query_only = ON", "PRAGMA cache_size = -65536"}) {
        sqlite3_exec(banco, pragma, nullptr, nullptr, nullptr);
    }
}

} // namespace

LeitorSQLite::LeitorSQLite(const std::string &arquivo, bool parado) : m_Aberto(nullptr, sqlite3_close)
{
    const QFileInfo lugar(Q(arquivo));
    m_Aberto = Abre(NomeDoArquivo(lugar, parado ? "?immutable=1" : "?mode=ro"));
    if (!m_Aberto) {
        throw ErroDeLeitura("sem memória", false);
    }
    m_MaisPassos = PassosDeQualquerArquivo + PassosPorOcteto * lugar.size();
    // Nothing is counted by COUNT(*) over a whole table, which goes through its pages without being asked.
    const auto comeca = [&] {
        Desconfia(m_Aberto.get());
        sqlite3_progress_handler(m_Aberto.get(), PassosEntrePerguntas, AoPassar, this);
        return sqlite3_exec(m_Aberto.get(), "BEGIN; SELECT 1 FROM sqlite_master LIMIT 1", nullptr, nullptr, nullptr);
    };
    int codigo = comeca();
    if ((codigo == SQLITE_CANTOPEN || codigo == SQLITE_READONLY) && !parado &&
        !QFileInfo::exists(Q(arquivo + "-wal"))) {
        // On a medium where nothing can be written the log, which is not there, cannot be made either.
        m_Aberto = Abre(NomeDoArquivo(lugar, "?immutable=1"));
        codigo = comeca();
    }
    if (codigo != SQLITE_OK) {
        throw ErroDeLeitura(sqlite3_errmsg(m_Aberto.get()), EhDano(codigo) || codigo == SQLITE_INTERRUPT);
    }
}

LeitorSQLite::~LeitorSQLite() = default;

void LeitorSQLite::PerguntaSeContinua(std::function<bool()> continua)
{
    m_Continua = std::move(continua);
}

void LeitorSQLite::Pergunta()
{
    m_Cancelada = m_Cancelada || (m_Continua && !m_Continua());
    if (m_Cancelada) {
        throw LeituraCancelada();
    }
}

int LeitorSQLite::AoPassar(void *leitor) noexcept
{
    auto &este = *static_cast<LeitorSQLite *>(leitor);
    este.m_Passos += PassosEntrePerguntas;
    try {
        este.m_Cancelada = este.m_Cancelada || (este.m_Continua && !este.m_Continua());
    } catch (...) {
        este.m_Cancelada = true;
    }
    return este.m_Cancelada || este.m_Passos > este.m_MaisPassos ? 1 : 0;
}

void LeitorSQLite::Falha()
{
    if (m_Cancelada) {
        throw LeituraCancelada();
    }
    throw ErroDeLeitura(m_Passos > m_MaisPassos ? "há mais para ler do que cabe no arquivo"
                                                : sqlite3_errmsg(m_Aberto.get()),
                        m_Passos > m_MaisPassos || EhDano(sqlite3_errcode(m_Aberto.get())));
}

bool LeitorSQLite::LugarDaChaveVazio(const std::string &tabela, const std::string &coluna, std::int64_t chave)
{
    m_Passos = 0;
    sqlite3_blob *lugar = nullptr;
    const int codigo = sqlite3_blob_open(m_Aberto.get(), "main", tabela.c_str(), coluna.c_str(), chave, 0, &lugar);
    const std::string resposta = sqlite3_errmsg(m_Aberto.get());
    sqlite3_blob_close(lugar);
    if (codigo == SQLITE_INTERRUPT) {
        Falha();
    }
    return codigo == SQLITE_ERROR && resposta == "cannot open value of type null";
}

QVariant LeitorSQLite::Unico(const QString &sql, const QVariantList &valores)
{
    LinhasLidas linhas(*this, sql, valores);
    return linhas.Proxima() ? linhas.Valor(0) : QVariant();
}

LinhasLidas::LinhasLidas(LeitorSQLite &leitor, const QString &sql, const QVariantList &valores)
    : m_Leitor(leitor),
      m_Comando(nullptr, sqlite3_finalize)
{
    m_Leitor.m_Passos = 0;
    sqlite3_stmt *comando = nullptr;
    if (sqlite3_prepare_v2(leitor.m_Aberto.get(), sql.toUtf8().constData(), -1, &comando, nullptr) != SQLITE_OK) {
        leitor.Falha();
    }
    m_Comando.reset(comando);
    for (int n = 0; n < valores.size(); ++n) {
        const QVariant &valor = valores[n];
        if (valor.typeId() == QMetaType::QString) {
            const QByteArray texto = valor.toString().toUtf8();
            sqlite3_bind_text(comando, n + 1, texto.constData(), static_cast<int>(texto.size()), SQLITE_TRANSIENT);
        } else {
            sqlite3_bind_int64(comando, n + 1, valor.toLongLong());
        }
    }
}

bool LinhasLidas::Proxima()
{
    const int codigo = sqlite3_step(m_Comando.get());
    if (codigo != SQLITE_ROW && codigo != SQLITE_DONE) {
        m_Leitor.Falha();
    }
    return codigo == SQLITE_ROW;
}

std::int64_t LinhasLidas::Inteiro(int coluna) const
{
    return sqlite3_column_int64(m_Comando.get(), coluna);
}

std::string LinhasLidas::Texto(int coluna) const
{
    return S(Valor(coluna).toString());
}

QVariant LinhasLidas::Valor(int coluna) const
{
    sqlite3_stmt *comando = m_Comando.get();
    switch (sqlite3_column_type(comando, coluna)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return qlonglong(sqlite3_column_int64(comando, coluna));
    case SQLITE_FLOAT:
        return sqlite3_column_double(comando, coluna);
    case SQLITE_TEXT: {
        const auto *inicio = reinterpret_cast<const char *>(sqlite3_column_text(comando, coluna));
        const QByteArray octetos(inicio, sqlite3_column_bytes(comando, coluna));
        const QString texto = QString::fromUtf8(octetos);
        return texto.toUtf8() == octetos ? QVariant(texto) : QVariant(octetos);
    }
    default:
        return QByteArray(static_cast<const char *>(sqlite3_column_blob(comando, coluna)),
                          sqlite3_column_bytes(comando, coluna));
    }
}

} // namespace mesa
