#pragma once

#include "windows/automation/Embrulho.h"
#include "windows/automation/Texto16.h"
#include "windows/component/FaceDual.h"

#include <ZTAVOREQUIP.h>
#include <ocidl.h>

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace nativo {

// Base of the public classes: an object of the module as clients of the component have it, by its interface's table and
// by name.
template <class Face, class Classe>
class Publico : public Face, public ISupportErrorInfo, public IProvideClassInfo, public IInterno {
  public:
    explicit Publico(Ref<Classe> alvo) : m_Alvo(std::move(alvo)), m_Face(FaceDual::De(__uuidof(Face)))
    {
        (*m_Vivos)[m_Alvo.Ponteiro()] = this;
    }
    Publico(const Publico &) = delete;
    Publico &operator=(const Publico &) = delete;

    // How a client has an object of the module, the same one as long as it lives; empty for Nothing.
    template <class Derivada> static Com<Face> De(const Ref<Classe> &alvo)
    {
        if (alvo.Nada()) {
            return {};
        }
        const auto vivo = Vivos()->find(alvo.Ponteiro());
        return vivo == Vivos()->end() ? Com<Face>::Adota(new Derivada(alvo)) : Com<Face>(vivo->second);
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **saida) override
    {
        if (saida == nullptr) {
            return E_POINTER;
        }
        *saida = nullptr;
        if (iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(Face)) {
            *saida = static_cast<Face *>(this);
        } else if (iid == IID_ISupportErrorInfo) {
            *saida = static_cast<ISupportErrorInfo *>(this);
        } else if (iid == IID_IProvideClassInfo) {
            *saida = static_cast<IProvideClassInfo *>(this);
        } else if (iid == __uuidof(IInterno)) {
            *saida = static_cast<IInterno *>(this);
        } else {
            return E_NOINTERFACE;
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

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT *quantos) override
    {
        if (quantos == nullptr) {
            return E_POINTER;
        }
        *quantos = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT qual, LCID, ITypeInfo **saida) override
    {
        if (saida == nullptr) {
            return E_POINTER;
        }
        *saida = nullptr;
        if (qual != 0) {
            return DISP_E_BADINDEX;
        }
        *saida = Com<ITypeInfo>(m_Face->Tipo()).Solta();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR *nomes, UINT quantos, LCID, DISPID *numeros) override
    {
        if (iid != IID_NULL) {
            return DISP_E_UNKNOWNINTERFACE;
        }
        if (nomes == nullptr || numeros == nullptr || quantos == 0) {
            return E_INVALIDARG;
        }
        if (m_Face->AchaNumeros(nomes, quantos, numeros)) {
            return S_OK;
        }
        std::fill(numeros, numeros + quantos, DISPID_UNKNOWN);
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID numero, REFIID iid, LCID, WORD modo, DISPPARAMS *parametros,
                                     VARIANT *resposta, EXCEPINFO *informacao, UINT *errado) override
    {
        if (iid != IID_NULL) {
            return DISP_E_UNKNOWNINTERFACE;
        }
        if (parametros == nullptr) {
            return E_INVALIDARG;
        }
        const Com<Face> eu(this);
        return m_Face->Invoca(*this, numero, modo, *parametros, resposta, informacao, errado);
    }

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override
    {
        return iid == __uuidof(Face) ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo **saida) override
    {
        if (saida == nullptr) {
            return E_POINTER;
        }
        *saida = nullptr;
        UINT qual = 0;
        Com<ITypeLib> biblioteca;
        const HRESULT codigo = m_Face->Tipo()->GetContainingTypeLib(biblioteca.Recebe(), &qual);
        return FAILED(codigo) ? codigo : biblioteca->GetTypeInfoOfGuid(__uuidof(Classe), saida);
    }

    ::Objeto *STDMETHODCALLTYPE Alvo() override { return m_Alvo.Ponteiro(); }
    Lado STDMETHODCALLTYPE DeQueLado() override { return Lado::Componente; }

  protected:
    virtual ~Publico() { Solta(); }

    // Lets go of the module's object.
    void Solta()
    {
        m_Vivos->erase(m_Alvo.Ponteiro());
        m_Alvo = nullptr;
    }
    static bool HaVivos() { return !Vivos()->empty(); }

    // Runs what a client asks for; it may let go of its last reference meanwhile.
    template <class Acao> HRESULT Executa(Acao &&acao) noexcept
    {
        const Com<Face> eu(this);
        return NaBorda(__uuidof(Face), [&] { acao(*m_Alvo); });
    }
    // The same with an answer.
    template <class T, class Acao> HRESULT Responde(T *saida, Acao &&acao) noexcept
    {
        return Executa([&](Classe &alvo) {
            if (saida == nullptr) {
                throw Falha(NumeroDe(E_POINTER));
            }
            *saida = T{};
            Entrega(saida, acao(alvo));
        });
    }

  private:
    static void Entrega(VARIANT_BOOL *saida, bool valor) { *saida = valor ? VARIANT_TRUE : VARIANT_FALSE; }
    static void Entrega(std::int16_t *saida, std::int16_t valor) { *saida = valor; }
    static void Entrega(LONG *saida, std::int32_t valor) { *saida = valor; }
    static void Entrega(DATE *saida, Data valor) { *saida = valor.Valor; }
    static void Entrega(BSTR *saida, const std::string &valor) { *saida = NovoBstr(valor); }
    template <class T> static void Entrega(T **saida, Com<T> valor) { *saida = valor.Solta(); }

    using Mapa = std::map<const Classe *, Publico *>;

    static const std::shared_ptr<Mapa> &Vivos()
    {
        static const auto vivos = std::make_shared<Mapa>();
        return vivos;
    }

    std::atomic<ULONG> m_Referencias{1};
    Ref<Classe> m_Alvo;
    std::shared_ptr<const FaceDual> m_Face;
    std::shared_ptr<Mapa> m_Vivos = Vivos(); // may outlive everything else of this room
    Vivo m_Vivo;
};

// What clients give through a table.

inline std::string TextoDe(BSTR texto)
{
    return texto == nullptr ? std::string() : ParaUtf8({texto, SysStringLen(texto)});
}

// An object by reference is only read.
template <class T> Ref<T> ObjetoDe(IDispatch *const *objeto)
{
    if (objeto == nullptr) {
        throw Falha(NumeroDe(E_POINTER));
    }
    return ObjetoComo<T>(Com<IDispatch>(*objeto), Lado::Componente);
}
template <class T> Ref<T> ObjetoDe(IDispatch *objeto)
{
    return ObjetoComo<T>(Com<IDispatch>(objeto), Lado::Componente);
}

} // namespace nativo
