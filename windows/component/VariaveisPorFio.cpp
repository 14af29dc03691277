#include <windows.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

// Of the compiler's library, by the name that the linker has for __gnu_cxx::__freeres: frees its store for exceptions
// without memory.
extern "C" void _ZN9__gnu_cxx9__freeresEv();

// The variables of which each thread has its own: the compiler's own support for them here takes a slot of the process
// for every library that uses one, as the one that throws does, and never gives it back, so that after a thousand times
// loading and unloading there is none left. This one takes its place and leaves with the library.

namespace nativo {

namespace {

// As the compiler lays it out, one for each such variable.
struct Variavel {
    std::size_t Tamanho;
    std::size_t Alinhamento;
    std::uintptr_t Numero; // from 1 in the order of their first use; 0 until then
    const void *Modelo;    // initial contents, or null for zeros
};

// What one thread has.
struct DoFio {
    std::size_t Quantas = 0;
    void **Enderecos = nullptr;
};

constinit std::atomic<std::uintptr_t> g_Quantas{0};
constinit std::atomic<DWORD> g_Lugar{FLS_OUT_OF_INDEXES};

// At the end of a thread, and of every thread that there is when the library goes.
void WINAPI Libera(void *dados)
{
    DoFio *const fio = static_cast<DoFio *>(dados);
    if (fio == nullptr) {
        return;
    }
    for (std::size_t i = 0; i < fio->Quantas; ++i) {
        _aligned_free(fio->Enderecos[i]);
    }
    std::free(fio->Enderecos);
    delete fio;
}

// After everything else that ends with the library.
[[gnu::destructor(101)]] void DevolveLugar()
{
    const DWORD lugar = g_Lugar.exchange(FLS_OUT_OF_INDEXES);
    if (lugar != FLS_OUT_OF_INDEXES) {
        FlsFree(lugar);
    }
    _ZN9__gnu_cxx9__freeresEv(); // it is taken at each load, and given back by nobody
}

DWORD Lugar()
{
    DWORD lugar = g_Lugar;
    if (lugar == FLS_OUT_OF_INDEXES) {
        const DWORD novo = FlsAlloc(Libera);
        if (novo == FLS_OUT_OF_INDEXES) {
            std::abort();
        }
        if (g_Lugar.compare_exchange_strong(lugar, novo)) {
            return novo;
        }
        FlsFree(novo); // another thread was first
    }
    return lugar;
}

std::uintptr_t NumeroDe(Variavel &variavel)
{
    const std::atomic_ref<std::uintptr_t> numero(variavel.Numero);
    std::uintptr_t atual = numero;
    if (atual == 0) {
        const std::uintptr_t novo = ++g_Quantas;
        if (numero.compare_exchange_strong(atual, novo)) {
            return novo;
        }
    }
    return atual;
}

DoFio &FioAtual()
{
    const DWORD lugar = Lugar();
    void *dados = FlsGetValue(lugar);
    if (dados == nullptr) {
        dados = new (std::nothrow) DoFio;
        if (dados == nullptr || FlsSetValue(lugar, dados) == FALSE) {
            std::abort();
        }
    }
    return *static_cast<DoFio *>(dados);
}

void *NovoEndereco(const Variavel &variavel)
{
    void *const endereco = _aligned_malloc(variavel.Tamanho, variavel.Alinhamento);
    if (endereco == nullptr) {
        std::abort();
    }
    if (variavel.Modelo == nullptr) {
        std::memset(endereco, 0, variavel.Tamanho);
    } else {
        std::memcpy(endereco, variavel.Modelo, variavel.Tamanho);
    }
    return endereco;
}

} // namespace

// Without memory for a variable there is nobody to tell: throwing needs one.
extern "C" void *__emutls_get_address(Variavel *variavel)
{
    const DWORD erro = GetLastError(); // reading a slot changes it, and the caller does not know that it reads one
    const std::uintptr_t numero = NumeroDe(*variavel);
    DoFio &fio = FioAtual();
    if (numero > fio.Quantas) {
        void *const maiores = std::realloc(fio.Enderecos, numero * sizeof(void *));
        if (maiores == nullptr) {
            std::abort();
        }
        fio.Enderecos = static_cast<void **>(maiores);
        std::memset(fio.Enderecos + fio.Quantas, 0, (numero - fio.Quantas) * sizeof(void *));
        fio.Quantas = numero;
    }
    void *&endereco = fio.Enderecos[numero - 1];
    if (endereco == nullptr) {
        endereco = NovoEndereco(*variavel);
    }
    SetLastError(erro);
    return endereco;
}

} // namespace nativo
