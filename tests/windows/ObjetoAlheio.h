#pragma once

#include "windows/automation/Com.h"
#include "windows/automation/Falhas.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace nativo {

using Diario = std::vector<std::string>;

// An object of a host that knows nothing of us: its members are those that a test has told, and each request is written
// down as it came: name, M for a method, G for reading, P for writing, R for writing by reference, and the arguments as
// their types, with "&" before what is by reference and the value behind a colon.
class ObjetoAlheio final : public IDispatch {
  public:
    // The arguments are in their order, and may be written where they are by reference.
    using Resposta = std::function<Variante(std::vector<VARIANT *> argumentos)>;

    explicit ObjetoAlheio(Diario &diario) : m_Diario(diario) {}
    ObjetoAlheio(const ObjetoAlheio &) = delete;
    ObjetoAlheio &operator=(const ObjetoAlheio &) = delete;

    static Com<ObjetoAlheio> Novo(Diario &diario) { return Com<ObjetoAlheio>::Adota(new ObjetoAlheio(diario)); }

    // A member, by its name; an empty name is the default value. modos: which requests it takes.
    void Membro(const std::string &nome, Resposta resposta, WORD modos = TodosOsModos);
    void Membro(const std::string &nome, Variante resposta = {}, WORD modos = TodosOsModos);
    // A request of the member fails with this code.
    void Falha(const std::string &nome, HRESULT codigo);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **saida) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_Referencias; }
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT *quantos) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo **) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR *nomes, UINT quantos, LCID, DISPID *numeros) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID numero, REFIID, LCID, WORD modo, DISPPARAMS *parametros, VARIANT *resposta,
                                     EXCEPINFO *, UINT *) override;

    static constexpr WORD TodosOsModos =
        DISPATCH_METHOD | DISPATCH_PROPERTYGET | DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

  private:
    struct MembroDele {
        std::string Nome;
        Resposta Responde;
        WORD Modos;
    };

    ~ObjetoAlheio() = default;

    Diario &m_Diario;
    std::vector<MembroDele> m_Membros; // by their number less one
    ULONG m_Referencias = 1;
};

// A value as a request's line tells it.
std::string TextoDe(const VARIANT &valor);

inline Com<IDispatch> ComoDispatch(const Com<ObjetoAlheio> &objeto)
{
    return Com<IDispatch>(objeto.Ponteiro());
}

} // namespace nativo
