#include "tests/services/DiscoDeTeste.h"

#include <limits>
#include <stdexcept>

namespace {

constexpr int SemLimite = std::numeric_limits<int>::max();

struct Estado {
    int Cabem = SemLimite;
    int Codigo = SQLITE_FULL;
    bool Recusou = false;
};

Estado g_Estado;

sqlite3_vfs *g_Original = nullptr;

// A file of ours, with the system's own behind it in the memory that the database gives for both.
struct Arquivo {
    sqlite3_file Base;
    sqlite3_file *Real;
};

sqlite3_file *Real(sqlite3_file *arquivo)
{
    return reinterpret_cast<Arquivo *>(arquivo)->Real;
}

bool Cabe()
{
    if (g_Estado.Cabem == SemLimite) {
        return true;
    }
    if (g_Estado.Cabem > 0) {
        --g_Estado.Cabem;
        return true;
    }
    g_Estado.Recusou = true;
    return false;
}

int Escreve(sqlite3_file *a, const void *dados, int tamanho, sqlite3_int64 onde)
{
    if (g_Estado.Codigo != SQLITE_IOERR_FSYNC && !Cabe()) {
        return g_Estado.Codigo;
    }
    return Real(a)->pMethods->xWrite(Real(a), dados, tamanho, onde);
}

int Sincroniza(sqlite3_file *a, int como)
{
    if (g_Estado.Codigo == SQLITE_IOERR_FSYNC && !Cabe()) {
        return g_Estado.Codigo;
    }
    return Real(a)->pMethods->xSync(Real(a), como);
}

// What goes to the system's own file as it comes.
template <auto Metodo, class... Argumentos> auto Passa(sqlite3_file *arquivo, Argumentos... argumentos)
{
    return (Real(arquivo)->pMethods->*Metodo)(Real(arquivo), argumentos...);
}

using M = sqlite3_io_methods;
const sqlite3_io_methods Metodos = {
    3,
    Passa<&M::xClose>,
    Passa<&M::xRead>,
    Escreve,
    Passa<&M::xTruncate>,
    Sincroniza,
    Passa<&M::xFileSize>,
    Passa<&M::xLock>,
    Passa<&M::xUnlock>,
    Passa<&M::xCheckReservedLock>,
    Passa<&M::xFileControl>,
    Passa<&M::xSectorSize>,
    Passa<&M::xDeviceCharacteristics>,
    Passa<&M::xShmMap>,
    Passa<&M::xShmLock>,
    Passa<&M::xShmBarrier>,
    Passa<&M::xShmUnmap>,
    Passa<&M::xFetch>,
    Passa<&M::xUnfetch>,
};

int Abre(sqlite3_vfs *, const char *nome, sqlite3_file *arquivo, int modo, int *modoDado)
{
    auto *nosso = reinterpret_cast<Arquivo *>(arquivo);
    nosso->Real = reinterpret_cast<sqlite3_file *>(nosso + 1);
    const int resposta = g_Original->xOpen(g_Original, nome, nosso->Real, modo, modoDado);
    nosso->Base.pMethods = nosso->Real->pMethods == nullptr ? nullptr : &Metodos;
    return resposta;
}

} // namespace

void DiscoDeTeste::Instala()
{
    if (g_Original != nullptr) {
        return;
    }
    g_Original = sqlite3_vfs_find(nullptr);
    static sqlite3_vfs nosso = *g_Original;
    nosso.zName = "disco-de-teste";
    nosso.szOsFile = static_cast<int>(sizeof(Arquivo)) + g_Original->szOsFile;
    nosso.xOpen = Abre;
    if (sqlite3_vfs_register(&nosso, 1) != SQLITE_OK) {
        throw std::runtime_error("the disk cannot be put under the database");
    }
}

DiscoDeTeste::DiscoDeTeste(int cabem, int codigo)
{
    g_Estado = {cabem, codigo, false};
}

DiscoDeTeste::~DiscoDeTeste()
{
    g_Estado = {};
}

bool DiscoDeTeste::Recusou() const
{
    return g_Estado.Recusou;
}
