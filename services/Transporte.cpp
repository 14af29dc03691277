#include "services/Transporte.h"

#include "host/Conversoes.h"
#include "services/DialetoPostgres.h"
#include "services/DialetoSQLite.h"
#include "services/Esquema.h"
#include "services/TextoQt.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace mesa {

namespace {

constexpr int LinhasEntreAvisos = 256;
constexpr std::size_t MaisAchados = 1000;
constexpr std::int64_t PesoDeLinha = 256; // beside the bytes of a document, in what tells how far it is

using Comando = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt *)>;

Comando Prepara(ArquivoSQLite &arquivo, const std::string &sql)
{
    sqlite3_stmt *preparado = nullptr;
    arquivo.Exige(sqlite3_prepare_v2(arquivo.Aberto(), sql.c_str(), -1, &preparado, nullptr));
    return {preparado, sqlite3_finalize};
}

template <class Cada> std::string Juntas(const Esquema::Tabela &tabela, Cada &&cada)
{
    std::string juntas;
    for (const Esquema::Coluna &coluna : tabela.Colunas) {
        juntas += (juntas.empty() ? "" : ", ") + cada(coluna);
    }
    return juntas;
}

std::string ColunasDe(const Esquema::Tabela &tabela)
{
    return Juntas(tabela, [](const Esquema::Coluna &coluna) { return std::string(coluna.Nome); });
}

bool EhNumero(const Esquema::Coluna &coluna)
{
    return coluna.Tipo != Esquema::Forma::Texto && coluna.Tipo != Esquema::Forma::Octetos;
}

// The columns in the types that a file has.
std::string ColunasNoServidor(const Esquema::Tabela &tabela)
{
    return Juntas(tabela, [](const Esquema::Coluna &coluna) {
        const std::string nome(coluna.Nome);
        return EhNumero(coluna) ? nome + "::int8" : coluna.Tipo == Esquema::Forma::Texto ? nome + "::text" : nome;
    });
}

std::int64_t Inteiro(std::string_view octetos)
{
    std::uint64_t numero = 0;
    for (const char octeto : octetos) {
        numero = numero << 8 | static_cast<unsigned char>(octeto);
    }
    return static_cast<std::int64_t>(numero);
}

// Something else under the name of a table may answer anything, and run what somebody put there.
bool PodeSerLida(LigacaoPostgres &de, const Esquema::Tabela &tabela)
{
    std::map<std::string, std::string> tipos;
    for (const auto &linha :
         de.Linhas("SELECT a.attname, t.typname FROM pg_catalog.pg_attribute a "
                   "JOIN pg_catalog.pg_class c ON c.oid = a.attrelid "
                   "JOIN pg_catalog.pg_type t ON t.oid = a.atttypid "
                   "WHERE a.attrelid = pg_catalog.to_regclass($1) AND c.relkind = 'r' AND a.attnum > 0 "
                   "AND NOT a.attisdropped AND t.typnamespace = 'pg_catalog'::pg_catalog.regnamespace",
                   {std::string(tabela.Nome)})) {
        tipos[*linha[0]] = *linha[1];
    }
    return std::ranges::all_of(tabela.Colunas, [&](const Esquema::Coluna &coluna) {
        const auto tipo = tipos.find(S(Q(std::string(coluna.Nome)).toLower()));
        if (tipo == tipos.end()) {
            return false;
        }
        const std::array<std::string_view, 3> aceitos =
            EhNumero(coluna)                       ? std::array<std::string_view, 3>{"int2", "int4", "int8"}
            : coluna.Tipo == Esquema::Forma::Texto ? std::array<std::string_view, 3>{"text", "varchar", "bpchar"}
                                                   : std::array<std::string_view, 3>{"bytea", "bytea", "bytea"};
        return std::ranges::find(aceitos, tipo->second) != aceitos.end();
    });
}

// The file that a registry is brought into. Nobody sees it before it is whole and on the disk; what its tables would
// refuse goes in as far as the database can store it.
class Destino {
  public:
    Destino(const std::filesystem::path &para, RegistroTrazido &trazido)
        : m_Arquivo(para, ArquivoSQLite::Modo::Gravar),
          m_Trazido(trazido)
    {
        for (const char *comando : {"PRAGMA locking_mode = EXCLUSIVE", "PRAGMA journal_mode = MEMORY",
                                    "PRAGMA synchronous = OFF", "PRAGMA ignore_check_constraints = ON"}) {
            m_Arquivo.Comanda(comando);
        }
        for (const QString &comando : DialetoSQLite().Esquema()) {
            const bool antes = comando.startsWith("CREATE TABLE ") || comando.startsWith("PRAGMA ");
            antes ? m_Arquivo.Comanda(S(comando)) : m_Depois.push_back(S(comando));
        }
        m_Arquivo.Comanda("BEGIN");
    }

    ArquivoSQLite &Arquivo() { return m_Arquivo; }

    void Poe(const Esquema::Tabela &tabela, const LigacaoPostgres::Campos &campos)
    {
        sqlite3_stmt *comando = Inclusao(tabela);
        for (std::size_t n = 0; n < tabela.Colunas.size(); ++n) {
            const auto &valor = campos[n];
            const int lugar = static_cast<int>(n) + 1;
            if (!valor) {
                sqlite3_bind_null(comando, lugar);
            } else if (EhNumero(tabela.Colunas[n])) {
                sqlite3_bind_int64(comando, lugar, Inteiro(*valor));
            } else if (tabela.Colunas[n].Tipo == Esquema::Forma::Texto) {
                sqlite3_bind_text64(comando, lugar, valor->data(), valor->size(), SQLITE_STATIC, SQLITE_UTF8);
            } else {
                sqlite3_bind_blob64(comando, lugar, valor->data(), valor->size(), SQLITE_STATIC);
            }
        }
        const int codigo = sqlite3_step(comando);
        const std::string resposta = sqlite3_errmsg(m_Arquivo.Aberto());
        sqlite3_reset(comando);
        if ((codigo & 0xff) == SQLITE_CONSTRAINT) {
            Acha("A linha " + (campos[0] ? CStr(Inteiro(*campos[0])) : "sem chave") + " da tabela " +
                     std::string(tabela.Nome) + " não cabe em um registro",
                 resposta);
        } else if (codigo != SQLITE_DONE) {
            m_Arquivo.Exige(codigo);
        }
    }

    // Indices and guards; what rows that are there do not allow is told.
    void Termina()
    {
        m_Inclusoes.clear();
        m_Arquivo.Comanda("COMMIT");
        for (const std::string &comando : m_Depois) {
            try {
                m_Arquivo.Comanda(comando);
            } catch (const ErroSql &erro) {
                if (erro.Motivo != MotivoSql::Unicidade) {
                    throw;
                }
                Acha("Há linhas que não podiam estar juntas", erro.Detalhe);
            }
        }
    }

    void Acha(const std::string &frase)
    {
        if (m_Trazido.Achados.size() < MaisAchados) {
            m_Trazido.Achados.push_back(frase);
        }
    }
    // palavras: of the database that found it.
    void Acha(const std::string &frase, const std::string &palavras)
    {
        if (m_Trazido.Achados.size() < MaisAchados) {
            m_Trazido.Palavras.push_back(palavras);
        }
        Acha(frase + " (" + palavras + ").");
    }

  private:
    sqlite3_stmt *Inclusao(const Esquema::Tabela &tabela)
    {
        const auto achada = m_Inclusoes.find(tabela.Nome);
        if (achada != m_Inclusoes.end()) {
            return achada->second.get();
        }
        const std::string sql = "INSERT INTO " + std::string(tabela.Nome) + " (" + ColunasDe(tabela) + ") VALUES (" +
                                Juntas(tabela, [](const Esquema::Coluna &) { return std::string("?"); }) + ")";
        return m_Inclusoes.emplace(tabela.Nome, Prepara(m_Arquivo, sql)).first->second.get();
    }

    ArquivoSQLite m_Arquivo;
    RegistroTrazido &m_Trazido;
    std::vector<std::string> m_Depois; // what makes indices and guards
    std::map<std::string_view, Comando> m_Inclusoes;
};

// What is damaged, or not as it should be, and not what is busy, forbidden or full just now.
bool EhDaTabela(const ErroDoServidor &erro)
{
    return erro.Estado != "42501" && (erro.Estado.starts_with("XX") || erro.Estado.starts_with("58") ||
                                      erro.Estado.starts_with("22") || erro.Estado.starts_with("42"));
}

// The rows of a table for which the condition holds, in the order of their keys. Of a table that cannot be read the
// others go on.
void TrazTabela(LigacaoPostgres &de, const Esquema::Tabela &tabela, const std::string &onde, Destino &destino,
                RegistroTrazido &trazido, const std::function<void(double parte)> &avisa)
{
    const std::string nome(tabela.Nome);
    if (trazido.NaoLidas.count(nome) > 0) {
        return;
    }
    if (!PodeSerLida(de, tabela)) {
        trazido.NaoLidas.insert(nome);
        destino.Acha("A tabela " + nome + " não tem as colunas do programa e não foi conferida.");
        return;
    }
    de.Comanda("SAVEPOINT tabela");
    try {
        const std::string chave(tabela.Chave().Nome);
        const auto ultima = static_cast<double>(de.Inteiro("SELECT MAX(" + chave + ") FROM " + nome));
        int n = 0;
        de.CadaLinha("SELECT " + ColunasNoServidor(tabela) + " FROM " + nome + (onde.empty() ? "" : " WHERE " + onde) +
                         " ORDER BY " + chave,
                     [&](const LigacaoPostgres::Campos &campos) {
                         destino.Poe(tabela, campos);
                         if (tabela.Nome == "DOCUMENTO" || ++n % LinhasEntreAvisos == 0) {
                             avisa(campos[0] ? static_cast<double>(Inteiro(*campos[0])) / std::max(ultima, 1.0) : 0);
                         }
                     });
    } catch (const ErroDoServidor &erro) {
        if (erro.Caiu || !EhDaTabela(erro)) {
            throw;
        }
        de.Comanda("ROLLBACK TO tabela");
        trazido.NaoLidas.insert(nome);
        destino.Acha("A tabela " + nome + " não pôde ser lida até o fim", erro.Detalhe);
    }
    de.Comanda("RELEASE tabela");
}

// The stretches of a work of which each part has a weight.
class Trechos {
  public:
    Trechos(const ParteDoAndamento &andamento, std::vector<double> pesos)
        : m_Andamento(andamento),
          m_Pesos(std::move(pesos))
    {
        for (const double peso : m_Pesos) {
            m_Soma += peso;
        }
    }

    // parte: of the stretch that is under way, from 0 to 1.
    void Diz(double parte) const
    {
        m_Andamento.Diz((m_Antes + m_Pesos[m_Qual] * std::clamp(parte, 0.0, 1.0)) / std::max(m_Soma, 1.0));
    }
    void Passa()
    {
        Diz(1);
        m_Antes += m_Pesos[m_Qual++];
    }

  private:
    const ParteDoAndamento &m_Andamento;
    std::vector<double> m_Pesos;
    std::size_t m_Qual = 0;
    double m_Antes = 0;
    double m_Soma = 0;
};

std::string Lista(const std::set<std::int64_t> &chaves)
{
    std::string lista = "'{";
    for (const std::int64_t chave : chaves) {
        lista += (lista.size() > 2 ? "," : "") + CStr(chave);
    }
    return lista + "}'::int8[]";
}

using Linhas = std::map<std::string, std::set<std::int64_t>>; // by table

// The rows to which those of the entries refer by which they are named.
Linhas Citadas(ArquivoSQLite &arquivo)
{
    Linhas citadas;
    const Comando comando = Prepara(arquivo, "SELECT Entidade, NroEntidade, Operador, Depois FROM HISTORICO");
    while (sqlite3_step(comando.get()) == SQLITE_ROW) {
        const auto texto = [&](int coluna) {
            const auto *letras = reinterpret_cast<const char *>(sqlite3_column_text(comando.get(), coluna));
            return letras == nullptr
                       ? std::string()
                       : std::string(letras, static_cast<std::size_t>(sqlite3_column_bytes(comando.get(), coluna)));
        };
        citadas[texto(0)].insert(sqlite3_column_int64(comando.get(), 1));
        if (sqlite3_column_type(comando.get(), 2) == SQLITE_INTEGER) {
            citadas["USUARIO"].insert(sqlite3_column_int64(comando.get(), 2));
        }
        const QJsonObject retrato = QJsonDocument::fromJson(QByteArray::fromStdString(texto(3))).object();
        for (const auto &[membro, tabela] :
             {std::pair{"NroIntSensor", "SENSOR"}, {"NroIntEquip", "EQUIPAMENTO"}, {"Numero", "USUARIO"}}) {
            const QJsonValue chave = retrato.value(QLatin1String(membro));
            if (chave.isDouble()) {
                citadas[tabela].insert(chave.toInteger());
            }
        }
    }
    return citadas;
}

std::vector<ReferenciaSolta> Soltas(LigacaoPostgres &de)
{
    std::vector<ReferenciaSolta> soltas;
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        for (const Esquema::Coluna &coluna : tabela.Colunas) {
            const std::string para(coluna.Referencia.substr(0, coluna.Referencia.find(' ')));
            if (para.empty() || !PodeSerLida(de, tabela) || !PodeSerLida(de, *Esquema::Acha(para))) {
                continue;
            }
            // "TABELA (Coluna)"
            const std::string daOutra(
                coluna.Referencia.substr(para.size() + 2, coluna.Referencia.size() - para.size() - 3));
            for (const auto &linha :
                 de.Linhas("SELECT t." + std::string(tabela.Chave().Nome) + " FROM " + std::string(tabela.Nome) +
                           " t WHERE t." + std::string(coluna.Nome) + " IS NOT NULL AND NOT EXISTS (SELECT 1 FROM " +
                           para + " o WHERE o." + daOutra + " = t." + std::string(coluna.Nome) + ") ORDER BY 1 LIMIT " +
                           CStr(static_cast<std::int64_t>(MaisAchados)))) {
                soltas.push_back({std::string(tabela.Nome), std::stoll(linha[0].value_or("0")), para});
            }
        }
    }
    return soltas;
}

// The last entry of each of the rows, and of those by which they are named.
void TrazNomes(LigacaoPostgres &de, Destino &destino, RegistroTrazido &trazido)
{
    const Esquema::Tabela &historico = *Esquema::Acha("HISTORICO");
    Linhas trazidas;
    for (bool ha = true; ha;) {
        ha = false;
        Linhas citadas = Citadas(destino.Arquivo());
        for (const ReferenciaSolta &solta : trazido.Soltas) {
            citadas[solta.Tabela].insert(solta.Chave);
        }
        for (auto &[tabela, chaves] : citadas) {
            std::set<std::int64_t> faltam;
            std::ranges::set_difference(chaves, trazidas[tabela], std::inserter(faltam, faltam.end()));
            if (faltam.empty() || Esquema::Acha(tabela) == nullptr) {
                continue;
            }
            ha = true;
            trazidas[tabela].insert(faltam.begin(), faltam.end());
            std::set<std::int64_t> numeros;
            for (const auto &linha :
                 de.Linhas("SELECT MAX(Nro) FROM HISTORICO WHERE Entidade = $1 AND NroEntidade = ANY(" + Lista(faltam) +
                               ") GROUP BY NroEntidade",
                           {tabela})) {
                numeros.insert(std::stoll(*linha[0]));
            }
            std::set<std::int64_t> ha_no_arquivo;
            for (const std::string &numero : destino.Arquivo().Coluna("SELECT Nro FROM HISTORICO")) {
                ha_no_arquivo.insert(std::stoll(numero));
            }
            std::set<std::int64_t> novos;
            std::ranges::set_difference(numeros, ha_no_arquivo, std::inserter(novos, novos.end()));
            TrazTabela(de, historico, "Nro = ANY(" + Lista(novos) + ")", destino, trazido, [](double) {});
        }
    }
}

// A value as the textual form of the server has it.
void Escreve(std::string &linha, sqlite3_stmt *comando, int coluna)
{
    static constexpr const char *algarismos = "0123456789abcdef";
    switch (sqlite3_column_type(comando, coluna)) {
    case SQLITE_NULL:
        linha += "\\N";
        break;
    case SQLITE_BLOB: {
        const auto *octetos = static_cast<const unsigned char *>(sqlite3_column_blob(comando, coluna));
        linha += "\\\\x";
        for (int n = 0; n < sqlite3_column_bytes(comando, coluna); ++n) {
            linha += algarismos[octetos[n] >> 4];
            linha += algarismos[octetos[n] & 15];
        }
        break;
    }
    default: {
        const auto *letras = reinterpret_cast<const char *>(sqlite3_column_text(comando, coluna));
        for (const char letra :
             std::string_view(letras, static_cast<std::size_t>(sqlite3_column_bytes(comando, coluna)))) {
            switch (letra) {
            case '\\':
                linha += "\\\\";
                break;
            case '\n':
                linha += "\\n";
                break;
            case '\r':
                linha += "\\r";
                break;
            case '\t':
                linha += "\\t";
                break;
            default:
                linha += letra;
            }
        }
    }
    }
}

void LevaTabela(ArquivoSQLite &de, const Esquema::Tabela &tabela, LigacaoPostgres &para, std::int64_t ha,
                const Trechos &trechos)
{
    const std::string nome(tabela.Nome);
    const Comando comando =
        Prepara(de, "SELECT " + ColunasDe(tabela) + " FROM " + nome + " ORDER BY " + std::string(tabela.Chave().Nome));
    std::int64_t lidas = 0;
    const std::int64_t postas = para.Poe(nome, ColunasDe(tabela), [&](std::string &linha) {
        const int codigo = sqlite3_step(comando.get());
        if (codigo != SQLITE_ROW) {
            de.Exige(codigo == SQLITE_DONE ? SQLITE_OK : codigo);
            return false;
        }
        for (int coluna = 0; coluna < static_cast<int>(tabela.Colunas.size()); ++coluna) {
            linha += coluna == 0 ? "" : "\t";
            Escreve(linha, comando.get(), coluna);
        }
        ++lidas;
        if (tabela.Nome == "DOCUMENTO" || lidas % LinhasEntreAvisos == 0) {
            trechos.Diz(static_cast<double>(lidas) / static_cast<double>(std::max<std::int64_t>(ha, 1)));
        }
        return true;
    });
    if (postas != lidas || lidas != ha) {
        throw Falha(NumeroFalha::ErroInterno, "Servicos",
                    "A tabela " + nome + " tem " + CStr(ha) + " linhas, e " + CStr(postas) + " chegaram.");
    }
}

// One at a time makes a registry in a database.
void Segura(LigacaoPostgres &para)
{
    if (para.Unico("SELECT pg_try_advisory_xact_lock(" + CStr(Esquema::Aplicacao) + ")") != "t") {
        throw Falha(NumeroFalha::ErroDeAcesso, "Servicos",
                    "Outro programa está criando ou restaurando um registro no " + para.Nome() + ".");
    }
}

} // namespace

// What there is may be a registry, and nothing takes the place of one in a single step.
void Transporte::ExigeVazio(LigacaoPostgres &para)
{
    const auto ha = para.Unico(
        "SELECT upper(c.relname) FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace WHERE c.relkind IN "
        "('r', 'p', 'v', 'm', 'f') AND n.nspname NOT LIKE 'pg\\_%' AND n.nspname <> 'information_schema' "
        "AND NOT EXISTS (SELECT 1 FROM pg_depend d WHERE d.objid = c.oid AND d.deptype = 'e') "
        "ORDER BY c.relname <> 'historico', c.relname LIMIT 1");
    if (!ha) {
        return;
    }
    throw Falha(NumeroFalha::ArquivoJaExiste, "Servicos",
                (Esquema::Acha(*ha) != nullptr
                     ? "Já há um registro no " + para.Nome() + ", e em um servidor nada toma o lugar dele de uma vez."
                     : "No " + para.Nome() + " já há outra coisa (" + *ha + ").") +
                    " Crie um banco de dados novo, restaure nele e troque o endereço do registro na configuração do "
                    "servidor.");
}

void Transporte::ExigeRegistro(LigacaoPostgres &de)
{
    if (de.Unico("SELECT to_regclass('ESQUEMA') IS NOT NULL AND to_regclass('REGISTRO') IS NOT NULL AND "
                 "to_regclass('HISTORICO') IS NOT NULL") != "t") {
        throw Falha(NumeroFalha::ErroInterno, "Servicos", "No " + de.Nome() + " não há um registro de equipamentos.");
    }
}

std::string Transporte::Identificador(LigacaoPostgres &de)
{
    ExigeRegistro(de);
    return de.Unico("SELECT Identificador FROM REGISTRO WHERE Nro = 1").value_or("");
}

RegistroTrazido Transporte::Traz(LigacaoPostgres &de, const std::filesystem::path &para,
                                 const ParteDoAndamento &andamento)
{
    RegistroTrazido trazido;
    Destino destino(para, trazido);
    TransacaoPostgres momento(de, UmMomento);
    std::vector<double> pesos;
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        pesos.push_back(static_cast<double>(
            de.Inteiro("SELECT COALESCE(pg_table_size(to_regclass($1)), 0)", {std::string(tabela.Nome)})));
    }
    pesos.push_back(pesos.back()); // indices and guards
    Trechos trechos(andamento, pesos);
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        trechos.Diz(0);
        TrazTabela(de, tabela, "", destino, trazido, [&](double parte) { trechos.Diz(parte); });
        trechos.Passa();
    }
    momento.Confirma();
    destino.Termina();
    trechos.Passa();
    return trazido;
}

RegistroTrazido Transporte::TrazFim(LigacaoPostgres &de, const std::filesystem::path &para, std::int64_t quantas,
                                    std::optional<std::int64_t> entrada, const ParteDoAndamento &andamento)
{
    RegistroTrazido trazido;
    Destino destino(para, trazido);
    TransacaoPostgres momento(de, UmMomento);
    const auto traz = [&](std::string_view tabela, const std::string &onde) {
        andamento.Diz(0);
        TrazTabela(de, *Esquema::Acha(tabela), onde, destino, trazido, [&](double) { andamento.Diz(0); });
    };
    traz("ESQUEMA", "");
    traz("REGISTRO", "");
    if (PodeSerLida(de, *Esquema::Acha("HISTORICO"))) {
        trazido.Entradas = de.Inteiro("SELECT COUNT(*) FROM HISTORICO");
        const std::int64_t fim = de.Inteiro("SELECT MAX(Nro) FROM HISTORICO");
        traz("HISTORICO", "Nro >= " + CStr(fim - quantas) + (entrada ? " OR Nro = " + CStr(*entrada) : ""));
        Linhas tocadas;
        for (const std::string &linha : destino.Arquivo().Coluna(
                 "SELECT DISTINCT Entidade || ' ' || NroEntidade FROM HISTORICO WHERE Nro > " + CStr(fim - quantas))) {
            const std::size_t meio = linha.rfind(' ');
            tocadas[linha.substr(0, meio)].insert(std::stoll(linha.substr(meio + 1)));
        }
        for (const auto &[nome, chaves] : tocadas) {
            const Esquema::Tabela *tabela = Esquema::Acha(nome);
            if (tabela != nullptr && tabela->ComHistorico && nome != "REGISTRO") {
                traz(nome, std::string(tabela->Chave().Nome) + " = ANY(" + Lista(chaves) + ")");
            }
        }
        andamento.Diz(0.5);
        trazido.Soltas = Soltas(de);
        TrazNomes(de, destino, trazido);
    } else {
        traz("HISTORICO", "");
    }
    momento.Confirma();
    destino.Termina();
    andamento.Diz(1);
    return trazido;
}

void Transporte::Leva(ArquivoSQLite &de, LigacaoPostgres &para, const ParteDoAndamento &andamento)
{
    std::vector<std::int64_t> linhas;
    std::vector<double> pesos;
    double soma = 0;
    de.Comanda("BEGIN");
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        linhas.push_back(de.Inteiro("SELECT COUNT(*) FROM " + std::string(tabela.Nome)));
        const std::int64_t octetos = tabela.Nome == "DOCUMENTO" ? de.Inteiro("SELECT SUM(Tamanho) FROM DOCUMENTO") : 0;
        pesos.push_back(static_cast<double>(linhas.back() * PesoDeLinha + octetos));
        soma += pesos.back();
    }
    pesos.push_back(soma / 2); // indices and guards
    Trechos trechos(andamento, pesos);
    trechos.Diz(0);
    const DialetoPostgres dialeto(para.Onde());
    const std::vector<QString> guardas = dialeto.Guardas();
    TransacaoPostgres transacao(para, "BEGIN");
    Segura(para);
    ExigeVazio(para);
    for (const QString &comando : dialeto.Tabelas()) {
        para.Comanda(S(comando));
    }
    for (std::size_t n = 0; n < linhas.size(); ++n) {
        LevaTabela(de, Esquema::Tabelas()[n], para, linhas[n], trechos);
        trechos.Passa();
    }
    for (std::size_t n = 0; n < guardas.size(); ++n) {
        para.Comanda(S(guardas[n]));
        trechos.Diz(static_cast<double>(n) / static_cast<double>(guardas.size()));
    }
    trechos.Passa();
    try {
        transacao.Confirma();
    } catch (const ErroDoServidor &erro) {
        if (!erro.Caiu) {
            throw;
        }
        throw SemCerteza(NumeroFalha::ErroDeAcesso, "Servicos",
                         erro.Descricao +
                             " Foi no último passo, e não se sabe se o registro ficou ou não: confira-o. Se "
                             "não houver registro ali, restaure de novo.");
    }
    de.Comanda("COMMIT");
    IgnoraErro([&] { para.Comanda("ANALYZE"); }); // of use to the server, and no part of what was promised
}

} // namespace mesa
