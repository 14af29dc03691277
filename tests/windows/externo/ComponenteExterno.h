#pragma once

#include "tests/windows/externo/ObjetoTardio.h"

#include <windows.h>

#include <string>

namespace nativo {

// The component's file, as a program sees it that has nothing but its name: four entry points, and objects to be asked
// for by identifiers.
class ComponenteExterno {
  public:
    ComponenteExterno();
    ComponenteExterno(const ComponenteExterno &) = delete;
    ComponenteExterno &operator=(const ComponenteExterno &) = delete;
    ~ComponenteExterno();

    HRESULT Registra() const { return Chama("DllRegisterServer"); }
    HRESULT Desregistra() const { return Chama("DllUnregisterServer"); }
    HRESULT PodeDescarregar() const { return Chama("DllCanUnloadNow"); }
    HRESULT ObtemClasse(REFCLSID classe, REFIID iid, void **objeto) const;
    // A new shell, by its programmatic identifier.
    static ObjetoTardio Cria();
    // Lets the file go. Whether it is loaded all the same, for an object of it.
    void Solta();
    static bool Carregado();

    // The environment's ZTAVOREQUIP, or the file beside the program.
    static std::wstring Caminho();

    static const CLSID ClsidGeral;
    static const CLSID ClsidEspecifica;
    static const CLSID ClsidCVorEquip;
    static const CLSID ClsidCVORPesqEquip;
    static const IID IidGeral;
    static const IID IidEspecifica;
    static const IID IidCVorEquip;
    static const IID IidCVORPesqEquip;
    static const GUID Biblioteca;

  private:
    HRESULT Chama(const char *entrada) const;

    HMODULE m_Arquivo = nullptr;
};

} // namespace nativo
