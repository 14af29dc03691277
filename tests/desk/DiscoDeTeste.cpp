#include "tests/desk/DiscoDeTeste.h"

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

const sqlite3_io_methods Metodos = {
    3,
    [](sqlite3_file *a) { return Real(a)->pMethods->xClose(Real(a)); },
    [](sqlite3_file *a, void *dados, int tamanho, sqlite3_int64 onde) {
        return Real(a)->pMethods->xRead(Real(a), dados, tamanho, onde);
    },
    Escreve,
    [](sqlite3_file *a, sqlite3_int64 tamanho) { return Real(a)->pMethods->xTruncate(Real(a), tamanho); },
    Sincroniza,
    [](sqlite3_file *a, sqlite3_int64 *tamanho) { return Real(a)->pMethods->xFileSize(Real(a), tamanho); },
    [](sqlite3_file *a, int tranca) { return Real(a)->pMethods->xLock(Real(a), tranca); },
    [](sqlite3_file *a, int tranca) { return Real(a)->pMethods->xUnlock(Real(a), tranca); },
    [](sqlite3_file *a, int *trancado) { return Real(a)->pMethods->xCheckReservedLock(Real(a), trancado); },
    [](sqlite3_file *a, int operacao, void *dado) { return Real(a)->pMethods->xFileControl(Real(a), operacao, dado); },
    [](sqlite3_file *a) { return Real(a)->pMethods->xSectorSize(Real(a)); },
    [](sqlite3_file *a) { return Real(a)->pMethods->xDeviceCharacteristics(Real(a)); },
    [](sqlite3_file *a, int pagina, int tamanho, int estende, void volatile **memoria) {
        return Real(a)->pMethods->xShmMap(Real(a), pagina, tamanho, estende, memoria);
    },
    [](sqlite3_file *a, int de, int quantas, int tranca) {
        return Real(a)->pMethods->xShmLock(Real(a), de, quantas, tranca);
    },
    [](sqlite3_file *a) { Real(a)->pMethods->xShmBarrier(Real(a)); },
    [](sqlite3_file *a, int apaga) { return Real(a)->pMethods->xShmUnmap(Real(a), apaga); },
    [](sqlite3_file *a, sqlite3_int64 onde, int tamanho, void **memoria) {
        return Real(a)->pMethods->xFetch(Real(a), onde, tamanho, memoria);
    },
    [](sqlite3_file *a, sqlite3_int64 onde, void *memoria) {
        return Real(a)->pMethods->xUnfetch(Real(a), onde, memoria);
    },
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
