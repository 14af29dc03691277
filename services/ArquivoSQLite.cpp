#include "services/ArquivoSQLite.h"

#include "services/DialetoSQLite.h"

#include <QByteArray>

#include <charconv>
#include <system_error>

namespace mesa {

namespace {

constexpr int EsperaOcupado = 5000; // milliseconds

} // namespace

std::string NomeDeArquivoParado(const std::filesystem::path &arquivo)
{
    const QByteArray caminho = QByteArray::fromStdString(std::filesystem::absolute(arquivo).string());
    return "file://" + caminho.toPercentEncoding("/").toStdString() + "?immutable=1";
}

ArquivoSQLite::ArquivoSQLite(const std::filesystem::path &arquivo, Modo modo) : m_Aberto(nullptr, sqlite3_close)
{
    const bool parado = modo == Modo::Parado;
    const std::string nome = parado ? NomeDeArquivoParado(arquivo) : arquivo.string();
    sqlite3 *aberto = nullptr;
    const int codigo = sqlite3_open_v2(
        nome.c_str(), &aberto, parado ? SQLITE_OPEN_READONLY | SQLITE_OPEN_URI : SQLITE_OPEN_READWRITE, nullptr);
    m_Aberto.reset(aberto);
    Exige(codigo);
    sqlite3_extended_result_codes(aberto, 1);
    sqlite3_busy_timeout(aberto, EsperaOcupado);
    // What stands in the file is not trusted to run anything.
    sqlite3_db_config(aberto, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(aberto, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    // A log of which the database makes nothing is not thrown away by looking.
    sqlite3_db_config(aberto, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

void ArquivoSQLite::Exige(int codigo) const
{
    if (codigo != SQLITE_OK) {
        sqlite3 *banco = m_Aberto.get();
        throw DialetoSQLite::ErroDoCodigo(codigo, sqlite3_extended_errcode(banco) == codigo ? sqlite3_errmsg(banco)
                                                                                            : sqlite3_errstr(codigo));
    }
}

void ArquivoSQLite::Comanda(const std::string &sql)
{
    Exige(sqlite3_exec(Aberto(), sql.c_str(), nullptr, nullptr, nullptr));
}

std::vector<std::string> ArquivoSQLite::Coluna(const std::string &sql)
{
    std::vector<std::string> valores;
    const auto guarda = [](void *destino, int, char **linha, char **) {
        static_cast<std::vector<std::string> *>(destino)->emplace_back(linha[0] == nullptr ? "" : linha[0]);
        return 0;
    };
    Exige(sqlite3_exec(Aberto(), sql.c_str(), guarda, &valores, nullptr));
    return valores;
}

std::string ArquivoSQLite::Texto(const std::string &sql)
{
    const std::vector<std::string> valores = Coluna(sql);
    return valores.empty() ? "" : valores.front();
}

std::int64_t ArquivoSQLite::Inteiro(const std::string &sql)
{
    const std::string texto = Texto(sql);
    std::int64_t numero = 0;
    const auto lido = std::from_chars(texto.data(), texto.data() + texto.size(), numero);
    if (!texto.empty() && (lido.ec != std::errc() || lido.ptr != texto.data() + texto.size())) {
        throw ErroSql(MotivoSql::Danificado, "um texto onde devia haver um número");
    }
    return numero;
}

std::vector<unsigned char> ArquivoSQLite::Comeco(std::size_t quantos)
{
    sqlite3_file *arquivo = nullptr;
    Exige(sqlite3_file_control(Aberto(), "main", SQLITE_FCNTL_FILE_POINTER, &arquivo));
    std::vector<unsigned char> bytes(quantos);
    const int codigo = arquivo->pMethods->xRead(arquivo, bytes.data(), static_cast<int>(quantos), 0);
    if (codigo != SQLITE_IOERR_SHORT_READ) { // what is missing is filled with zeros
        Exige(codigo);
    }
    return bytes;
}

bool ArquivoSQLite::SoMeu()
{
    sqlite3_file *arquivo = nullptr;
    Exige(sqlite3_file_control(Aberto(), "main", SQLITE_FCNTL_FILE_POINTER, &arquivo));
    int codigo = SQLITE_OK;
    for (const int trava : {SQLITE_LOCK_SHARED, SQLITE_LOCK_RESERVED, SQLITE_LOCK_EXCLUSIVE}) {
        if (codigo == SQLITE_OK) {
            codigo = arquivo->pMethods->xLock(arquivo, trava);
        }
    }
    arquivo->pMethods->xUnlock(arquivo, SQLITE_LOCK_NONE);
    if (codigo != SQLITE_BUSY) {
        Exige(codigo);
    }
    return codigo == SQLITE_OK;
}

} // namespace mesa
