#include "bench/Memoria.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

// Bytes held since counting began; below zero when more of the earlier ones were released.
std::int64_t g_Ocupados = 0;
std::int64_t g_Pico = 0;

constexpr std::size_t AlinhamentoComum = __STDCPP_DEFAULT_NEW_ALIGNMENT__;

// NOLINTBEGIN(cppcoreguidelines-owning-memory,cppcoreguidelines-no-malloc,cppcoreguidelines-pro-bounds-pointer-arithmetic,cppcoreguidelines-pro-type-reinterpret-cast):
// this is what an allocator is made of.

// In front of what the caller gets, as far as its alignment asks, lies the size that was asked for.
void *Reserva(std::size_t tamanho, std::size_t alinhamento)
{
    const std::size_t total = (tamanho + 2 * alinhamento - 1) / alinhamento * alinhamento;
    void *const bloco = std::aligned_alloc(alinhamento, total);
    if (bloco == nullptr) {
        throw std::bad_alloc();
    }
    char *const util = static_cast<char *>(bloco) + alinhamento;
    *reinterpret_cast<std::size_t *>(util - sizeof(std::size_t)) = tamanho;
    g_Ocupados += static_cast<std::int64_t>(tamanho);
    g_Pico = std::max(g_Pico, g_Ocupados);
    return util;
}

void Libera(void *endereco, std::size_t alinhamento) noexcept
{
    if (endereco == nullptr) {
        return;
    }
    char *const util = static_cast<char *>(endereco);
    g_Ocupados -= static_cast<std::int64_t>(*reinterpret_cast<std::size_t *>(util - sizeof(std::size_t)));
    std::free(util - alinhamento);
}

// NOLINTEND(cppcoreguidelines-owning-memory,cppcoreguidelines-no-malloc,cppcoreguidelines-pro-bounds-pointer-arithmetic,cppcoreguidelines-pro-type-reinterpret-cast)

std::size_t Alinhamento(std::align_val_t alinhamento)
{
    return std::max(static_cast<std::size_t>(alinhamento), AlinhamentoComum);
}

} // namespace

std::size_t PicoDeMemoria(const std::function<void()> &procedimento)
{
    g_Ocupados = 0;
    g_Pico = 0;
    procedimento();
    return static_cast<std::size_t>(g_Pico);
}

// The array forms of the library call these. The nothrow forms are here so that no library brings another allocator for
// their sake.
void *operator new(std::size_t tamanho)
{
    return Reserva(tamanho, AlinhamentoComum);
}

void *operator new(std::size_t tamanho, const std::nothrow_t &) noexcept
try {
    return operator new(tamanho);
} catch (...) {
    return nullptr;
}

void *operator new(std::size_t tamanho, std::align_val_t alinhamento)
{
    return Reserva(tamanho, Alinhamento(alinhamento));
}

void operator delete(void *endereco) noexcept
{
    Libera(endereco, AlinhamentoComum);
}

void operator delete(void *endereco, std::size_t) noexcept
{
    Libera(endereco, AlinhamentoComum);
}

void operator delete(void *endereco, const std::nothrow_t &) noexcept
{
    operator delete(endereco);
}

void operator delete(void *endereco, std::align_val_t alinhamento) noexcept
{
    Libera(endereco, Alinhamento(alinhamento));
}

void operator delete(void *endereco, std::size_t, std::align_val_t alinhamento) noexcept
{
    Libera(endereco, Alinhamento(alinhamento));
}
