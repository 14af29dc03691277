#include "tests/windows/travessia/biblioteca/RegistroDaBiblioteca.h"

#include <olectl.h>

// The host's library of records in a file of its own, ZTVORLIB.dll. It is found by a manifest, and never unloaded.

namespace nativo {
namespace {

class Fabrica : public IClassFactory {
  public:
    explicit Fabrica(REFCLSID classe) : m_Classe(classe) {}
    virtual ~Fabrica() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **saida) override
    {
        if (iid != IID_IUnknown && iid != IID_IClassFactory) {
            *saida = nullptr;
            return E_NOINTERFACE;
        }
        *saida = static_cast<IClassFactory *>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_Referencias; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG restam = --m_Referencias;
        if (restam == 0) {
            delete this;
        }
        return restam;
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown *externo, REFIID iid, void **saida) override
    {
        *saida = nullptr;
        if (externo != nullptr) {
            return CLASS_E_NOAGGREGATION;
        }
        IDispatch *registro = NovoRegistroDaBiblioteca(m_Classe);
        registro->AddRef();
        const HRESULT codigo = registro->QueryInterface(iid, saida);
        registro->Release();
        return codigo;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

  private:
    CLSID m_Classe;
    ULONG m_Referencias = 0;
};

} // namespace
} // namespace nativo

STDAPI DllGetClassObject(REFCLSID classe, REFIID iid, void **saida)
{
    *saida = nullptr;
    for (const nativo::ClasseDaBiblioteca &daqui : nativo::ClassesDaBiblioteca()) {
        if (daqui.Numero == classe) {
            auto *fabrica = new nativo::Fabrica(classe);
            fabrica->AddRef();
            const HRESULT codigo = fabrica->QueryInterface(iid, saida);
            fabrica->Release();
            return codigo;
        }
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow()
{
    return S_FALSE;
}
