#pragma once

#include "tests/windows/travessia/biblioteca/ClassesDaBiblioteca.h"

#include <vector>

namespace nativo {

// A record of the host's library: a value for each member of its class, empty until it is written. It takes values of
// the members' own types alone, and objects by reference alone.
class RegistroDaBiblioteca : public IDispatch {
  public:
    explicit RegistroDaBiblioteca(const ClasseDaBiblioteca &classe);
    RegistroDaBiblioteca(const RegistroDaBiblioteca &) = delete;
    RegistroDaBiblioteca &operator=(const RegistroDaBiblioteca &) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **saida) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT *quantos) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT qual, LCID lingua, ITypeInfo **saida) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR *nomes, UINT quantos, LCID lingua,
                                            DISPID *numeros) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID numero, REFIID iid, LCID lingua, WORD modo, DISPPARAMS *parametros,
                                     VARIANT *resposta, EXCEPINFO *informacao, UINT *errado) override;

  private:
    virtual ~RegistroDaBiblioteca();

    const ClasseDaBiblioteca &m_Classe;
    std::vector<VARIANT> m_Valores;
    ULONG m_Referencias = 0;
};

// A new one; null for an identifier that is no class of the library.
IDispatch *NovoRegistroDaBiblioteca(REFCLSID classe);

} // namespace nativo
