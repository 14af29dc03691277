#include "desk/host/BancoLocalMesa.h"

#include "controls/OrdemPortuguesa.h"
#include "host/Conversoes.h"
#include "host/Falha.h"
#include "host/Texto.h"
#include "services/Disco.h"
#include "services/Referencias.h"
#include "services/TextoQt.h"

#include <QCryptographicHash>
#include <QLockFile>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>
#include <QVariant>

#include <sqlite3.h>

#include <limits>

namespace mesa {

namespace {

constexpr std::int32_t ErroDeSintaxe = 3075;
constexpr std::int32_t SemRegistroAtual = 3021;
constexpr std::int32_t ColunaInexistente = 3265;
constexpr std::int32_t BancoNaoAbre = 3051;

void Ucase(sqlite3_context *contexto, int, sqlite3_value **argumentos)
{
    const unsigned char *texto = sqlite3_value_text(argumentos[0]);
    if (texto == nullptr) {
        sqlite3_result_null(contexto);
        return;
    }
    const std::string maiusculas = UCase(reinterpret_cast<const char *>(texto));
    sqlite3_result_text(contexto, maiusculas.data(), static_cast<int>(maiusculas.size()), SQLITE_TRANSIENT);
}

int ComparaNomes(void *, int tamanhoA, const void *a, int tamanhoB, const void *b)
{
    const auto chave = [](const void *texto, int tamanho) {
        return ChaveOrdem({static_cast<const char *>(texto), static_cast<std::size_t>(tamanho)});
    };
    return chave(a, tamanhoA).compare(chave(b, tamanhoB));
}

// How the module names the state in its statements.
const std::string EstadoDoModulo = "UF_MUNIC = 'RS'";

// One connection, which knows the functions of the database and goes with this object.
class ConexaoLocal {
  public:
    ConexaoLocal(const std::filesystem::path &arquivo, bool somenteLeitura)
        : m_Nome(QUuid::createUuid().toString(QUuid::WithoutBraces)),
          m_SomenteLeitura(somenteLeitura)
    {
        QSqlDatabase banco = QSqlDatabase::addDatabase("QSQLITE", m_Nome);
        banco.setDatabaseName(QString::fromStdU16String(arquivo.u16string()));
        banco.setConnectOptions(somenteLeitura ? "QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=10000"
                                               : "QSQLITE_BUSY_TIMEOUT=10000");
        if (!banco.open()) {
            const std::string motivo = banco.lastError().text().toStdString();
            banco = QSqlDatabase();
            QSqlDatabase::removeDatabase(m_Nome);
            throw Falha(BancoNaoAbre, "BancoLocal", "Não foi possível abrir o banco de dados local: " + motivo);
        }
        auto *sqlite = *static_cast<sqlite3 **>(banco.driver()->handle().data());
        sqlite3_create_function_v2(sqlite, "UCASE", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, Ucase, nullptr,
                                   nullptr, nullptr);
        sqlite3_create_collation_v2(sqlite, "NOMES", SQLITE_UTF8, nullptr, ComparaNomes, nullptr);
    }
    ConexaoLocal(const ConexaoLocal &) = delete;
    ConexaoLocal &operator=(const ConexaoLocal &) = delete;
    ~ConexaoLocal() { QSqlDatabase::removeDatabase(m_Nome); }

    // Runs a statement. Fault 3075 with the engine's words when it cannot be read or run.
    QSqlQuery Executa(const QString &sql, const QVariantList &valores = {}) const
    {
        return Roda(sql, valores, [](QSqlQuery &consulta) { return consulta.exec(); });
    }
    // Runs a statement once for each row of the columns.
    void ExecutaParaCada(const QString &sql, const QVariantList &colunas) const
    {
        Roda(sql, colunas, [](QSqlQuery &consulta) { return consulta.execBatch(); });
    }

  private:
    template <class Execucao> QSqlQuery Roda(const QString &sql, const QVariantList &valores, Execucao execucao) const
    {
        QSqlQuery consulta(QSqlDatabase::database(m_Nome));
        consulta.setForwardOnly(true);
        bool bom = consulta.prepare(sql);
        for (const QVariant &valor : valores) {
            consulta.addBindValue(valor);
        }
        bom = bom && execucao(consulta);
        const int motivo = bom ? SQLITE_OK : consulta.lastError().nativeErrorCode().toInt() & 0xff;
        if (motivo == SQLITE_FULL) {
            throw Falha(NumeroFalha::DiscoCheio, "BancoLocal",
                        "O disco em que está o banco de dados local ficou cheio: libere espaço e tente de novo.");
        }
        if (motivo == SQLITE_READONLY && !m_SomenteLeitura) {
            throw Falha(
                NumeroFalha::PermissaoNegada, "BancoLocal",
                "O banco de dados local só pode ser lido: falta permissão para gravar no arquivo ou na sua pasta.");
        }
        if (!bom) {
            throw Falha(ErroDeSintaxe, "BancoLocal",
                        "O banco de dados local não executou a consulta: " + consulta.lastError().text().toStdString());
        }
        return consulta;
    }

    QString m_Nome;
    bool m_SomenteLeitura;
};

// All of a transaction or nothing of it.
class TransacaoLocal {
  public:
    explicit TransacaoLocal(const ConexaoLocal &conexao) : m_Conexao(conexao) { m_Conexao.Executa("BEGIN IMMEDIATE"); }
    TransacaoLocal(const TransacaoLocal &) = delete;
    TransacaoLocal &operator=(const TransacaoLocal &) = delete;
    ~TransacaoLocal()
    {
        if (!m_Confirmada) {
            IgnoraErro([&] { m_Conexao.Executa("ROLLBACK"); });
        }
    }
    void Confirma()
    {
        m_Conexao.Executa("COMMIT");
        m_Confirmada = true;
    }

  private:
    const ConexaoLocal &m_Conexao;
    bool m_Confirmada = false;
};

Valor ValorDoBanco(const QVariant &valor)
{
    if (valor.isNull()) {
        return Valor::Nulo{};
    }
    switch (valor.typeId()) {
    case QMetaType::LongLong:
    case QMetaType::Int: {
        const qlonglong numero = valor.toLongLong();
        if (numero >= std::numeric_limits<std::int32_t>::min() && numero <= std::numeric_limits<std::int32_t>::max()) {
            return static_cast<std::int32_t>(numero);
        }
        return static_cast<double>(numero);
    }
    case QMetaType::Double:
        return valor.toDouble();
    default:
        return valor.toString().toStdString();
    }
}

class ColunaDoBanco : public IFields {
  public:
    explicit ColunaDoBanco(Valor valor) : m_Valor(std::move(valor)) {}
    std::string_view NomeTipo() const override { return "Field"; }
    Valor Value() const override { return m_Valor; }

  private:
    Valor m_Valor;
};

// A snapshot: the whole answer, read at once.
class CursorDoBanco : public ICursor {
  public:
    explicit CursorDoBanco(QSqlQuery consulta)
    {
        const QSqlRecord cabecalho = consulta.record();
        for (int coluna = 0; coluna < cabecalho.count(); ++coluna) {
            m_Colunas.push_back(LCase(cabecalho.fieldName(coluna).toStdString()));
        }
        while (consulta.next()) {
            auto &linha = m_Linhas.emplace_back();
            for (int coluna = 0; coluna < cabecalho.count(); ++coluna) {
                linha.push_back(ValorDoBanco(consulta.value(coluna)));
            }
        }
    }
    std::string_view NomeTipo() const override { return "Recordset"; }

    bool EOF_() const override { return m_Atual >= m_Linhas.size(); }
    std::int32_t RecordCount() const override { return static_cast<std::int32_t>(m_Linhas.size()); }
    Ref<IFields> Fields(const std::string &nome) const override
    {
        if (EOF_()) {
            throw Falha(SemRegistroAtual, "Recordset", "Não há registro atual.");
        }
        const std::string procurado = LCase(nome);
        for (std::size_t coluna = 0; coluna < m_Colunas.size(); ++coluna) {
            if (m_Colunas[coluna] == procurado) {
                return Novo<ColunaDoBanco>(m_Linhas[m_Atual][coluna]);
            }
        }
        throw Falha(ColunaInexistente, "Recordset", "A consulta não tem a coluna " + nome + ".");
    }
    void MoveNext() override
    {
        if (EOF_()) {
            throw Falha(SemRegistroAtual, "Recordset", "Não há registro atual.");
        }
        ++m_Atual;
    }
    void Close() override
    {
        m_Linhas.clear();
        m_Atual = 0;
    }

  private:
    std::vector<std::string> m_Colunas;
    std::vector<std::vector<Valor>> m_Linhas;
    std::size_t m_Atual = 0;
};

class LeituraDoBanco : public IMDB {
  public:
    LeituraDoBanco(const std::filesystem::path &arquivo, const std::string &estado)
        : m_Nome(arquivo.string()),
          m_Estado(estado.empty() ? EstadoDoModulo : estado),
          m_Conexao(arquivo, /*somenteLeitura=*/true)
    {
    }
    std::string_view NomeTipo() const override { return "Database"; }

    std::string Name() const override { return m_Nome; }
    Ref<ICursor> OpenRecordset(const std::string &sql, std::int16_t, const Valor &, const Valor &) override
    {
        if (sql.find("UF_MUNIC =") != std::string::npos && sql.find(EstadoDoModulo) == std::string::npos) {
            throw Falha(ErroDeSintaxe, "BancoLocal",
                        "O estado da consulta não pôde ser trocado pelo do cliente: " + sql);
        }
        return Novo<CursorDoBanco>(m_Conexao.Executa(Q(Substitui(sql, EstadoDoModulo, m_Estado))));
    }

  private:
    std::string m_Nome;
    std::string m_Estado;
    ConexaoLocal m_Conexao;
};

// What stands beside the municipalities for knowing them again.
qlonglong SomaDosMunicipios()
{
    QCryptographicHash soma(QCryptographicHash::Sha256);
    for (const Municipio &municipio : Referencias::Tabelas().Municipios()) {
        soma.addData(QByteArray::fromStdString(CStr(municipio.Codigo) + "\t" + municipio.Nome + "\t" + municipio.UF +
                                               "\t" + CStr(municipio.CodReceita) + "\n"));
    }
    return soma.result().left(3).toHex().toLongLong(nullptr, 16);
}

void EscreveMunicipios(const ConexaoLocal &conexao)
{
    QVariantList codigos;
    QVariantList nomes;
    QVariantList estados;
    QVariantList codigosDaReceita;
    for (const Municipio &municipio : Referencias::Tabelas().Municipios()) {
        codigos << municipio.Codigo;
        nomes << Q(municipio.Nome);
        estados << Q(municipio.UF);
        codigosDaReceita << municipio.CodReceita;
    }
    conexao.Executa("DELETE FROM Municipio");
    conexao.ExecutaParaCada("INSERT INTO Municipio VALUES (?, ?, ?, ?)", {codigos, nomes, estados, codigosDaReceita});
}

// The sum is written in any case: a file that may only be read is told now, and not when somebody signs in.
void RenovaMunicipios(const ConexaoLocal &conexao)
{
    const qlonglong soma = SomaDosMunicipios();
    qlonglong guardada = 0;
    {
        QSqlQuery consulta = conexao.Executa("PRAGMA user_version");
        consulta.next();
        guardada = consulta.value(0).toLongLong();
    }
    if (guardada != soma) {
        EscreveMunicipios(conexao);
    }
    conexao.Executa(QString("PRAGMA user_version = %1").arg(soma));
}

// Whose the replica is, and up to which entry of the registry's history it tells. Made by another version of this class
// it is nobody's.
struct Ficha {
    std::int32_t Operador = -1; // -1 for nobody
    std::string Cliente;
    std::int64_t Ate = 0;
    std::string Elo; // hash of that entry

    bool EhDe(const mesa::Operador &quem) const { return Operador == quem.Numero && Cliente == quem.Cliente; }
};
constexpr int VersaoDaReplica = 1;

Ficha LeFicha(const ConexaoLocal &conexao)
{
    QSqlQuery linha =
        conexao.Executa("SELECT Operador, Cliente, Ate, Elo FROM Replica WHERE Versao = ?", {VersaoDaReplica});
    if (!linha.next()) {
        return {};
    }
    return {linha.value(0).toInt(), S(linha.value(1).toString()), linha.value(2).toLongLong(),
            S(linha.value(3).toString())};
}

void GravaFicha(const ConexaoLocal &conexao, const Ficha &ficha)
{
    conexao.Executa("DELETE FROM Replica");
    conexao.Executa("INSERT INTO Replica VALUES (?, ?, ?, ?, ?)",
                    {VersaoDaReplica, ficha.Operador, Q(ficha.Cliente), qlonglong(ficha.Ate), Q(ficha.Elo)});
}

// Writes what changed after that entry; after 0, with nothing there, all of it.
Replicado Le(SessaoServico &sessao, const ConexaoLocal &conexao, std::int64_t depoisDe)
{
    const QString poe = depoisDe == 0 ? "INSERT INTO" : "REPLACE INTO";
    return sessao.LeReplica(depoisDe, [&](const LinhaReplica &linha) {
        conexao.Executa(poe + " VOREQUIPTO VALUES (?, ?, ?, ?, ?)",
                        {linha.NroIntEquip, Q(linha.ClienteInc), Q(linha.Codigo), Q(linha.TipoEquip), linha.Ativo});
    });
}

} // namespace

BancoLocalMesa::BancoLocalMesa(const std::filesystem::path &diretorio)
{
    TomaArquivo(diretorio);
    CriaArquivoPrivado(m_Arquivo);
    FazArquivoPrivado(m_Arquivo);
    const ConexaoLocal conexao(m_Arquivo, /*somenteLeitura=*/false);
    conexao.Executa("PRAGMA journal_mode = WAL");
    TransacaoLocal transacao(conexao);
    conexao.Executa(
        "CREATE TABLE IF NOT EXISTS Municipio (COD_MUNIC INTEGER PRIMARY KEY, "
        "NOME_MUNICIPIO TEXT NOT NULL COLLATE NOMES, UF_MUNIC TEXT NOT NULL, COD_RENAVAM INTEGER NOT NULL)");
    conexao.Executa("CREATE TABLE IF NOT EXISTS VOREQUIPTO (NroIntEquip INTEGER PRIMARY KEY, ClienteInc TEXT NOT NULL, "
                    "Codigo TEXT NOT NULL, TipoEquip TEXT NOT NULL, Ativo INTEGER NOT NULL)");
    conexao.Executa("CREATE TABLE IF NOT EXISTS Replica (Versao INTEGER PRIMARY KEY, Operador INTEGER NOT NULL, "
                    "Cliente TEXT NOT NULL, Ate INTEGER NOT NULL, Elo TEXT NOT NULL)");
    conexao.Executa("CREATE INDEX IF NOT EXISTS VOREQUIPTO_Codigo ON VOREQUIPTO (ClienteInc, UCASE(Codigo))");
    RenovaMunicipios(conexao);
    transacao.Confirma();
}

BancoLocalMesa::~BancoLocalMesa() = default;

// Each desk renews the whole copy for whoever signed in there: two on one file would read each other's. The lock of a
// desk that ended without leaving is taken over.
void BancoLocalMesa::TomaArquivo(const std::filesystem::path &diretorio)
{
    for (int numero = 1;; ++numero) {
        m_Arquivo = diretorio / (numero == 1 ? "local.db" : "local-" + CStr(numero) + ".db");
        m_Tranca = std::make_unique<QLockFile>(QString::fromStdString(m_Arquivo.string()) + ".em-uso");
        m_Tranca->setStaleLockTime(0);
        // Where no lock can be made, opening the file says why.
        if (m_Tranca->tryLock(0) || m_Tranca->error() != QLockFile::LockFailedError) {
            return;
        }
    }
}

Ref<IMDB> BancoLocalMesa::Abre()
{
    return Novo<LeituraDoBanco>(m_Arquivo, m_Estado);
}

bool BancoLocalMesa::AtualizaReplica(SessaoServico &sessao, bool cancelavel)
{
    bool feita = false;
    m_Atrasada = true;
    Acompanha("Os dados dos equipamentos estão sendo copiados para a consulta local.", cancelavel,
              [&](const Segue &segue) { feita = AtualizaReplica(sessao, segue); });
    m_Atrasada = !feita;
    return feita;
}

bool BancoLocalMesa::AtualizaReplica(SessaoServico &sessao, const Segue &segue)
{
    const Acompanhamento acompanhamento(sessao, segue);
    const ConexaoLocal conexao(m_Arquivo, /*somenteLeitura=*/false);
    const Operador &quem = sessao.Operador();
    Ficha ficha = LeFicha(conexao);
    if (!ficha.EhDe(quem)) { // what is somebody else's goes, whatever comes of the rest
        m_DataDaReplica = {};
        ficha = {quem.Numero, quem.Cliente, 0, ""};
        TransacaoLocal transacao(conexao);
        conexao.Executa("DELETE FROM VOREQUIPTO");
        GravaFicha(conexao, ficha);
        transacao.Confirma();
    }
    TransacaoLocal transacao(conexao);
    Replicado lida;
    if (ficha.Ate > 0) {
        lida = Le(sessao, conexao, ficha.Ate);
        if (lida.DeQuando.Vazia()) {
            return false;
        }
    }
    // Of another registry, or of this one put back to an earlier state, or of an operator who may look no more.
    if (ficha.Ate == 0 || lida.EloDeAntes != ficha.Elo || lida.Elo.empty()) {
        conexao.Executa("DELETE FROM VOREQUIPTO");
        lida = Le(sessao, conexao, 0);
        if (lida.DeQuando.Vazia()) {
            return false;
        }
    }
    ficha.Ate = lida.Ate;
    ficha.Elo = lida.Elo;
    GravaFicha(conexao, ficha);
    transacao.Confirma();
    m_DataDaReplica = lida.DeQuando;
    m_Estado = "(UF_MUNIC = '" + UFDoCliente(sessao) + "' OR COD_MUNIC = " + CStr(sessao.Operador().CodMunic) + ")";
    return true;
}

} // namespace mesa
