#include "services/DialetoPostgres.h"

#include "services/Esquema.h"
#include "services/PreparadaPostgres.h"
#include "services/Promocoes.h"
#include "services/TextoQt.h"

#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

#include <libpq-fe.h>
#include <poll.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <utility>

namespace mesa {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::string_view Prefixo = "postgresql://";
constexpr milliseconds LimiteDoComando{60000};
constexpr milliseconds LimiteDaTrava{5000};
constexpr milliseconds LimiteDaConfirmacao{5000};
// After a commit was given up the server still has to say what came of it.
constexpr milliseconds EsperaDepoisDeDesistir{2000};
// The history is one chain: who writes holds this.
constexpr int TravaDeEscrita = Esquema::Aplicacao;
constexpr const char *Marca = "registro de equipamentos";

QString Tx(std::string_view texto)
{
    return QString::fromUtf8(texto.data(), static_cast<qsizetype>(texto.size()));
}

QString Entre(const QString &nome)
{
    return "\"" + nome + "\"";
}

QString Literal(const QString &texto)
{
    return "'" + QString(texto).replace("'", "''") + "'";
}

QString Nomes(const std::vector<std::string_view> &colunas, const QString &entre = ", ",
              const QString &modelo = QString("%1"))
{
    QStringList nomes;
    for (const std::string_view coluna : colunas) {
        nomes.push_back(QString(modelo).replace("%1", Tx(coluna)));
    }
    return nomes.join(entre);
}

// What the database itself demands of the column's values. A text never has the character of number 0 here.
QString Exigencia(const Esquema::Coluna &coluna)
{
    const QString nome = Tx(coluna.Nome);
    const QString faixa = QString(" BETWEEN %1 AND %2").arg(coluna.De).arg(coluna.Ate);
    switch (coluna.Tipo) {
    case Esquema::Forma::Texto:
    case Esquema::Forma::Octetos:
        return "length(" + nome + ")" + faixa;
    case Esquema::Forma::Dia:
        return "registro_eh_dia(" + nome + ")";
    case Esquema::Forma::Momento:
        return QString("registro_eh_dia(%1 / 1000000) AND %1 / 10000 % 100 BETWEEN 0 AND 23 "
                       "AND %1 / 100 % 100 BETWEEN 0 AND 59 AND %1 % 100 BETWEEN 0 AND 59")
            .replace("%1", nome);
    case Esquema::Forma::Hora:
        return QString("%1 BETWEEN 0 AND 2359 AND %1 % 100 BETWEEN 0 AND 59").replace("%1", nome);
    default:
        return nome + faixa;
    }
}

// What two active rows may not have in common, which the database itself watches over.
struct Exclusao {
    std::string_view Tabela;
    std::string_view Nome; // that of the guard, of which it is the same to whoever is refused
    std::string_view Iguais;
    std::string_view Tipo;
    std::string_view Periodo;
};

constexpr std::array Exclusoes{
    Exclusao{"AFERICAO", "AFERICAO_SOBREPOSTA", "NroIntSensor WITH =", "daterange",
             "registro_periodo(DataVerificacao, DataVencimento)"},
    Exclusao{"LIMITE", "LIMITE_SOBREPOSTO", "NroIntEquip WITH =, TipoLimite WITH =, Dia WITH =", "int4range",
             "registro_horas(HoraInicio, HoraFim)"},
    Exclusao{"DIA", "DIA_SOBREPOSTO", "NroIntEquip WITH =, Data WITH =", "int4range",
             "registro_horas(HoraInicio, HoraFim)"},
};

QString DeclaraTabela(const Esquema::Tabela &tabela)
{
    const QString nome = Tx(tabela.Nome);
    QStringList partes;
    for (const Esquema::Coluna &coluna : tabela.Colunas) {
        const bool texto = coluna.Tipo == Esquema::Forma::Texto;
        partes.push_back(Tx(coluna.Nome) +
                         (texto                                    ? " text COLLATE \"C\""
                          : coluna.Tipo == Esquema::Forma::Octetos ? " bytea"
                                                                   : " bigint") +
                         (&coluna == &tabela.Chave() ? " PRIMARY KEY"
                          : coluna.Nula              ? ""
                                                     : " NOT NULL") +
                         " CONSTRAINT " + Entre(nome + "_" + Tx(coluna.Nome)) + " CHECK (" + Exigencia(coluna) + ")");
    }
    for (const Exclusao &exclusao : Exclusoes) {
        if (exclusao.Tabela == tabela.Nome) {
            // The name comes after those of the columns' own conditions, which say more.
            partes.push_back("Periodo " + Tx(exclusao.Tipo) + " NOT NULL GENERATED ALWAYS AS (" + Tx(exclusao.Periodo) +
                             ") STORED CONSTRAINT " + Entre(nome + "_sem_vazio") + " CHECK (NOT isempty(Periodo))");
        }
    }
    for (const Esquema::Condicao &condicao : tabela.Condicoes) {
        partes.push_back("CONSTRAINT " + Entre(nome + "_" + Tx(condicao.Nome)) + " CHECK (" + Tx(condicao.Expressao) +
                         ")");
    }
    return "CREATE TABLE " + nome + " (" + partes.join(", ") + ")";
}

// Whether another row has already what may not be twice.
QString Repetida(const Esquema::Tabela &tabela, const Esquema::Unica &unica)
{
    const QString nova = unica.Onde.empty() ? QString() : "NEW." + Tx(unica.Onde) + " AND ";
    const QString outra = unica.Onde.empty() ? QString() : " AND o." + Tx(unica.Onde);
    return "(" + nova + "EXISTS (SELECT 1 FROM " + Tx(tabela.Nome) + " o WHERE " +
           Nomes(unica.Colunas, " AND ", "o.%1 = NEW.%1") + outra + " AND o." + Tx(tabela.Chave().Nome) +
           " IS DISTINCT FROM NEW." + Tx(tabela.Chave().Nome) + "))";
}

// The conditions are written as the embedded database says them.
QString DaCondicao(std::string_view condicao)
{
    return Tx(condicao).replace(QRegularExpression("\\bIS NOT (NEW|OLD)\\."), "IS DISTINCT FROM \\1.");
}

QString Recusa(const QString &condicao, const QString &motivo)
{
    return "IF " + condicao + " THEN RAISE EXCEPTION '" + motivo + "'; END IF; ";
}

// A guard that no setting of a session switches off.
QStringList Guarda(const QString &tabela, const QString &quando, const QString &corpo)
{
    const QString nome = tabela + "_" + quando;
    const bool dasLinhas = quando != "TRUNCATE";
    return {"CREATE FUNCTION " + Entre(nome) +
                "() RETURNS trigger LANGUAGE plpgsql SET search_path = public, pg_temp AS $guarda$BEGIN " + corpo +
                "END$guarda$",
            "CREATE TRIGGER " + Entre(nome) + " BEFORE " + quando + " ON " + tabela + " FOR EACH " +
                (dasLinhas ? "ROW" : "STATEMENT") + " EXECUTE FUNCTION " + Entre(nome) + "()",
            "ALTER TABLE " + tabela + " ENABLE ALWAYS TRIGGER " + Entre(nome)};
}

// All that is asked of a row stands in one guard for each event, in the order in which it tells most.
QStringList GuardasDe(const Esquema::Tabela &tabela)
{
    const QString nome = Tx(tabela.Nome);
    const QString chave = Tx(tabela.Chave().Nome);
    QStringList repetidas;
    for (const Esquema::Unica &unica : tabela.Unicas) {
        repetidas.push_back(Repetida(tabela, unica));
    }
    const auto proprias = [&](std::string_view quando) {
        QString todas;
        for (auto guarda = tabela.Guardas.rbegin(); guarda != tabela.Guardas.rend(); ++guarda) {
            if (guarda->Quando == quando) {
                todas += Recusa(DaCondicao(guarda->Condicao), Tx(guarda->Motivo));
            }
        }
        return todas;
    };
    // Numbers follow one another without gaps, as in the embedded database; those who write wait for each other.
    const QString numera =
        QString("IF NEW.%1 IS NULL THEN NEW.%1 := (SELECT COALESCE(MAX(o.%1), 0) + 1 FROM %2 o); END IF; ")
            .arg(chave, nome);
    const QString mesmaChave = QString("EXISTS (SELECT 1 FROM %2 o WHERE o.%1 = NEW.%1)").arg(chave, nome);
    const QString nega = "RAISE EXCEPTION '" + nome + "_SEM_%1'; ";
    QStringList comandos =
        Guarda(nome, "INSERT",
               numera + Recusa((QStringList{mesmaChave} + repetidas).join(" OR "), nome + "_REPETIDO") +
                   proprias("INSERT") + "RETURN NEW; ");
    if (tabela.SoInclui) {
        comandos += Guarda(nome, "UPDATE", nega.arg("UPDATE"));
    } else {
        std::vector<std::string_view> fixas = tabela.Fixas;
        fixas.insert(fixas.begin(), tabela.Chave().Nome);
        comandos += Guarda(nome, "UPDATE",
                           Recusa(Nomes(fixas, " OR ", "NEW.%1 IS DISTINCT FROM OLD.%1"), nome + "_FIXA") +
                               (repetidas.isEmpty() ? QString() : Recusa(repetidas.join(" OR "), nome + "_REPETIDO")) +
                               proprias("UPDATE") + "RETURN NEW; ");
    }
    return comandos + Guarda(nome, "DELETE", nega.arg("DELETE")) + Guarda(nome, "TRUNCATE", nega.arg("TRUNCATE"));
}

// An index ends with the key, as those of the embedded database do by themselves, so that what comes out of it is in
// the order of the numbers.
QString ColunasDoIndice(const Esquema::Tabela &tabela, const Esquema::Indice &indice)
{
    const QString colunas = Tx(indice.Colunas);
    const QString chave = Tx(tabela.Chave().Nome);
    return colunas.split(", ").contains(chave) ? colunas : colunas + ", " + chave;
}

QStringList Acabamento(const Esquema::Tabela &tabela)
{
    const QString nome = Tx(tabela.Nome);
    QStringList comandos;
    for (const Esquema::Unica &unica : tabela.Unicas) {
        comandos.push_back("CREATE UNIQUE INDEX " + Entre(nome + "_" + Nomes(unica.Colunas, "_")) + " ON " + nome +
                           " (" + Nomes(unica.Colunas) + ")" +
                           (unica.Onde.empty() ? QString() : " WHERE " + Tx(unica.Onde)));
    }
    for (const Esquema::Indice &indice : tabela.Indices) {
        comandos.push_back("CREATE INDEX " + Entre(Tx(indice.Nome)) + " ON " + nome + " (" +
                           ColunasDoIndice(tabela, indice) + ")" +
                           (indice.Onde.empty() ? QString() : " WHERE " + Tx(indice.Onde)));
    }
    for (const Exclusao &exclusao : Exclusoes) {
        if (exclusao.Tabela == tabela.Nome) {
            comandos.push_back("ALTER TABLE " + nome + " ADD CONSTRAINT " + Entre(Tx(exclusao.Nome)) +
                               " EXCLUDE USING gist (" + Tx(exclusao.Iguais) + ", Periodo WITH &&) WHERE (Ativo = 1)");
        }
    }
    return comandos;
}

// References need what they refer to to be told apart by an index.
QStringList Referencias(const Esquema::Tabela &tabela)
{
    QStringList comandos;
    for (const Esquema::Coluna &coluna : tabela.Colunas) {
        if (!coluna.Referencia.empty()) {
            comandos.push_back("ALTER TABLE " + Tx(tabela.Nome) + " ADD CONSTRAINT " +
                               Entre(Tx(tabela.Nome) + "_" + Tx(coluna.Nome) + "_referencia") + " FOREIGN KEY (" +
                               Tx(coluna.Nome) + ") REFERENCES " + Tx(coluna.Referencia));
        }
    }
    return comandos;
}

QStringList Direitos(const QString &papel)
{
    const QString quem = Entre(QString(papel).replace("\"", "\"\""));
    QStringList comandos{"GRANT USAGE ON SCHEMA public TO " + quem};
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        const QString pode = tabela.Nome == "ESQUEMA" ? "SELECT"
                             : tabela.SoInclui        ? "SELECT, INSERT"
                                                      : "SELECT, INSERT, UPDATE";
        comandos.push_back("GRANT " + pode + " ON " + Tx(tabela.Nome) + " TO " + quem);
    }
    // No tables of a session's own, which could stand before those of the registry.
    comandos.push_back("DO $fecha$BEGIN EXECUTE format('REVOKE ALL ON DATABASE %I FROM PUBLIC', current_database()); "
                       "EXECUTE format('GRANT CONNECT ON DATABASE %I TO %I', current_database(), " +
                       Literal(papel) + "); END$fecha$");
    return comandos;
}

QString ComEscape(const QString &valor)
{
    return "'" + QString(valor).replace("\\", "\\\\").replace("'", "\\'") + "'";
}

milliseconds EmMilissegundos(const std::string &nome, const std::string &texto)
{
    int lido = 0;
    const auto [fim, erro] = std::from_chars(texto.data(), texto.data() + texto.size(), lido);
    if (erro != std::errc() || fim != texto.data() + texto.size() || lido < 1) {
        throw ErroSql(MotivoSql::Acesso, nome + "=" + texto + " não é um número de milissegundos",
                      LugarDoRegistro::Servidor);
    }
    return milliseconds(lido);
}

// The server's words without the word for how bad it is, which is another one in each language.
std::string Mensagem(const QString &palavras)
{
    const QString primeira = palavras.section('\n', 0, 0).trimmed();
    const qsizetype dois = primeira.indexOf(":  ");
    return S(dois < 0 ? primeira : primeira.mid(dois + 3));
}

// The restriction of ours that the server's words name.
std::string Restricao(const std::string &mensagem)
{
    static const QRegularExpression nome("\"([A-Z]+(?:_[A-Z]+)*_\\w+)\"");
    const auto achado = nome.match(Q(mensagem));
    return achado.hasMatch() ? S(achado.captured(1)) : mensagem;
}

// A statement as this database says it, of the few that cannot be said to all in one way.
QString Traduzido(const QString &sql)
{
    static const QString daEntrada = Tx(mesa::Esquema::DocumentoDaEntrada);
    return QString(sql).replace(daEntrada,
                                "(CAST(substring(Depois FROM '\"NroIntImgCertif\":([0-9]{1,16})') AS bigint))");
}

} // namespace

// The connection as it was asked for, and as it is.
struct DialetoPostgres::Ligacao {
    QString Nome;
    std::string Texto; // without the parameters of ours
    Abertura Como = Abertura::Existente;
    milliseconds Comando = LimiteDoComando;
    milliseconds Trava = LimiteDaTrava;
    milliseconds Confirmacao = LimiteDaConfirmacao;
    QString Papel;
    Prazo Ate = Prazo::max();
    bool Abandonada = false;  // it answers, but what it leads to takes no writes any more
    bool Avisou = false;      // the server warned of something
    PGconn *Aberta = nullptr; // the driver's; null where there is none
    int Preparadas = 0;       // statements that this connection was given

    // Takes the parameters of ours out of the text.
    void Le(const std::string &onde)
    {
        const std::size_t pergunta = onde.find('?');
        Texto = onde.substr(0, pergunta);
        char separador = '?';
        for (std::size_t de = pergunta; de != std::string::npos;) {
            const std::size_t ate = onde.find('&', de + 1);
            const std::string parte = onde.substr(de + 1, ate == std::string::npos ? ate : ate - de - 1);
            const std::size_t igual = parte.find('=');
            const std::string nome = parte.substr(0, igual);
            const std::string valor = igual == std::string::npos ? "" : parte.substr(igual + 1);
            if (nome == "limite_comando") {
                Comando = EmMilissegundos(nome, valor);
            } else if (nome == "limite_trava") {
                Trava = EmMilissegundos(nome, valor);
            } else if (nome == "limite_confirmacao") {
                Confirmacao = EmMilissegundos(nome, valor);
            } else if (nome == "papel_de_trabalho") {
                Papel = QString::fromUtf8(QByteArray::fromPercentEncoding(QByteArray::fromStdString(valor)));
            } else if (!parte.empty()) {
                Texto += separador + parte;
                separador = '&';
            }
            de = ate;
        }
    }

    QSqlDatabase Banco() const { return QSqlDatabase::database(Nome, false); }
    void Fecha()
    {
        Aberta = nullptr;
        QSqlDatabase::removeDatabase(Nome);
    }
    bool Responde() const { return PQstatus(Aberta) == CONNECTION_OK; }
};

DialetoPostgres::DialetoPostgres() : m_Ligacao(std::make_unique<Ligacao>()) {}

DialetoPostgres::DialetoPostgres(const std::string &onde) : DialetoPostgres()
{
    m_Ligacao->Le(onde);
}

DialetoPostgres::~DialetoPostgres() = default;

bool DialetoPostgres::Reconhece(std::string_view onde)
{
    return onde.starts_with(Prefixo);
}

std::string DialetoPostgres::TextoDaBiblioteca(const std::string &onde)
{
    Ligacao ligacao;
    ligacao.Le(onde);
    return ligacao.Texto;
}

std::string DialetoPostgres::Abre(const QString &conexao, const std::string &onde, Abertura abertura)
{
    m_Ligacao->Nome = conexao;
    m_Ligacao->Como = abertura;
    m_Ligacao->Le(onde);
    Liga();
    if (abertura == Abertura::Nova) {
        ConfereQueEstaVazio();
    } else {
        ConfereQueERegistro();
    }
    return abertura == Abertura::Consulta ? "O registro foi aberto só para consulta." : "";
}

void DialetoPostgres::Liga()
{
    char *motivo = nullptr;
    const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> partes(
        PQconninfoParse(m_Ligacao->Texto.c_str(), &motivo), PQconninfoFree);
    const std::unique_ptr<char, decltype(&PQfreemem)> palavras(motivo, PQfreemem);
    const auto falha = [](const std::string &porque) {
        return ErroSql(MotivoSql::Acesso, porque, LugarDoRegistro::Servidor);
    };
    if (partes == nullptr) {
        throw falha(palavras == nullptr ? "" : Mensagem(QString::fromUtf8(palavras.get())));
    }
    // What a connection is unless the text says otherwise: one that notices when the other machine is gone.
    std::map<QString, QString> opcoes{{"connect_timeout", "3"},  {"application_name", "registro"},
                                      {"keepalives_idle", "10"}, {"keepalives_interval", "5"},
                                      {"keepalives_count", "3"}, {"tcp_user_timeout", "15000"}};
    if (m_Ligacao->Como != Abertura::Consulta) {
        opcoes["target_session_attrs"] = "read-write";
    }
    for (const PQconninfoOption *parte = partes.get(); parte->keyword != nullptr; ++parte) {
        if (parte->val != nullptr) {
            opcoes[QString::fromUtf8(parte->keyword)] = QString::fromUtf8(parte->val);
        }
    }
    // As many tries as there are places: one that was left behind is passed over.
    for (qsizetype lugares = opcoes["host"].count(',') + 1;; --lugares) {
        Conecta(opcoes);
        if (m_Ligacao->Como == Abertura::Consulta || EstaEmDia()) {
            m_Ligacao->Abandonada = false;
            return;
        }
        m_Ligacao->Fecha();
        if (lugares == 1) {
            throw falha("este banco de dados ficou para trás: outro foi promovido no lugar dele");
        }
        for (const char *lista : {"host", "hostaddr", "port"}) {
            opcoes[lista] = Q(Promocoes::DepoisDoPrimeiro(S(opcoes[lista])));
        }
    }
}

void DialetoPostgres::Conecta(const std::map<QString, QString> &opcoes)
{
    const auto falha = [](const std::string &porque) {
        return ErroSql(MotivoSql::Acesso, porque, LugarDoRegistro::Servidor);
    };
    QSqlDatabase banco = QSqlDatabase::addDatabase("QPSQL", m_Ligacao->Nome);
    if (!banco.isValid()) {
        throw falha("falta o componente do PostgreSQL");
    }
    QStringList demais;
    for (const auto &[nome, valor] : opcoes) {
        if (nome == "dbname") {
            banco.setDatabaseName(valor);
        } else if (nome == "user") {
            banco.setUserName(valor);
        } else if (nome == "password") {
            banco.setPassword(valor);
        } else if (valor.contains(';')) { // which the driver takes for the end of an option
            throw falha("o valor de " + S(nome) + " não pode ter ponto e vírgula");
        } else {
            demais.push_back(nome + "=" + ComEscape(valor));
        }
    }
    banco.setConnectOptions(demais.join(';'));
    if (!banco.open()) {
        throw falha(S(banco.lastError().databaseText().trimmed()));
    }
    m_Ligacao->Abandonada = true; // until it is all that it has to be
    PGconn *nativa = *static_cast<PGconn *const *>(banco.driver()->handle().constData());
    m_Ligacao->Aberta = nativa;
    // Where letters are counted as octets, or not all of them have a place, a text would be cut or refused.
    if (const char *codigo = PQparameterStatus(nativa, "server_encoding");
        codigo == nullptr || std::string_view(codigo) != "UTF8") {
        throw falha("o banco de dados não está em UTF-8 (server_encoding = " +
                    std::string(codigo == nullptr ? "" : codigo) + "); crie outro com ENCODING 'UTF8'");
    }
    PQsetErrorVerbosity(nativa, PQERRORS_TERSE); // the details repeat the row
    PQsetNoticeReceiver(
        nativa,
        [](void *ligacao, const PGresult *aviso) {
            const char *gravidade = PQresultErrorField(aviso, PG_DIAG_SEVERITY_NONLOCALIZED);
            if (gravidade != nullptr && std::string_view(gravidade) == "WARNING") {
                static_cast<Ligacao *>(ligacao)->Avisou = true;
            }
        },
        m_Ligacao.get());
    QSqlQuery comando(banco);
    for (const QString &ajuste :
         {QString("SET search_path = public, pg_temp"),
          QString("SET statement_timeout = %1").arg(m_Ligacao->Comando.count()),
          QString("SET lock_timeout = %1").arg(m_Ligacao->Trava.count()),
          // Who holds the right to write and says nothing any more loses it.
          QString("SET idle_in_transaction_session_timeout = %1").arg(m_Ligacao->Comando.count()),
          QString("SET default_transaction_read_only = %1").arg(m_Ligacao->Como == Abertura::Consulta ? "on" : "off"),
          QString("SELECT set_config('synchronous_commit', 'on', false) "
                  "WHERE current_setting('synchronous_commit') IN ('off', 'local')")}) {
        if (!comando.exec(ajuste)) {
            throw Erro(comando.lastError());
        }
    }
}

bool DialetoPostgres::EstaEmDia() const
{
    QSqlQuery comando(m_Ligacao->Banco());
    if (!comando.exec(Promocoes::Pergunta)) {
        throw Erro(comando.lastError());
    }
    if (!comando.next()) { // it follows another one
        return true;
    }
    return Promocoes::EmDia(S(comando.value(0).toString()), S(comando.value(1).toString()));
}

void DialetoPostgres::ConfereQueERegistro() const
{
    QSqlQuery comando(m_Ligacao->Banco());
    if (!comando.exec("SELECT obj_description(to_regclass('public.ESQUEMA'), 'pg_class')") || !comando.next()) {
        throw Erro(comando.lastError());
    }
    if (comando.value(0).toString() != Marca) {
        throw ErroSql(MotivoSql::Estranho, "", LugarDoRegistro::Servidor);
    }
}

// What came with an extension, which whoever administers the server may have put there before, does not count.
void DialetoPostgres::ConfereQueEstaVazio() const
{
    QSqlQuery comando(m_Ligacao->Banco());
    if (!comando.exec(
            "SELECT COUNT(*) FROM (SELECT oid, 'pg_class'::regclass AS tabela, relnamespace AS onde FROM pg_class "
            "UNION ALL SELECT oid, 'pg_proc'::regclass, pronamespace FROM pg_proc "
            "UNION ALL SELECT oid, 'pg_type'::regclass, typnamespace FROM pg_type WHERE typcategory <> 'A' "
            "UNION ALL SELECT oid, 'pg_namespace'::regclass, oid FROM pg_namespace WHERE nspname <> 'public') o "
            "JOIN pg_namespace n ON n.oid = o.onde "
            "WHERE n.nspname !~ '^pg_' AND n.nspname <> 'information_schema' AND NOT EXISTS (SELECT 1 FROM "
            "pg_depend d WHERE d.classid = o.tabela AND d.objid = o.oid AND d.deptype = 'e')") ||
        !comando.next()) {
        throw Erro(comando.lastError());
    }
    if (comando.value(0).toInt() != 0) {
        throw ErroSql(MotivoSql::JaExiste, S(m_Ligacao->Banco().databaseName()), LugarDoRegistro::Servidor);
    }
}

void DialetoPostgres::Limita(const QString &, Prazo ate)
{
    m_Ligacao->Ate = ate;
}

// Each statement of the transaction ends by the time that its first one has to.
QString DialetoPostgres::Inicia(const QString &comeco) const
{
    const auto resta = std::chrono::ceil<milliseconds>(m_Ligacao->Ate - steady_clock::now());
    return resta >= m_Ligacao->Comando
               ? comeco
               : comeco + QString("; SET LOCAL statement_timeout = %1").arg(std::max<qlonglong>(resta.count(), 1));
}

QString DialetoPostgres::IniciaEscrita() const
{
    return Inicia("BEGIN ISOLATION LEVEL READ COMMITTED") +
           QString("; SELECT pg_advisory_xact_lock(%1)").arg(TravaDeEscrita);
}

QString DialetoPostgres::IniciaLeitura() const
{
    return Inicia("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
}

// Waits for the server's answer no longer than the limit; then the commit is cancelled, which ends the wait for a
// standby that is gone, and what came of it is known from what the server then says.
void DialetoPostgres::Confirma(const QString &)
{
    PGconn *nativa = m_Ligacao->Aberta;
    const auto incerto = [&](const std::string &porque) {
        m_Ligacao->Abandonada = true;
        return ErroSql(MotivoSql::Incerto, porque, LugarDoRegistro::Servidor);
    };
    if (PQtransactionStatus(nativa) == PQTRANS_INERROR) { // the server would answer, and take everything back
        throw ErroSql(MotivoSql::Outro, "COMMIT", LugarDoRegistro::Servidor);
    }
    if (!m_Ligacao->Responde()) {
        throw ErroSql(MotivoSql::Queda, "", LugarDoRegistro::Servidor);
    }
    m_Ligacao->Avisou = false;
    if (PQsendQuery(nativa, "COMMIT") == 0) {
        throw incerto(PQerrorMessage(nativa));
    }
    bool desistiu = false;
    auto limite = std::min(steady_clock::now() + m_Ligacao->Confirmacao, m_Ligacao->Ate);
    while (PQisBusy(nativa) != 0) {
        const auto resta = std::chrono::ceil<milliseconds>(limite - steady_clock::now());
        pollfd espera{PQsocket(nativa), POLLIN, 0};
        const int veio = resta.count() > 0 ? poll(&espera, 1, static_cast<int>(resta.count())) : 0;
        if (veio > 0 && PQconsumeInput(nativa) == 0) {
            throw incerto(PQerrorMessage(nativa));
        }
        if (veio == 0 && desistiu) {
            throw incerto("sem resposta");
        }
        if (veio == 0) {
            desistiu = true;
            limite = steady_clock::now() + EsperaDepoisDeDesistir;
            const std::unique_ptr<PGcancel, decltype(&PQfreeCancel)> cancela(PQgetCancel(nativa), PQfreeCancel);
            std::array<char, 256> porque{};
            if (PQcancel(cancela.get(), porque.data(), static_cast<int>(porque.size())) == 0) {
                throw incerto(porque.data());
            }
        }
    }
    std::string estado;
    std::string palavras;
    bool confirmou = false;
    while (PGresult *resposta = PQgetResult(nativa)) {
        if (PQresultStatus(resposta) == PGRES_COMMAND_OK) {
            confirmou = std::string_view(PQcmdStatus(resposta)) == "COMMIT";
        } else if (const char *codigo = PQresultErrorField(resposta, PG_DIAG_SQLSTATE); codigo != nullptr) {
            estado = codigo;
            palavras = PQresultErrorMessage(resposta);
        }
        PQclear(resposta);
    }
    if (!m_Ligacao->Responde() || m_Ligacao->Avisou) {
        throw incerto("a confirmação não chegou");
    }
    if (!confirmou) {
        throw Erro(Q(estado), Q(palavras));
    }
}

bool DialetoPostgres::Caiu() const
{
    return m_Ligacao->Abandonada || !m_Ligacao->Responde();
}

void DialetoPostgres::Reabre()
{
    m_Ligacao->Fecha();
    try {
        Liga();
    } catch (const ErroSql &erro) {
        throw ErroSql(MotivoSql::Queda, erro.Detalhe, LugarDoRegistro::Servidor);
    }
}

std::unique_ptr<Preparada> DialetoPostgres::Prepara(const QString &, const QString &sql)
{
    return std::make_unique<PreparadaPostgres>(m_Ligacao->Aberta, std::to_string(++m_Ligacao->Preparadas),
                                               Traduzido(sql),
                                               [this](const PGresult *resposta) { return Erro(resposta); });
}

void DialetoPostgres::Comanda(const QString &, const QString &sql)
{
    const std::unique_ptr<PGresult, decltype(&PQclear)> resposta(PQexec(m_Ligacao->Aberta, sql.toUtf8().constData()),
                                                                 PQclear);
    const ExecStatusType como = PQresultStatus(resposta.get());
    if (como != PGRES_COMMAND_OK && como != PGRES_TUPLES_OK) {
        throw Erro(resposta.get());
    }
}

ErroSql DialetoPostgres::Erro(const PGresult *resposta) const
{
    const char *estado = PQresultErrorField(resposta, PG_DIAG_SQLSTATE);
    return Erro(
        QString::fromUtf8(estado == nullptr ? "" : estado),
        QString::fromUtf8(estado == nullptr ? PQerrorMessage(m_Ligacao->Aberta) : PQresultErrorMessage(resposta)));
}

ErroSql DialetoPostgres::Erro(const QString &codigo, const QString &palavras) const
{
    const std::string estado = S(codigo);
    const std::string mensagem = Mensagem(palavras);
    const auto como = [](MotivoSql motivo, const std::string &detalhe) {
        return ErroSql(motivo, detalhe, LugarDoRegistro::Servidor);
    };
    static const std::map<std::string_view, MotivoSql> motivos = {
        {"40001", MotivoSql::Ocupado},   {"40P01", MotivoSql::Ocupado},    {"55P03", MotivoSql::Ocupado},
        {"57014", MotivoSql::Demora},    {"23505", MotivoSql::Unicidade},  {"53100", MotivoSql::DiscoCheio},
        {"58030", MotivoSql::NaoGravou}, {"XX001", MotivoSql::Danificado}, {"XX002", MotivoSql::Danificado},
        {"42501", MotivoSql::SoLeitura}, {"42P07", MotivoSql::JaExiste},   {"42710", MotivoSql::JaExiste},
        {"42723", MotivoSql::JaExiste},
    };
    // A server that ends, begins, has no place left or only follows another one is asked again, or another one is.
    if (!m_Ligacao->Responde() || estado.starts_with("08") || estado.starts_with("57P0") || estado == "53300" ||
        estado == "25006" || estado == "25P03") {
        m_Ligacao->Abandonada = true;
        return como(MotivoSql::Queda, mensagem);
    }
    if (estado == "P0001") {
        return como(mensagem.ends_with("_REPETIDO") ? MotivoSql::Unicidade : MotivoSql::Regra, mensagem);
    }
    if (estado == "23P01") {
        return como(MotivoSql::Regra, Restricao(mensagem));
    }
    if (estado == "23514") {
        return como(MotivoSql::Coluna, "CHECK constraint failed: " + Restricao(mensagem));
    }
    const auto motivo = motivos.find(estado);
    return como(motivo == motivos.end() ? MotivoSql::Outro : motivo->second, mensagem);
}

std::vector<QString> DialetoPostgres::Esquema() const
{
    std::vector<QString> comandos = Tabelas();
    const std::vector<QString> guardas = Guardas();
    comandos.insert(comandos.end(), guardas.begin(), guardas.end());
    return comandos;
}

std::vector<QString> DialetoPostgres::Tabelas() const
{
    std::vector<QString> comandos{
        "CREATE EXTENSION IF NOT EXISTS btree_gist",
        "CREATE FUNCTION registro_eh_dia(dia bigint) RETURNS boolean LANGUAGE sql IMMUTABLE PARALLEL SAFE "
        "RETURN dia BETWEEN 1000101 AND 99991231 AND dia / 100 % 100 BETWEEN 1 AND 12 AND dia % 100 BETWEEN 1 AND "
        "CASE WHEN dia / 100 % 100 IN (4, 6, 9, 11) THEN 30 WHEN dia / 100 % 100 <> 2 THEN 31 "
        "WHEN dia / 10000 % 4 = 0 AND (dia / 10000 % 100 <> 0 OR dia / 10000 % 400 = 0) THEN 29 ELSE 28 END",
        "CREATE FUNCTION registro_data(dia bigint) RETURNS date LANGUAGE sql IMMUTABLE PARALLEL SAFE "
        "RETURN make_date(CAST(dia / 10000 AS integer), CAST(dia / 100 % 100 AS integer), CAST(dia % 100 AS integer))",
        // The last day counts. No period at all where there is none.
        "CREATE FUNCTION registro_periodo(de bigint, ate bigint) RETURNS daterange LANGUAGE sql IMMUTABLE STRICT "
        "PARALLEL SAFE RETURN CASE WHEN registro_eh_dia(de) AND registro_eh_dia(ate) AND de <= ate "
        "THEN daterange(registro_data(de), registro_data(ate), '[]') ELSE CAST('empty' AS daterange) END",
        // Twice the hour, so that there is something between two minutes: without its ends, unless it is one minute.
        "CREATE FUNCTION registro_horas(de bigint, ate bigint) RETURNS int4range LANGUAGE sql IMMUTABLE STRICT "
        "PARALLEL SAFE RETURN CASE WHEN de < 0 OR ate > 2359 OR de > ate THEN CAST('empty' AS int4range) "
        "ELSE int4range(CAST(2 * de AS integer), CAST(2 * ate AS integer), CASE WHEN de = ate THEN '[]' ELSE '()' END) "
        "END"};
    for (const mesa::Esquema::Tabela &tabela : mesa::Esquema::Tabelas()) {
        comandos.push_back(DeclaraTabela(tabela));
    }
    comandos.push_back("COMMENT ON TABLE ESQUEMA IS " + Literal(Marca));
    return comandos;
}

std::vector<QString> DialetoPostgres::Guardas() const
{
    QStringList comandos;
    for (const mesa::Esquema::Tabela &tabela : mesa::Esquema::Tabelas()) {
        comandos += Acabamento(tabela);
    }
    for (const mesa::Esquema::Tabela &tabela : mesa::Esquema::Tabelas()) {
        comandos += Referencias(tabela) + GuardasDe(tabela);
    }
    if (!m_Ligacao->Papel.isEmpty()) {
        comandos += Direitos(m_Ligacao->Papel);
    }
    std::vector<QString> traduzidos;
    std::transform(comandos.begin(), comandos.end(), std::back_inserter(traduzidos),
                   [](const QString &comando) { return Traduzido(comando); });
    return traduzidos;
}

// Here the schema began at the version that the embedded one had by then.
std::size_t DialetoPostgres::PrimeiraVersao() const
{
    return 3;
}

// They are looked after whatever a migration does.
QString DialetoPostgres::ReferenciasPartidas() const
{
    return "SELECT '', '', '' WHERE FALSE";
}

} // namespace mesa
