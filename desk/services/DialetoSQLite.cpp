#include "desk/services/DialetoSQLite.h"

#include <QSqlDriver>
#include <QSqlQuery>
#include <QThread>
#include <QVariant>

#include <sqlite3.h>

namespace mesa {

namespace {

// Two programs that create one registry at the same moment meet where the log is switched on, and there the database
// does not wait by itself.
constexpr int TentativasDeAbrir = 200;
constexpr unsigned long PausaAoAbrir = 25; // milliseconds

const char *const TabelasQueFicam[] = {"CLIENTE",  "SETOR",     "USUARIO", "PERMISSAO", "EQUIPAMENTO", "SENSOR",
                                       "AFERICAO", "DOCUMENTO", "LIMITE",  "DIA",       "HISTORICO"};

QString Proibe(const QString &acao, const QString &tabela)
{
    return QString("CREATE TRIGGER %2_SEM_%1 BEFORE %1 ON %2 BEGIN SELECT RAISE(ABORT, '%2_SEM_%1'); END")
        .arg(acao, tabela);
}

QString SemSobreposicao(const QString &nome, const QString &evento, const QString &outra)
{
    return QString("CREATE TRIGGER %1 BEFORE %2 ON AFERICAO WHEN NEW.Ativo = 1 BEGIN "
                   "SELECT RAISE(ABORT, 'AFERICAO_SOBREPOSTA') WHERE EXISTS (SELECT 1 FROM AFERICAO o "
                   "WHERE o.NroIntSensor = NEW.NroIntSensor AND o.Ativo = 1 "
                   "AND o.DataVerificacao <= NEW.DataVencimento AND o.DataVencimento >= NEW.DataVerificacao%3); END")
        .arg(nome, evento, outra);
}

sqlite3 *Aberto(const QSqlDatabase &banco)
{
    return *static_cast<sqlite3 *const *>(banco.driver()->handle().constData());
}

Migracao Versao1()
{
    Migracao m{
        "CREATE TABLE CLIENTE (CodCliente INTEGER PRIMARY KEY, Nome TEXT NOT NULL UNIQUE)",
        "CREATE TABLE SETOR (CodCliente INTEGER NOT NULL REFERENCES CLIENTE (CodCliente), Nome TEXT NOT NULL, "
        "PRIMARY KEY (CodCliente, Nome))",

        "CREATE TABLE USUARIO (Numero INTEGER PRIMARY KEY, Usuario TEXT NOT NULL, Chave TEXT NOT NULL UNIQUE, "
        "Nome TEXT NOT NULL, CodCliente INTEGER NOT NULL REFERENCES CLIENTE (CodCliente), Setor TEXT NOT NULL, "
        "CodMunic INTEGER NOT NULL, Senha TEXT NOT NULL, Ativo INTEGER NOT NULL CHECK (Ativo IN (1, 2)))",
        "CREATE TABLE PERMISSAO (Numero INTEGER NOT NULL REFERENCES USUARIO (Numero), Sistema TEXT NOT NULL, "
        "Objeto TEXT NOT NULL, Acao TEXT NOT NULL, PRIMARY KEY (Numero, Sistema, Objeto, Acao))",
        "CREATE TABLE ENTRADA_RECUSADA (Chave TEXT PRIMARY KEY, Vezes INTEGER NOT NULL, EsperaAte INTEGER NOT NULL)",

        "CREATE TABLE EQUIPAMENTO (NroIntEquip INTEGER PRIMARY KEY, "
        "ClienteInc TEXT NOT NULL REFERENCES CLIENTE (Nome), SetorInc TEXT NOT NULL, Codigo TEXT NOT NULL, "
        "SubCodigo TEXT NOT NULL, Descricao TEXT NOT NULL, CodMunic INTEGER NOT NULL, TipoVia TEXT NOT NULL, "
        "TipoEquip TEXT NOT NULL, VelocPermitida INTEGER NOT NULL, ArquivoLayout TEXT NOT NULL, "
        "TemImagemEntrelacada INTEGER NOT NULL, Modelo TEXT NOT NULL, TemLimiteDif INTEGER NOT NULL, "
        "TemPerfilMag INTEGER NOT NULL, NroIntRejLimDif INTEGER NOT NULL, "
        "Ativo INTEGER NOT NULL CHECK (Ativo IN (1, 2)), ClienteTrans TEXT NOT NULL, "
        "OperadorTrans INTEGER NOT NULL REFERENCES USUARIO (Numero), DataTrans INTEGER NOT NULL, "
        "HoraTrans INTEGER NOT NULL, TipoAgente INTEGER NOT NULL, txtObsNotif TEXT NOT NULL, "
        "CodigoChave TEXT NOT NULL, CodigoBusca TEXT NOT NULL, SubCodigoBusca TEXT NOT NULL, "
        "TrabFoto INTEGER NOT NULL CHECK (TrabFoto IN (1, 2)), Versao INTEGER NOT NULL)",
        "CREATE UNIQUE INDEX EQUIPAMENTO_Codigo ON EQUIPAMENTO (ClienteInc, CodigoChave) WHERE Ativo = 1",
        "CREATE INDEX EQUIPAMENTO_Busca ON EQUIPAMENTO (ClienteInc, CodigoBusca, NroIntEquip)",
        "CREATE INDEX EQUIPAMENTO_SubBusca ON EQUIPAMENTO (ClienteInc, SubCodigoBusca, NroIntEquip)",
        "CREATE INDEX EQUIPAMENTO_Foto ON EQUIPAMENTO (ClienteInc, Ativo, TrabFoto, NroIntEquip)",
        "CREATE INDEX EQUIPAMENTO_Setor ON EQUIPAMENTO (ClienteInc, Ativo, TrabFoto, SetorInc, NroIntEquip)",
        "CREATE INDEX EQUIPAMENTO_Agente ON EQUIPAMENTO (ClienteInc, Ativo, TrabFoto, TipoAgente, NroIntEquip)",
        "CREATE INDEX EQUIPAMENTO_Tipo ON EQUIPAMENTO (ClienteInc, Ativo, TrabFoto, TipoEquip, NroIntEquip)",

        "CREATE TABLE SENSOR (NroIntSensor INTEGER PRIMARY KEY, "
        "NroIntEquip INTEGER NOT NULL REFERENCES EQUIPAMENTO (NroIntEquip), NroSensor INTEGER NOT NULL, "
        "CodLograd INTEGER NOT NULL, EndCep INTEGER NOT NULL, EndNro INTEGER NOT NULL, EndCompl TEXT NOT NULL, "
        "EndDescr TEXT NOT NULL, SentidoVia TEXT NOT NULL, Ativo INTEGER NOT NULL CHECK (Ativo IN (1, 2)), "
        "LocalInfr TEXT NOT NULL)",
        "CREATE INDEX SENSOR_Equip ON SENSOR (NroIntEquip, NroIntSensor)",

        "CREATE TABLE DOCUMENTO (NroDocumento INTEGER PRIMARY KEY, ClienteInc TEXT NOT NULL REFERENCES CLIENTE (Nome), "
        "Tamanho INTEGER NOT NULL, Sha256 TEXT NOT NULL, Quando INTEGER NOT NULL, "
        "Operador INTEGER NOT NULL REFERENCES USUARIO (Numero), Conteudo BLOB NOT NULL, "
        "CHECK (Tamanho = length(Conteudo)))",

        "CREATE TABLE AFERICAO (NroIntAfericao INTEGER PRIMARY KEY, "
        "NroIntSensor INTEGER NOT NULL REFERENCES SENSOR (NroIntSensor), Numero TEXT NOT NULL, Marca TEXT NOT NULL, "
        "DataVerificacao INTEGER NOT NULL, DataVencimento INTEGER NOT NULL, "
        "Ativo INTEGER NOT NULL CHECK (Ativo IN (1, 2)), NroIntImgCertif INTEGER REFERENCES DOCUMENTO (NroDocumento), "
        "TipoAfer INTEGER NOT NULL, PortDimel TEXT NOT NULL, CHECK (DataVerificacao <= DataVencimento))",
        "CREATE INDEX AFERICAO_Sensor ON AFERICAO (NroIntSensor, Ativo, DataVerificacao, DataVencimento)",
        SemSobreposicao("AFERICAO_SEM_SOBREPOSICAO_NOVA", "INSERT", ""),
        SemSobreposicao("AFERICAO_SEM_SOBREPOSICAO", "UPDATE", " AND o.NroIntAfericao <> OLD.NroIntAfericao"),

        "CREATE TABLE LIMITE (NroInt INTEGER PRIMARY KEY, "
        "NroIntEquip INTEGER NOT NULL REFERENCES EQUIPAMENTO (NroIntEquip), "
        "Dia INTEGER NOT NULL CHECK (Dia BETWEEN 1 AND 8), HoraInicio INTEGER NOT NULL, HoraFim INTEGER NOT NULL, "
        "VelocPerm INTEGER NOT NULL, VelocMin INTEGER NOT NULL, Ativo INTEGER NOT NULL CHECK (Ativo IN (1, 2)), "
        "TipoLimite INTEGER NOT NULL CHECK (TipoLimite IN (1, 2)), Versao INTEGER NOT NULL, "
        "CHECK (HoraInicio <= HoraFim))",
        "CREATE INDEX LIMITE_Equip ON LIMITE (NroIntEquip, TipoLimite, Dia, HoraInicio)",
        "CREATE TABLE DIA (NroInt INTEGER PRIMARY KEY, "
        "NroIntEquip INTEGER NOT NULL REFERENCES EQUIPAMENTO (NroIntEquip), Data INTEGER NOT NULL, "
        "HoraInicio INTEGER NOT NULL, HoraFim INTEGER NOT NULL, VelocPerm INTEGER NOT NULL, "
        "VelocMin INTEGER NOT NULL, Ativo INTEGER NOT NULL CHECK (Ativo IN (1, 2)), Versao INTEGER NOT NULL, "
        "CHECK (HoraInicio <= HoraFim))",
        "CREATE INDEX DIA_Equip ON DIA (NroIntEquip, Data, HoraInicio)",

        // Raiz is the record that is edited as one, with its version; Entidade the row of it that changed.
        "CREATE TABLE HISTORICO (Nro INTEGER PRIMARY KEY, Quando INTEGER NOT NULL, "
        "Operador INTEGER REFERENCES USUARIO (Numero), Raiz TEXT NOT NULL, NroRaiz INTEGER NOT NULL, "
        "Versao INTEGER NOT NULL, Entidade TEXT NOT NULL, NroEntidade INTEGER NOT NULL, Acao TEXT NOT NULL, "
        "Antes TEXT, Depois TEXT NOT NULL)",
        "CREATE INDEX HISTORICO_Raiz ON HISTORICO (Raiz, NroRaiz, Versao)",
        "CREATE INDEX HISTORICO_Entidade ON HISTORICO (Entidade, NroEntidade)",

        Proibe("UPDATE", "DOCUMENTO"),
        Proibe("UPDATE", "HISTORICO"),
    };
    for (const char *tabela : TabelasQueFicam) {
        m.push_back(Proibe("DELETE", tabela));
    }
    return m;
}

} // namespace

void DialetoSQLite::Abre(const QString &conexao, const std::string &onde) const
{
    QSqlDatabase banco = QSqlDatabase::addDatabase("QSQLITE", conexao);
    if (!banco.isValid()) {
        throw ErroSql(MotivoSql::Outro, "falta o componente do SQLite");
    }
    banco.setDatabaseName(QString::fromStdString(onde));
    banco.setConnectOptions("QSQLITE_BUSY_TIMEOUT=5000");
    if (!banco.open()) {
        throw Erro(banco.lastError());
    }
    // The database falls back to reading by itself, and would say so only at the first save.
    if (sqlite3_db_readonly(Aberto(banco), "main") != 0) {
        throw ErroSql(MotivoSql::SoLeitura, "attempt to write a readonly database");
    }
    QSqlQuery comando(banco);
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
    // With recursive triggers a row that is replaced counts as erased too.
    for (const char *pragma :
         {"PRAGMA synchronous = FULL", "PRAGMA foreign_keys = ON", "PRAGMA recursive_triggers = ON"}) {
        if (!comando.exec(pragma)) {
            throw Erro(comando.lastError());
        }
    }
}

QString DialetoSQLite::IniciaEscrita() const
{
    return "BEGIN IMMEDIATE";
}

QString DialetoSQLite::IniciaLeitura() const
{
    return "BEGIN";
}

// The open file outlives its name: what is written into it then goes away with the program.
void DialetoSQLite::ConfereLugar(const QString &conexao) const
{
    int mudou = 0;
    if (sqlite3_file_control(Aberto(QSqlDatabase::database(conexao, false)), "main", SQLITE_FCNTL_HAS_MOVED, &mudou) ==
            SQLITE_OK &&
        mudou != 0) {
        throw ErroSql(MotivoSql::ForaDoLugar, "database file moved");
    }
}

ErroSql DialetoSQLite::Erro(const QSqlError &erro) const
{
    const int codigo = erro.nativeErrorCode().toInt();
    const std::string detalhe = erro.databaseText().toStdString();
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
            return ErroSql(MotivoSql::Regra, detalhe);
        }
        if (codigo == SQLITE_CONSTRAINT_UNIQUE || codigo == SQLITE_CONSTRAINT_PRIMARYKEY) {
            return ErroSql(MotivoSql::Unicidade, detalhe);
        }
        [[fallthrough]];
    default:
        return ErroSql(MotivoSql::Outro, detalhe);
    }
}

std::vector<Migracao> DialetoSQLite::Migracoes() const
{
    return {Versao1()};
}

} // namespace mesa
