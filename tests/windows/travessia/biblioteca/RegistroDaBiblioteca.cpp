#include "tests/windows/travessia/biblioteca/RegistroDaBiblioteca.h"

#include <oleauto.h>

#include <algorithm>
#include <string>

namespace nativo {
namespace {

// The type information of a class by its name alone, made by the platform.
HRESULT TipoChamado(const wchar_t *nome, ITypeInfo **saida)
{
    ICreateTypeLib2 *biblioteca = nullptr;
    HRESULT codigo = CreateTypeLib2(SYS_WIN32, L"ztvorlib.tlb", &biblioteca); // never written to the disk
    if (FAILED(codigo)) {
        return codigo;
    }
    ICreateTypeInfo *tipo = nullptr;
    std::wstring nomeDaClasse(nome);
    codigo = biblioteca->CreateTypeInfo(nomeDaClasse.data(), TKIND_DISPATCH, &tipo);
    biblioteca->Release();
    if (SUCCEEDED(codigo)) {
        codigo = tipo->QueryInterface(IID_ITypeInfo, reinterpret_cast<void **>(saida));
        tipo->Release();
    }
    return codigo;
}

bool EhObjeto(const VARIANT &valor)
{
    return V_VT(&valor) == VT_DISPATCH || V_VT(&valor) == VT_UNKNOWN;
}

} // namespace

RegistroDaBiblioteca::RegistroDaBiblioteca(const ClasseDaBiblioteca &classe)
    : m_Classe(classe),
      m_Valores(classe.Membros.size())
{
    for (VARIANT &valor : m_Valores) {
        VariantInit(&valor);
    }
}

RegistroDaBiblioteca::~RegistroDaBiblioteca()
{
    for (VARIANT &valor : m_Valores) {
        VariantClear(&valor);
    }
}

HRESULT RegistroDaBiblioteca::QueryInterface(REFIID iid, void **saida)
{
    if (saida == nullptr) {
        return E_POINTER;
    }
    *saida = nullptr;
    if (iid != IID_IUnknown && iid != IID_IDispatch) {
        return E_NOINTERFACE;
    }
    *saida = static_cast<IDispatch *>(this);
    AddRef();
    return S_OK;
}

ULONG RegistroDaBiblioteca::AddRef()
{
    return ++m_Referencias;
}

ULONG RegistroDaBiblioteca::Release()
{
    const ULONG restam = --m_Referencias;
    if (restam == 0) {
        delete this;
    }
    return restam;
}

HRESULT RegistroDaBiblioteca::GetTypeInfoCount(UINT *quantos)
{
    *quantos = 1;
    return S_OK;
}

HRESULT RegistroDaBiblioteca::GetTypeInfo(UINT qual, LCID, ITypeInfo **saida)
{
    *saida = nullptr;
    return qual == 0 ? TipoChamado(m_Classe.Nome, saida) : DISP_E_BADINDEX;
}

HRESULT RegistroDaBiblioteca::GetIDsOfNames(REFIID, LPOLESTR *nomes, UINT quantos, LCID, DISPID *numeros)
{
    std::fill(numeros, numeros + quantos, DISPID_UNKNOWN);
    const auto &membros = m_Classe.Membros;
    const auto achado = std::find_if(membros.begin(), membros.end(), [&](const MembroDaClasse &membro) {
        return CompareStringOrdinal(membro.Nome, -1, nomes[0], -1, TRUE) == CSTR_EQUAL;
    });
    if (achado == membros.end() || quantos != 1) {
        return DISP_E_UNKNOWNNAME;
    }
    numeros[0] = static_cast<DISPID>(achado - membros.begin()) + 1;
    return S_OK;
}

HRESULT RegistroDaBiblioteca::Invoke(DISPID numero, REFIID, LCID, WORD modo, DISPPARAMS *parametros, VARIANT *resposta,
                                     EXCEPINFO *, UINT *)
{
    if (numero < 1 || static_cast<std::size_t>(numero) > m_Valores.size()) {
        return DISP_E_MEMBERNOTFOUND;
    }
    const auto qual = static_cast<std::size_t>(numero - 1);
    VARIANT &valor = m_Valores[qual];
    if ((modo & DISPATCH_PROPERTYGET) != 0) {
        if (parametros->cArgs != 0) {
            return DISP_E_BADPARAMCOUNT;
        }
        return resposta == nullptr ? S_OK : VariantCopy(resposta, &valor);
    }
    if (parametros->cArgs != 1) {
        return DISP_E_BADPARAMCOUNT;
    }
    const VARIANT &novo = parametros->rgvarg[0];
    const bool porReferencia = (modo & DISPATCH_PROPERTYPUTREF) != 0;
    if (porReferencia != EhObjeto(novo) || (modo & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) == 0) {
        return DISP_E_MEMBERNOTFOUND;
    }
    if (V_VT(&novo) != m_Classe.Membros[qual].Tipo) {
        return DISP_E_TYPEMISMATCH;
    }
    return VariantCopy(&valor, const_cast<VARIANT *>(&novo));
}

IDispatch *NovoRegistroDaBiblioteca(REFCLSID classe)
{
    for (const ClasseDaBiblioteca &daqui : ClassesDaBiblioteca()) {
        if (daqui.Numero == classe) {
            return new RegistroDaBiblioteca(daqui);
        }
    }
    return nullptr;
}

} // namespace nativo
