#include "shell/Componente.h"
#include "windows/component/ArquivoDoModulo.h"
#include "windows/component/FabricaGeral.h"
#include "windows/component/Inscricao.h"

#include <ZTAVOREQUIP.h>
#include <windows.h>

#include <cstddef>
#include <new>
#include <utility>

// What the platform calls in the component's library.

namespace nativo {

namespace {

template <class Acao> HRESULT NoRegistro(Acao acao) noexcept
{
    HRESULT codigo = S_OK;
    const HRESULT borda = NaBorda(IID_NULL, [&] {
        RegistroDoSistema maquina(HKEY_LOCAL_MACHINE);
        RegistroDoSistema usuario(HKEY_CURRENT_USER);
        codigo = acao(maquina, usuario, ArquivoDoModulo());
    });
    return FAILED(borda) ? borda : codigo;
}

} // namespace

STDAPI DllGetClassObject(REFCLSID classe, REFIID iid, void **saida)
{
    if (saida == nullptr) {
        return E_POINTER;
    }
    *saida = nullptr;
    if (classe != __uuidof(Geral)) {
        return CLASS_E_CLASSNOTAVAILABLE;
    }
    Com<IClassFactory> fabrica = Com<IClassFactory>::Adota(new (std::nothrow) FabricaGeral);
    return fabrica ? fabrica->QueryInterface(iid, saida) : E_OUTOFMEMORY;
}

STDAPI DllCanUnloadNow()
{
    return Vivo::Quantos() == 0 && !FabricaGeral::Trancada() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer()
{
    return NoRegistro(InscreveComponente);
}

STDAPI DllUnregisterServer()
{
    return NoRegistro(DesinscreveComponente);
}

// When the process ends with the shell still there, the host's objects may be gone already: nothing of theirs is let
// go.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD motivo, void *processoTermina)
{
    if (motivo == DLL_PROCESS_DETACH && processoTermina != nullptr) {
        alignas(Componente) static std::byte guardado[sizeof(Componente)];
        new (guardado) Componente(std::exchange(EsteComponente(), Componente()));
    }
    return TRUE;
}

} // namespace nativo
