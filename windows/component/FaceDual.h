#pragma once

#include "windows/automation/Com.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace nativo {

class ArgumentoDaTabela;

// One of the component's interfaces, as the type library inside the component tells it. Late-bound calls are made
// through the interface's table, so that a client is answered the same on both roads.
class FaceDual {
  public:
    // The same one as long as it is used. Raises what the platform says of a library that cannot be read.
    static std::shared_ptr<const FaceDual> De(REFIID iid);

    // For clients that read about the interface.
    const Com<ITypeInfo> &Tipo() const noexcept { return m_Tipo; }
    // By the name of a member, those of its arguments after it; false when one is unknown.
    bool AchaNumeros(LPOLESTR *nomes, UINT quantos, DISPID *numeros) const;
    // As IDispatch::Invoke; objeto has the interface.
    HRESULT Invoca(IDispatch &objeto, DISPID numero, WORD modo, const DISPPARAMS &parametros, VARIANT *resposta,
                   EXCEPINFO *informacao, UINT *errado) const noexcept;

  private:
    struct Parametro {
        std::wstring Nome;
        VARTYPE Tipo = VT_EMPTY; // of what it holds or refers to
        bool PorReferencia = false;
        bool Opcional = false;
        Variante Padrao; // what it is when it was left out
    };
    struct Membro {
        DISPID Numero = DISPID_UNKNOWN;
        INVOKEKIND Especie = INVOKE_FUNC;
        ULONG_PTR Lugar = 0; // in the table, in octets
        std::wstring Nome;
        std::vector<Parametro> Parametros;
        std::optional<VARTYPE> Resposta;
    };

    explicit FaceDual(REFIID iid);

    static Membro LeMembro(ITypeInfo &tabela, const FUNCDESC &descricao);
    const Membro *Acha(DISPID numero, WORD modo) const;
    // recusado: the argument that is wrong, as the caller counts them.
    static HRESULT Executa(IDispatch &objeto, const Membro &membro, const DISPPARAMS &parametros, VARIANT *resposta,
                           UINT &recusado);
    static HRESULT Chama(IDispatch &objeto, const Membro &membro,
                         const std::vector<std::unique_ptr<ArgumentoDaTabela>> &argumentos, void *resposta);

    Com<ITypeInfo> m_Tipo;
    std::vector<Membro> m_Membros;
};

} // namespace nativo
