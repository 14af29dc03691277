#include <windows.h>

#include <cerrno>

// The locks of the compiler's library. Its own support for them here takes a handle of the process for each that is
// used, and never gives it back, so that every loading of the component would leave some behind. These have none, and
// need no end. They are laid out as the library's are, which were compiled without knowing of these.

namespace nativo {

extern "C" {

struct TravaUmaVez {
    int Feito;
    long Comecado; // -1 until somebody has begun
};

struct Trava {
    long Contador;
    SRWLOCK Dentro; // in the place of a handle
};

struct TravaRepetivel {
    long Contador;
    long Fundura;
    unsigned long Dono; // thread that holds it; 0 for none
    SRWLOCK Dentro;
};

int __mingwthr_key_dtor(DWORD lugar, void (*fim)(void *));

int __gthr_win32_once(TravaUmaVez *vez, void (*acao)())
{
    if (vez == nullptr || acao == nullptr) {
        return EINVAL;
    }
    if (__atomic_load_n(&vez->Feito, __ATOMIC_ACQUIRE) == 0) {
        if (InterlockedIncrement(&vez->Comecado) == 0) {
            acao();
            __atomic_store_n(&vez->Feito, 1, __ATOMIC_RELEASE);
        } else {
            while (__atomic_load_n(&vez->Feito, __ATOMIC_ACQUIRE) == 0) {
                SwitchToThread();
            }
        }
    }
    return 0;
}

int __gthr_win32_key_create(DWORD *lugar, void (*fim)(void *))
{
    *lugar = TlsAlloc();
    if (*lugar == TLS_OUT_OF_INDEXES) {
        return static_cast<int>(GetLastError());
    }
    return fim == nullptr ? 0 : __mingwthr_key_dtor(*lugar, fim);
}

int __gthr_win32_key_delete(DWORD lugar)
{
    return TlsFree(lugar) ? 0 : static_cast<int>(GetLastError());
}

void *__gthr_win32_getspecific(DWORD lugar)
{
    const DWORD erro = GetLastError(); // reading a slot changes it
    void *const valor = TlsGetValue(lugar);
    SetLastError(erro);
    return valor;
}

int __gthr_win32_setspecific(DWORD lugar, const void *valor)
{
    return TlsSetValue(lugar, const_cast<void *>(valor)) ? 0 : static_cast<int>(GetLastError());
}

void __gthr_win32_mutex_init_function(Trava *trava)
{
    trava->Contador = -1;
    InitializeSRWLock(&trava->Dentro);
}

void __gthr_win32_mutex_destroy(Trava *) {}

int __gthr_win32_mutex_lock(Trava *trava)
{
    AcquireSRWLockExclusive(&trava->Dentro);
    return 0;
}

int __gthr_win32_mutex_trylock(Trava *trava)
{
    return TryAcquireSRWLockExclusive(&trava->Dentro) ? 0 : 1;
}

int __gthr_win32_mutex_unlock(Trava *trava)
{
    ReleaseSRWLockExclusive(&trava->Dentro);
    return 0;
}

void __gthr_win32_recursive_mutex_init_function(TravaRepetivel *trava)
{
    *trava = {-1, 0, 0, SRWLOCK_INIT};
}

void __gthr_win32_recursive_mutex_destroy(TravaRepetivel *) {}

int __gthr_win32_recursive_mutex_lock(TravaRepetivel *trava)
{
    const DWORD eu = GetCurrentThreadId();
    if (__atomic_load_n(&trava->Dono, __ATOMIC_RELAXED) != eu) {
        AcquireSRWLockExclusive(&trava->Dentro);
        __atomic_store_n(&trava->Dono, eu, __ATOMIC_RELAXED);
    }
    ++trava->Fundura;
    return 0;
}

int __gthr_win32_recursive_mutex_trylock(TravaRepetivel *trava)
{
    const DWORD eu = GetCurrentThreadId();
    if (__atomic_load_n(&trava->Dono, __ATOMIC_RELAXED) != eu) {
        if (!TryAcquireSRWLockExclusive(&trava->Dentro)) {
            return 1;
        }
        __atomic_store_n(&trava->Dono, eu, __ATOMIC_RELAXED);
    }
    ++trava->Fundura;
    return 0;
}

int __gthr_win32_recursive_mutex_unlock(TravaRepetivel *trava)
{
    if (--trava->Fundura == 0) {
        __atomic_store_n(&trava->Dono, 0, __ATOMIC_RELAXED);
        ReleaseSRWLockExclusive(&trava->Dentro);
    }
    return 0;
}

} // extern "C"

} // namespace nativo
