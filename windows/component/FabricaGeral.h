#pragma once

#include "windows/automation/Embrulho.h"

#include <windows.h>

#include <atomic>

namespace nativo {

// Makes the one class that can be created.
class FabricaGeral final : public IClassFactory {
  public:
    FabricaGeral() = default;
    FabricaGeral(const FabricaGeral &) = delete;
    FabricaGeral &operator=(const FabricaGeral &) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **saida) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown *agregador, REFIID iid, void **saida) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL tranca) override;

    // Whether a client keeps the component loaded without an object.
    static bool Trancada() noexcept;

  private:
    virtual ~FabricaGeral() = default;

    std::atomic<ULONG> m_Referencias{1};
    Vivo m_Vivo;
};

} // namespace nativo
