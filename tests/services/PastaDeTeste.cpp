#include "tests/services/PastaDeTeste.h"

#include "tests/services/RegistroDeTeste.h"

#include <sqlite3.h>
#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

void CriaBanco(const fs::path &arquivo, const std::string &comandos)
{
    sqlite3 *aberto = nullptr;
    sqlite3_open(arquivo.c_str(), &aberto);
    const std::unique_ptr<sqlite3, int (*)(sqlite3 *)> banco(aberto, sqlite3_close);
    if (sqlite3_exec(aberto, comandos.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(aberto));
    }
}

} // namespace

std::vector<std::string> Nomes(const fs::path &pasta)
{
    std::vector<std::string> nomes;
    for (const auto &entrada : fs::directory_iterator(pasta)) {
        nomes.push_back(entrada.path().filename().string());
    }
    std::sort(nomes.begin(), nomes.end());
    return nomes;
}

unsigned ModoDe(const fs::path &caminho)
{
    struct stat e {};
    if (stat(caminho.c_str(), &e) != 0) {
        throw std::runtime_error("no " + caminho.string());
    }
    return e.st_mode & 07777U;
}

void AbreATodos(const fs::path &arquivo)
{
    for (const char *parte : {"", "-wal", "-shm"}) {
        if (fs::exists(arquivo.string() + parte)) {
            fs::permissions(arquivo.string() + parte, fs::perms(0666));
        }
    }
    fs::permissions(arquivo.parent_path(), fs::perms::all);
}

std::string Conteudo(const fs::path &arquivo)
{
    std::string tudo;
    for (const std::string &tabela :
         LinhasSql(arquivo.string(), "SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY name")) {
        tudo += "[" + tabela + "]\n";
        for (const std::string &linha : LinhasSql(arquivo.string(), "SELECT rowid, * FROM " + tabela + " ORDER BY 1")) {
            tudo += linha + "\n";
        }
    }
    return tudo;
}

std::string BytesDe(const fs::path &arquivo)
{
    std::ifstream lido(arquivo, std::ios::binary);
    return {std::istreambuf_iterator<char>(lido), std::istreambuf_iterator<char>()};
}

void TrocaByte(const fs::path &arquivo, std::streamoff onde)
{
    std::fstream aberto(arquivo, std::ios::binary | std::ios::in | std::ios::out);
    aberto.seekg(onde);
    const int era = aberto.get();
    aberto.seekp(onde);
    aberto.put(static_cast<char>(~era));
    if (!aberto.flush()) {
        throw std::runtime_error("no byte there");
    }
}

void CriaBancoAlheio(const fs::path &arquivo)
{
    CriaBanco(arquivo, "CREATE TABLE NOTAS (Texto TEXT)");
}

void CriaRegistroVersao1(const fs::path &arquivo)
{
    CriaBanco(arquivo, BytesDe("tests/services/dados/registro.versao1.sql"));
}

void Exige(const mesa::DesfechoDaCopia &desfecho)
{
    if (!desfecho.Feita) {
        throw std::runtime_error(desfecho.Frase);
    }
}
