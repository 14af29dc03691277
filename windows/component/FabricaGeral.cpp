#include "windows/component/FabricaGeral.h"

#include "windows/component/PublicoGeral.h"

namespace nativo {
namespace {

std::atomic<long> Trancas{0};

} // namespace

HRESULT FabricaGeral::QueryInterface(REFIID iid, void **saida)
{
    if (saida == nullptr) {
        return E_POINTER;
    }
    *saida = nullptr;
    if (iid != IID_IUnknown && iid != IID_IClassFactory) {
        return E_NOINTERFACE;
    }
    AddRef();
    *saida = static_cast<IClassFactory *>(this);
    return S_OK;
}

ULONG FabricaGeral::AddRef()
{
    return ++m_Referencias;
}

ULONG FabricaGeral::Release()
{
    const ULONG restam = --m_Referencias;
    if (restam == 0) {
        delete this;
    }
    return restam;
}

HRESULT FabricaGeral::CreateInstance(IUnknown *agregador, REFIID iid, void **saida)
{
    if (saida == nullptr) {
        return E_POINTER;
    }
    *saida = nullptr;
    if (agregador != nullptr) {
        return CLASS_E_NOAGGREGATION;
    }
    Com<_Geral> novo;
    const HRESULT codigo = NaBorda(IID_IClassFactory, [&] { novo = PublicoGeral::Cria(); });
    return FAILED(codigo) ? codigo : novo->QueryInterface(iid, saida);
}

HRESULT FabricaGeral::LockServer(BOOL tranca)
{
    Trancas += tranca != FALSE ? 1 : -1;
    return S_OK;
}

bool FabricaGeral::Trancada() noexcept
{
    return Trancas > 0;
}

} // namespace nativo
