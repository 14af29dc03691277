#include "tests/windows/ComponenteDeTeste.h"

#include <objbase.h>

namespace nativo {

ComponenteDeTeste::ComponenteDeTeste(const std::wstring &arquivo)
{
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    m_Modulo = LoadLibraryW(arquivo.c_str());
    EXPECT_NE(m_Modulo, nullptr) << GetLastError();
}

ComponenteDeTeste::~ComponenteDeTeste()
{
    FreeLibrary(m_Modulo);
    CoUninitialize();
}

std::wstring ComponenteDeTeste::Pasta()
{
    std::wstring caminho(MAX_PATH, L'\0');
    caminho.resize(GetModuleFileNameW(nullptr, caminho.data(), MAX_PATH));
    return caminho.substr(0, caminho.rfind(L'\\'));
}

template <class F> F ComponenteDeTeste::Entrada(const char *nome) const
{
    return reinterpret_cast<F>(reinterpret_cast<void *>(GetProcAddress(m_Modulo, nome)));
}

HRESULT ComponenteDeTeste::ObtemClasse(REFCLSID classe, REFIID iid, void **saida) const
{
    return Entrada<HRESULT(WINAPI *)(REFCLSID, REFIID, void **)>("DllGetClassObject")(classe, iid, saida);
}

HRESULT ComponenteDeTeste::PodeDescarregar() const
{
    return Entrada<HRESULT(WINAPI *)()>("DllCanUnloadNow")();
}

HRESULT ComponenteDeTeste::Registra() const
{
    return Entrada<HRESULT(WINAPI *)()>("DllRegisterServer")();
}

HRESULT ComponenteDeTeste::Desregistra() const
{
    return Entrada<HRESULT(WINAPI *)()>("DllUnregisterServer")();
}

Com<IClassFactory> ComponenteDeTeste::Fabrica() const
{
    Com<IClassFactory> fabrica;
    EXPECT_EQ(ObtemClasse(__uuidof(Geral), IID_IClassFactory, fabrica.RecebeVazio()), S_OK);
    return fabrica;
}

Com<_Geral> ComponenteDeTeste::NovoGeral() const
{
    Com<_Geral> geral;
    EXPECT_EQ(Fabrica()->CreateInstance(nullptr, __uuidof(_Geral), geral.RecebeVazio()), S_OK);
    return geral;
}

} // namespace nativo
