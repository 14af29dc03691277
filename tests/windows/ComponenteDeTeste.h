#pragma once

#include "windows/automation/Com.h"

#include <ZTAVOREQUIP.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

namespace nativo {

// The component's library as a host has it: loaded from beside the test program, known by its entry points alone. The
// thread that makes it is an apartment as long as it lives.
class ComponenteDeTeste {
  public:
    // arquivo: another copy of the library.
    explicit ComponenteDeTeste(const std::wstring &arquivo = Pasta() + L"\\ZTAVOREQUIP.dll");
    ComponenteDeTeste(const ComponenteDeTeste &) = delete;
    ComponenteDeTeste &operator=(const ComponenteDeTeste &) = delete;
    ~ComponenteDeTeste();

    // Folder of the test program, without a separator at its end.
    static std::wstring Pasta();

    HRESULT ObtemClasse(REFCLSID classe, REFIID iid, void **saida) const;
    HRESULT PodeDescarregar() const;
    HRESULT Registra() const;
    HRESULT Desregistra() const;

    Com<IClassFactory> Fabrica() const;
    // A new shell, through the interface's table.
    Com<_Geral> NovoGeral() const;

  private:
    template <class F> F Entrada(const char *nome) const;

    HMODULE m_Modulo;
};

} // namespace nativo
