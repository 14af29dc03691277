#include "services/DialetoSQLite.h"

#include "services/AberturaSQLite.h"
#include "services/ArquivoSQLite.h"
#include "services/Esquema.h"
#include "services/MigracaoVersao2.h"
#include "services/PreparadaQt.h"

#include <QFileInfo>
#include <QSqlDriver>
#include <QSqlQuery>
#include <QStringList>
#include <QThread>
#include <QUrl>
#include <QVariant>

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <system_error>
#include <utility>

namespace mesa {

namespace {

// Two programs that create one registry at the same moment meet where the log is switched on, and there the database
// does not wait by itself.
constexpr int TentativasDeAbrir = 200;
constexpr unsigned long PausaAoAbrir = 25; // milliseconds
constexpr std::chrono::milliseconds EsperaPorOutro{5000};

sqlite3 *Aberto(const QSqlDatabase &banco)
{
    return *static_cast<sqlite3 *const *>(banco.driver()->handle().constData());
}

QString Tx(std::string_view texto)
{
    return QString::fromUtf8(texto.data(), static_cast<qsizetype>(texto.size()));
}

QString Nomes(const std::vector<std::string_view> &colunas, const QString &entre = ", ",
              const QString &modelo = QString("%1"))
{
    QStringList nomes;
    for (const std::string_view coluna : colunas) {
        nomes.push_back(modelo.arg(Tx(coluna)));
    }
    return nomes.join(entre);
}

// What the database itself demands of the column's values.
QString Exigencia(const Esquema::Coluna &coluna)
{
    // The day of the calendar that these digits name, where the engine alone would answer the 31st of February.
    const auto dia = [](const QString &numero) {
        return QString("%1 IS CAST(strftime('%Y%m%d', printf('%04d-%02d-%02d', %1 / 10000, %1 / 100 % 100, %1 % 100), "
                       "'+0 days') AS INTEGER)")
            .replace("%1", numero);
    };
    const QString nome = Tx(coluna.Nome);
    const QString faixa = QString(" BETWEEN %1 AND %2").arg(coluna.De).arg(coluna.Ate);
    switch (coluna.Tipo) {
    case Esquema::Forma::Texto:
        return "length(" + nome + ")" + faixa + " AND instr(" + nome + ", char(0)) = 0";
    case Esquema::Forma::Octetos:
        return "length(" + nome + ")" + faixa;
    case Esquema::Forma::Dia:
        return dia(nome);
    case Esquema::Forma::Momento:
        return dia("(" + nome + " / 1000000)") +
               QString(" AND %1 / 10000 % 100 BETWEEN 0 AND 23 AND %1 / 100 % 100 BETWEEN 0 AND 59 "
                       "AND %1 % 100 BETWEEN 0 AND 59")
                   .replace("%1", nome);
    case Esquema::Forma::Hora:
        return QString("%1 BETWEEN 0 AND 2359 AND %1 % 100 BETWEEN 0 AND 59").replace("%1", nome);
    default:
        return nome + faixa;
    }
}

QString DeclaraColuna(const Esquema::Tabela &tabela, const Esquema::Coluna &coluna)
{
    const bool texto = coluna.Tipo == Esquema::Forma::Texto;
    QString declarada = Tx(coluna.Nome) + (texto                                    ? " TEXT"
                                           : coluna.Tipo == Esquema::Forma::Octetos ? " BLOB"
                                                                                    : " INTEGER");
    declarada += &coluna == &tabela.Chave() ? " PRIMARY KEY" : coluna.Nula ? "" : " NOT NULL";
    declarada += " CONSTRAINT " + Tx(tabela.Nome) + "_" + Tx(coluna.Nome) + " CHECK (" + Exigencia(coluna) + ")";
    return coluna.Referencia.empty() ? declarada : declarada + " REFERENCES " + Tx(coluna.Referencia);
}

QString DeclaraTabela(const Esquema::Tabela &tabela)
{
    QStringList partes;
    for (const Esquema::Coluna &coluna : tabela.Colunas) {
        partes.push_back(DeclaraColuna(tabela, coluna));
    }
    for (const Esquema::Unica &unica : tabela.Unicas) {
        if (unica.Onde.empty()) {
            partes.push_back("UNIQUE (" + Nomes(unica.Colunas) + ")");
        }
    }
    for (const Esquema::Condicao &condicao : tabela.Condicoes) {
        partes.push_back("CONSTRAINT " + Tx(tabela.Nome) + "_" + Tx(condicao.Nome) + " CHECK (" +
                         Tx(condicao.Expressao) + ")");
    }
    return "CREATE TABLE " + Tx(tabela.Nome) + " (" + partes.join(", ") + ") STRICT";
}

QString Guarda(const Esquema::Tabela &tabela, const QString &nome, const QString &quando, const QString &condicao,
               const QString &motivo)
{
    return "CREATE TRIGGER " + Tx(tabela.Nome) + "_" + nome + " BEFORE " + quando + " ON " + Tx(tabela.Nome) +
           (condicao.isEmpty() ? QString() : " WHEN " + condicao) + " BEGIN SELECT RAISE(ABORT, '" + motivo + "'); END";
}

// Whether another row has already what may not be twice.
QString Repetida(const Esquema::Tabela &tabela, const Esquema::Unica &unica)
{
    const QString nova = unica.Onde.empty() ? QString() : "NEW." + Tx(unica.Onde) + " AND ";
    const QString outra = unica.Onde.empty() ? QString() : " AND o." + Tx(unica.Onde);
    return "(" + nova + "EXISTS (SELECT 1 FROM " + Tx(tabela.Nome) + " o WHERE " +
           Nomes(unica.Colunas, " AND ", "o.%1 = NEW.%1") + outra + " AND o." + Tx(tabela.Chave().Nome) +
           " IS NOT NEW." + Tx(tabela.Chave().Nome) + "))";
}

// The last one made is the first one asked, so that what tells most comes last. Replacement on conflict erases without
// the guards of erasing, unless the connection asks for them: so nothing may come in over what is there.
QStringList Guardas(const Esquema::Tabela &tabela)
{
    const QString nome = Tx(tabela.Nome);
    const QString chave = Tx(tabela.Chave().Nome);
    QStringList repetidas;
    for (const Esquema::Unica &unica : tabela.Unicas) {
        repetidas.push_back(Repetida(tabela, unica));
    }
    const QString mesmaChave = "EXISTS (SELECT 1 FROM " + nome + " o WHERE o." + chave + " = NEW." + chave + ")";
    QStringList guardas;
    for (const Esquema::Guarda &guarda : tabela.Guardas) {
        guardas.push_back(Guarda(tabela, Tx(guarda.Nome), Tx(guarda.Quando), Tx(guarda.Condicao), Tx(guarda.Motivo)));
    }
    guardas.push_back(Guarda(tabela, "SEM_DELETE", "DELETE", "", nome + "_SEM_DELETE"));
    guardas.push_back(Guarda(tabela, "SEM_REPETIR", "INSERT", (QStringList{mesmaChave} + repetidas).join(" OR "),
                             nome + "_REPETIDO"));
    if (tabela.SoInclui) {
        guardas.push_back(Guarda(tabela, "SEM_UPDATE", "UPDATE", "", nome + "_SEM_UPDATE"));
        return guardas;
    }
    if (!repetidas.isEmpty()) {
        guardas.push_back(Guarda(tabela, "SEM_REPETIR_AO_MUDAR", "UPDATE", repetidas.join(" OR "), nome + "_REPETIDO"));
    }
    std::vector<std::string_view> fixas = tabela.Fixas;
    fixas.insert(fixas.begin(), tabela.Chave().Nome);
    guardas.push_back(Guarda(tabela, "FIXA", "UPDATE", Nomes(fixas, " OR ", "NEW.%1 IS NOT OLD.%1"), nome + "_FIXA"));
    return guardas;
}

QStringList Declara(const Esquema::Tabela &tabela)
{
    QStringList comandos{DeclaraTabela(tabela)};
    for (const Esquema::Unica &unica : tabela.Unicas) {
        if (!unica.Onde.empty()) {
            comandos.push_back("CREATE UNIQUE INDEX " + Tx(tabela.Nome) + "_" + Nomes(unica.Colunas, "_") + " ON " +
                               Tx(tabela.Nome) + " (" + Nomes(unica.Colunas) + ") WHERE " + Tx(unica.Onde));
        }
    }
    for (const Esquema::Indice &indice : tabela.Indices) {
        comandos.push_back("CREATE INDEX " + Tx(indice.Nome) + " ON " + Tx(tabela.Nome) + " (" + Tx(indice.Colunas) +
                           ")" + (indice.Onde.empty() ? QString() : " WHERE " + Tx(indice.Onde)));
    }
    return comandos + Guardas(tabela);
}

// The registry is told by its mark; one of version 1, which had none, by its tables.
void ConfereQueERegistro(QSqlQuery &comando)
{
    if (!comando.exec("PRAGMA application_id") || !comando.next()) {
        return; // what is no database at all is told by what comes next
    }
    if (comando.value(0).toInt() == Esquema::Aplicacao) {
        return;
    }
    if (comando.value(0).toInt() == 0 &&
        comando.exec("SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name IN ('ESQUEMA', 'EQUIPAMENTO', "
                     "'AFERICAO', 'HISTORICO')") &&
        comando.next() && comando.value(0).toInt() == 4) {
        return;
    }
    throw ErroSql(MotivoSql::Estranho, "");
}

} // namespace

DialetoSQLite::DialetoSQLite(DetectorDeRede rede) : m_Rede(std::move(rede)) {}

std::string DialetoSQLite::Abre(const QString &conexao, const std::string &onde, Abertura abertura)
{
    QSqlDatabase banco = QSqlDatabase::addDatabase("QSQLITE", conexao);
    if (!banco.isValid()) {
        throw ErroSql(MotivoSql::Outro, "falta o componente do SQLite");
    }
    const std::filesystem::path arquivo = LugarVerdadeiro(onde);
    const AberturaSQLite lugar(arquivo, m_Rede);
    const QFileInfo ha(QString::fromStdString(onde));
    if (abertura == Abertura::Nova && (ha.exists() || ha.isSymLink())) {
        throw ErroSql(MotivoSql::JaExiste, onde);
    }
    if (abertura != Abertura::Nova && !ha.exists()) {
        throw ErroSql(MotivoSql::Ausente, onde);
    }
    if (abertura != Abertura::Nova && ha.size() == 0) {
        throw ErroSql(MotivoSql::Vazio, onde);
    }
    if (abertura == Abertura::Consulta || !lugar.SoConsulta().empty()) {
        AbreParaConsulta(banco, arquivo);
        return lugar.SoConsulta().empty() ? "O registro foi aberto só para consulta." : lugar.SoConsulta();
    }
    AbreParaTrabalho(banco, arquivo.string(), abertura);
    return "";
}

void DialetoSQLite::AbreParaConsulta(QSqlDatabase &banco, const std::filesystem::path &arquivo)
{
    banco.setDatabaseName(QString::fromStdString(NomeDeArquivoParado(arquivo)));
    banco.setConnectOptions("QSQLITE_OPEN_URI;QSQLITE_OPEN_READONLY");
    if (!banco.open()) {
        throw Erro(banco.lastError());
    }
    m_Consultado = Retrato{arquivo, std::filesystem::file_size(arquivo), std::filesystem::last_write_time(arquivo)};
    QSqlQuery comando(banco);
    ConfereQueERegistro(comando);
}

void DialetoSQLite::AbreParaTrabalho(QSqlDatabase &banco, const std::string &arquivo, Abertura abertura) const
{
    const bool nova = abertura == Abertura::Nova;
    if (nova) {
        CriaArquivoPrivado(arquivo);
    } else {
        FazArquivoPrivado(arquivo); // and what the database makes beside it follows
    }
    for (const char *parte : PartesAoLado) {
        if (std::filesystem::exists(arquivo + parte)) {
            FazArquivoPrivado(arquivo + parte);
        }
    }
    // By the mode in the address an absent file is not made, not even if it goes away at this moment.
    banco.setDatabaseName(QString::fromUtf8(QUrl::fromLocalFile(QString::fromStdString(arquivo)).toEncoded()) +
                          "?mode=rw");
    banco.setConnectOptions(QString("QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1").arg(EsperaPorOutro.count()));
    if (!banco.open()) {
        throw Erro(banco.lastError());
    }
    // The database falls back to reading by itself, and would say so only at the first save.
    if (sqlite3_db_readonly(Aberto(banco), "main") != 0) {
        throw ErroSql(MotivoSql::SoLeitura, "attempt to write a readonly database");
    }
    QSqlQuery comando(banco);
    if (!nova) {
        ConfereQueERegistro(comando);
    }
    for (int tentativa = 1; !comando.exec("PRAGMA journal_mode = WAL"); ++tentativa) {
        const ErroSql erro = Erro(comando.lastError());
        if (erro.Motivo != MotivoSql::Ocupado || tentativa == TentativasDeAbrir) {
            throw erro;
        }
        QThread::msleep(PausaAoAbrir);
    }
    if (!comando.next() || comando.value(0).toString() != "wal") {
        throw ErroSql(MotivoSql::SoLeitura, "sem diário de gravação");
    }
    // With recursive triggers a row that is replaced counts as erased too. The last one looks into the file, which from
    // then on is known to be open here.
    for (const char *pragma : {"PRAGMA synchronous = FULL", "PRAGMA foreign_keys = ON",
                               "PRAGMA recursive_triggers = ON", "SELECT COUNT(*) FROM sqlite_schema"}) {
        if (!comando.exec(pragma)) {
            throw Erro(comando.lastError());
        }
    }
}

void DialetoSQLite::Limita(const QString &conexao, Prazo ate)
{
    const auto resta = std::chrono::ceil<std::chrono::milliseconds>(ate - std::chrono::steady_clock::now());
    sqlite3_busy_timeout(Aberto(QSqlDatabase::database(conexao, false)),
                         static_cast<int>(std::clamp(resta, std::chrono::milliseconds(0), EsperaPorOutro).count()));
}

QString DialetoSQLite::IniciaEscrita() const
{
    return "BEGIN IMMEDIATE";
}

QString DialetoSQLite::IniciaLeitura() const
{
    return "BEGIN";
}

void DialetoSQLite::Confirma(const QString &conexao)
{
    QSqlQuery comando(QSqlDatabase::database(conexao, false));
    if (!comando.exec("COMMIT")) {
        throw Erro(comando.lastError());
    }
}

// The open file outlives its name: what is written into it then goes away with the program.
void DialetoSQLite::ConfereLugar(const QString &conexao) const
{
    if (m_Consultado) {
        std::error_code erro;
        if (std::filesystem::file_size(m_Consultado->Arquivo, erro) != m_Consultado->Tamanho ||
            std::filesystem::last_write_time(m_Consultado->Arquivo, erro) != m_Consultado->Quando) {
            throw Falha(NumeroFalha::ErroDeAcesso, "Servicos",
                        "O registro mudou depois de aberto aqui só para consulta. Feche o programa e abra-o de novo.");
        }
        return;
    }
    int mudou = 0;
    if (sqlite3_file_control(Aberto(QSqlDatabase::database(conexao, false)), "main", SQLITE_FCNTL_HAS_MOVED, &mudou) ==
            SQLITE_OK &&
        mudou != 0) {
        throw ErroSql(MotivoSql::ForaDoLugar, "database file moved");
    }
}

std::unique_ptr<Preparada> DialetoSQLite::Prepara(const QString &conexao, const QString &sql)
{
    return std::make_unique<PreparadaQt>(QSqlDatabase::database(conexao, false), sql, Erro);
}

void DialetoSQLite::Comanda(const QString &conexao, const QString &sql)
{
    QSqlQuery comando(QSqlDatabase::database(conexao, false));
    if (!comando.exec(sql)) {
        throw Erro(comando.lastError());
    }
}

ErroSql DialetoSQLite::Erro(const QSqlError &erro)
{
    return ErroDoCodigo(erro.nativeErrorCode().toInt(), erro.databaseText().toStdString());
}

ErroSql DialetoSQLite::ErroDoCodigo(int codigo, const std::string &detalhe)
{
    switch (codigo & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return ErroSql(MotivoSql::Ocupado, detalhe);
    case SQLITE_FULL:
        return ErroSql(MotivoSql::DiscoCheio, detalhe);
    case SQLITE_READONLY:
        return ErroSql(MotivoSql::SoLeitura, detalhe);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return ErroSql(MotivoSql::Danificado, detalhe);
    case SQLITE_IOERR:
        if (codigo == SQLITE_IOERR_WRITE || codigo == SQLITE_IOERR_TRUNCATE || codigo == SQLITE_IOERR_SHMSIZE) {
            return ErroSql(MotivoSql::NaoGravou, detalhe);
        }
        return ErroSql(MotivoSql::Acesso, detalhe);
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
        return ErroSql(MotivoSql::Acesso, detalhe);
    case SQLITE_CONSTRAINT:
        if (codigo == SQLITE_CONSTRAINT_TRIGGER) {
            return ErroSql(detalhe.ends_with("_REPETIDO") ? MotivoSql::Unicidade : MotivoSql::Regra, detalhe);
        }
        if (codigo == SQLITE_CONSTRAINT_CHECK) {
            return ErroSql(MotivoSql::Coluna, detalhe);
        }
        if (codigo == SQLITE_CONSTRAINT_UNIQUE || codigo == SQLITE_CONSTRAINT_PRIMARYKEY) {
            return ErroSql(MotivoSql::Unicidade, detalhe);
        }
        [[fallthrough]];
    default:
        return ErroSql(MotivoSql::Outro, detalhe);
    }
}

std::vector<QString> DialetoSQLite::Esquema() const
{
    return EsquemaDaVersao(mesa::Esquema::Versao);
}

std::vector<QString> DialetoSQLite::EsquemaDaVersao(std::int64_t versao)
{
    std::vector<QString> comandos{QString("PRAGMA application_id = %1").arg(mesa::Esquema::Aplicacao)};
    for (const mesa::Esquema::Tabela &tabela : mesa::Esquema::Tabelas()) {
        if (tabela.Desde <= versao) {
            const QStringList dela = Declara(tabela);
            comandos.insert(comandos.end(), dela.begin(), dela.end());
        }
    }
    return comandos;
}

std::vector<Migracao> DialetoSQLite::Migracoes() const
{
    std::vector<QString> novas;
    for (const mesa::Esquema::Tabela &tabela : mesa::Esquema::Tabelas()) {
        if (tabela.Desde == 3) {
            const QStringList dela = Declara(tabela);
            novas.insert(novas.end(), dela.begin(), dela.end());
        }
    }
    return {ParaVersao2(EsquemaDaVersao(2)), {novas}};
}

// Tables that refer to a renamed one go on referring to its name, which the rebuilt one takes.
std::vector<QString> DialetoSQLite::AntesDeMigrar() const
{
    return {"PRAGMA foreign_keys = OFF", "PRAGMA legacy_alter_table = ON"};
}

std::vector<QString> DialetoSQLite::DepoisDeMigrar() const
{
    return {"PRAGMA legacy_alter_table = OFF", "PRAGMA foreign_keys = ON"};
}

QString DialetoSQLite::ReferenciasPartidas() const
{
    return "SELECT \"table\", rowid, parent FROM pragma_foreign_key_check";
}

} // namespace mesa
