#pragma once

#include "tests/windows/externo/ChamadaRecebida.h"
#include "tests/windows/externo/Diario.h"

#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>

#include <functional>
#include <string>
#include <vector>

namespace nativo {

// An object of the host: its members are known by name alone, as a program of another language would offer them.
class ObjetoExterno : public IDispatch, public IProvideClassInfo, public ISupportErrorInfo {
  public:
    using Membro = std::function<Var(const ChamadaRecebida &)>;

    static Contado<ObjetoExterno> Novo(const std::string &classe, Diario &diario)
    {
        return Contado<ObjetoExterno>::Adota(new ObjetoExterno(classe, diario));
    }
    ObjetoExterno(const ObjetoExterno &) = delete;
    ObjetoExterno &operator=(const ObjetoExterno &) = delete;

    // A method, or a property that is computed.
    ObjetoExterno &Faz(const std::string &nome, Membro membro);
    // A method that does nothing.
    ObjetoExterno &Aceita(const std::string &nome);
    // A property that always has that value, and one that keeps what is written.
    ObjetoExterno &Tem(const std::string &nome, const Var &valor);
    ObjetoExterno &Guarda(const std::string &nome, const Var &inicial);
    // The member that was told last is the object's default value.
    ObjetoExterno &Padrao();
    // Calls of this object do not go to the diary and do not fail.
    ObjetoExterno &Calado();

    const std::string &Classe() const { return m_Classe; }
    Diario &DiarioDele() const { return m_Diario; }

    // Objects of the host that live.
    static long Vivos();

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **objeto) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT *quantas) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT qual, LCID idioma, ITypeInfo **info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reservado, LPOLESTR *nomes, UINT quantos, LCID idioma,
                                            DISPID *numeros) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID numero, REFIID reservado, LCID idioma, WORD como, DISPPARAMS *parametros,
                                     VARIANT *resultado, EXCEPINFO *excecao, UINT *argumento) override;
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo **info) override;
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override;

  protected:
    ObjetoExterno(std::string classe, Diario &diario);
    virtual ~ObjetoExterno();

  private:
    struct Oferta {
        std::wstring Nome;
        Membro Faz;
    };

    std::string m_Classe;
    Diario &m_Diario;
    std::vector<Oferta> m_Ofertas; // the position and 1 are the member's number
    std::size_t m_Padrao = 0;
    bool m_Calado = false;
    long m_Referencias = 1;
};

// A type with a name, which is all that a caller asks of it.
Contado<ITypeInfo> TipoChamado(const std::string &nome);

} // namespace nativo
