#include "tests/windows/travessia/Cerca.h"

#include "windows/automation/Embrulho.h"
#include "windows/automation/Remoto.h"
#include "windows/automation/Texto16.h"

#include <map>
#include <utility>

namespace nativo {
namespace {

// Known by the fences alone.
struct ICercado : IUnknown {};

} // namespace
} // namespace nativo

__CRT_UUID_DECL(nativo::ICercado, 0x2f3f1c59, 0x8f0e, 0x4a0b, 0x9a, 0x52, 0x71, 0x7d, 0x3c, 0x14, 0x60, 0x2b)

namespace nativo {
namespace {

class Cercado;

struct Estado {
    std::map<IUnknown *, Cercado *> Vivos; // by the identity of what is fenced in
    Contagem Chamadas;
    std::map<std::string, Cerca::Resposta> Respostas;
    std::int32_t Profundidade = 0;
};

// Outlives every fence.
Estado &Tudo()
{
    static auto *estado = new Estado;
    return *estado;
}

// While it lives, the component is on the other side.
class Travessia {
  public:
    Travessia() noexcept { ++Tudo().Profundidade; }
    Travessia(const Travessia &) = delete;
    Travessia &operator=(const Travessia &) = delete;
    ~Travessia() { --Tudo().Profundidade; }
};

void CercaNoLugar(IDispatch *&lugar)
{
    Com<IDispatch> dentro = Com<IDispatch>::Adota(std::exchange(lugar, nullptr));
    lugar = Cerca::Em(dentro).Solta();
}

// What goes out in a value, or where a reference refers to.
void CercaValor(VARIANT &valor)
{
    switch (V_VT(&valor)) {
    case VT_DISPATCH:
        CercaNoLugar(V_DISPATCH(&valor));
        break;
    case VT_BYREF | VT_DISPATCH:
        CercaNoLugar(*V_DISPATCHREF(&valor));
        break;
    case VT_BYREF | VT_VARIANT:
        CercaValor(*V_VARIANTREF(&valor));
        break;
    case VT_BYREF | VT_ARRAY | VT_VARIANT: {
        SAFEARRAY *arranjo = *V_ARRAYREF(&valor);
        void *elementos = nullptr;
        if (arranjo != nullptr && SUCCEEDED(SafeArrayAccessData(arranjo, &elementos))) {
            for (ULONG i = 0; i < arranjo->rgsabound[0].cElements; ++i) {
                CercaValor(static_cast<VARIANT *>(elementos)[i]);
            }
            SafeArrayUnaccessData(arranjo);
        }
        break;
    }
    default:
        break;
    }
}

class Cercado final : public IDispatch, public ICercado {
  public:
    Cercado(Com<IDispatch> dentro, Com<IUnknown> identidade)
        : m_Dentro(std::move(dentro)),
          m_Identidade(std::move(identidade)),
          m_Classe(ClasseDe(m_Dentro))
    {
        Tudo().Vivos[m_Identidade.Ponteiro()] = this;
    }
    virtual ~Cercado() { Tudo().Vivos.erase(m_Identidade.Ponteiro()); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **saida) override
    {
        if (saida == nullptr) {
            return E_POINTER;
        }
        if (iid == IID_IUnknown || iid == IID_IDispatch) {
            *saida = static_cast<IDispatch *>(this);
        } else if (iid == __uuidof(ICercado)) {
            *saida = static_cast<ICercado *>(this);
        } else {
            return m_Dentro->QueryInterface(iid, saida); // by which its own side knows it again
        }
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
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT *quantos) override { return m_Dentro->GetTypeInfoCount(quantos); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT qual, LCID lingua, ITypeInfo **saida) override
    {
        return m_Dentro->GetTypeInfo(qual, lingua, saida);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR *nomes, UINT quantos, LCID lingua,
                                            DISPID *numeros) override
    {
        const HRESULT codigo = m_Dentro->GetIDsOfNames(iid, nomes, quantos, lingua, numeros);
        if (SUCCEEDED(codigo)) {
            m_Nomes[numeros[0]] = ParaUtf8(nomes[0]);
        }
        return codigo;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID numero, REFIID iid, LCID lingua, WORD modo, DISPPARAMS *parametros,
                                     VARIANT *resposta, EXCEPINFO *informacao, UINT *errado) override
    {
        const Com<IDispatch> eu(this);
        const std::string nome = numero == DISPID_VALUE ? "[default]" : m_Nomes[numero];
        Tudo().Chamadas.Soma(m_Classe + "." + nome);
        if (const auto outra = Tudo().Respostas.find(nome); outra != Tudo().Respostas.end()) {
            const Cerca::Resposta responde = std::move(outra->second);
            Tudo().Respostas.erase(outra);
            return responde(resposta, informacao);
        }
        const Travessia travessia;
        const HRESULT codigo = m_Dentro->Invoke(numero, iid, lingua, modo, parametros, resposta, informacao, errado);
        if (resposta != nullptr) {
            CercaValor(*resposta);
        }
        if ((modo & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) == 0) {
            for (UINT i = 0; i < parametros->cArgs; ++i) {
                if ((V_VT(&parametros->rgvarg[i]) & VT_BYREF) != 0) {
                    CercaValor(parametros->rgvarg[i]);
                }
            }
        }
        return codigo;
    }

  private:
    Com<IDispatch> m_Dentro;
    Com<IUnknown> m_Identidade;
    std::string m_Classe;
    std::map<DISPID, std::string> m_Nomes;
    ULONG m_Referencias = 0;
};

} // namespace

namespace Cerca {

Com<IDispatch> Em(const Com<IDispatch> &objeto)
{
    if (!objeto || objeto.Como<ICercado>()) {
        return objeto;
    }
    const Com<IInterno> interno = objeto.Como<IInterno>();
    if (!interno || interno->DeQueLado() != Lado::Hospedeiro) {
        return objeto;
    }
    Com<IUnknown> identidade = objeto.Como<IUnknown>(IID_IUnknown);
    const auto vivo = Tudo().Vivos.find(identidade.Ponteiro());
    if (vivo != Tudo().Vivos.end()) {
        return Com<IDispatch>(vivo->second);
    }
    return Com<IDispatch>(new Cercado(objeto, std::move(identidade)));
}

bool Atravessando() noexcept
{
    return Tudo().Profundidade > 0;
}

const Contagem &Chamadas()
{
    return Tudo().Chamadas;
}

void Responde(const std::string &membro, Resposta resposta)
{
    if (resposta) {
        Tudo().Respostas[membro] = std::move(resposta);
    } else {
        Tudo().Respostas.erase(membro);
    }
}

} // namespace Cerca
} // namespace nativo
