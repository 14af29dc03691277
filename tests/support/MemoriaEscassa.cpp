#include "tests/support/MemoriaEscassa.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::int64_t> g_Ocupados{0};
// Requests left up to the refused one; below 1 nothing is refused.
std::atomic<std::int64_t> g_Faltam{0};

} // namespace

std::int64_t BlocosOcupados() noexcept
{
    return g_Ocupados;
}

MemoriaEscassa::MemoriaEscassa(std::int64_t n) noexcept
{
    g_Faltam = n;
}

MemoriaEscassa::~MemoriaEscassa()
{
    g_Faltam = 0;
}

bool MemoriaEscassa::Recusou() const noexcept
{
    return g_Faltam < 1;
}

// The array forms of the library call these, or, where a sanitizer brings its own, match each other; nothing here is
// aligned beyond the common.
void *operator new(std::size_t tamanho)
{
    if (g_Faltam > 0 && --g_Faltam == 0) {
        throw std::bad_alloc();
    }
    void *const bloco = std::malloc(tamanho == 0 ? 1 : tamanho);
    if (bloco == nullptr) {
        throw std::bad_alloc();
    }
    ++g_Ocupados;
    return bloco;
}

void *operator new(std::size_t tamanho, const std::nothrow_t &) noexcept
try {
    return operator new(tamanho);
} catch (...) {
    return nullptr;
}

void operator delete(void *endereco) noexcept
{
    if (endereco != nullptr) {
        --g_Ocupados;
        std::free(endereco);
    }
}

void operator delete(void *endereco, std::size_t) noexcept
{
    operator delete(endereco);
}

void operator delete(void *endereco, const std::nothrow_t &) noexcept
{
    operator delete(endereco);
}
