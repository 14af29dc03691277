#include "windows/component/FaceDual.h"

#include "windows/automation/Embrulho.h"
#include "windows/component/ArgumentoDaTabela.h"
#include "windows/component/ArquivoDoModulo.h"

#include <oleauto.h>

#include <algorithm>
#include <utility>

namespace nativo {
namespace {

// What a description of the library is freed with.
template <class T> class Descricao {
  public:
    using Libera = void (STDMETHODCALLTYPE ITypeInfo::*)(T *);

    Descricao(ITypeInfo &tipo, Libera libera) : m_Tipo(tipo), m_Libera(libera) {}
    Descricao(const Descricao &) = delete;
    Descricao &operator=(const Descricao &) = delete;
    ~Descricao()
    {
        if (m_Alvo != nullptr) {
            (m_Tipo.*m_Libera)(m_Alvo);
        }
    }
    T **Recebe() { return &m_Alvo; }
    const T &operator*() const { return *m_Alvo; }
    const T *operator->() const { return m_Alvo; }

  private:
    ITypeInfo &m_Tipo;
    Libera m_Libera;
    T *m_Alvo = nullptr;
};

bool EhReferencia(const TYPEDESC &tipo)
{
    return tipo.vt == VT_PTR && tipo.lptdesc->vt != VT_USERDEFINED;
}

// What a type is to automation; a reference to an interface of ours is one to an object.
VARTYPE TipoSimples(const TYPEDESC &tipo)
{
    if (tipo.vt == VT_PTR) {
        return VT_DISPATCH;
    }
    return tipo.vt == VT_SAFEARRAY ? ArgumentoDaTabela::Objetos : tipo.vt;
}

Variante SemValor(VARTYPE tipo)
{
    if (tipo == VT_VARIANT) {
        return ParaVariante(Ausente{});
    }
    Variante variante;
    V_R8(&variante.Bruta()) = 0;
    V_VT(&variante.Bruta()) = tipo;
    return variante;
}

bool MesmoNome(const std::wstring &nome, const wchar_t *outro)
{
    return CompareStringOrdinal(nome.c_str(), -1, outro, -1, TRUE) == CSTR_EQUAL;
}

} // namespace

std::shared_ptr<const FaceDual> FaceDual::De(REFIID iid)
{
    static std::vector<std::pair<IID, std::weak_ptr<const FaceDual>>> usadas;
    auto achada = std::find_if(usadas.begin(), usadas.end(), [&](const auto &usada) { return usada.first == iid; });
    if (achada == usadas.end()) {
        achada = usadas.insert(usadas.end(), {iid, {}});
    }
    std::shared_ptr<const FaceDual> face = achada->second.lock();
    if (!face) {
        face.reset(new FaceDual(iid));
        achada->second = face;
    }
    return face;
}

FaceDual::FaceDual(REFIID iid)
{
    Com<ITypeLib> biblioteca;
    Exige(LoadTypeLibEx(ArquivoDoModulo().c_str(), REGKIND_NONE, biblioteca.Recebe()));
    Exige(biblioteca->GetTypeInfoOfGuid(iid, m_Tipo.Recebe()));
    // The library tells a dual interface twice: as clients of names see it, and as it is in the table.
    HREFTYPE referencia = 0;
    Com<ITypeInfo> tabela;
    Exige(m_Tipo->GetRefTypeOfImplType(static_cast<UINT>(-1), &referencia));
    Exige(m_Tipo->GetRefTypeInfo(referencia, tabela.Recebe()));
    Descricao<TYPEATTR> atributos(*tabela.Ponteiro(), &ITypeInfo::ReleaseTypeAttr);
    Exige(tabela->GetTypeAttr(atributos.Recebe()));
    for (UINT i = 0; i < atributos->cFuncs; ++i) {
        Descricao<FUNCDESC> descricao(*tabela.Ponteiro(), &ITypeInfo::ReleaseFuncDesc);
        Exige(tabela->GetFuncDesc(i, descricao.Recebe()));
        m_Membros.push_back(LeMembro(*tabela.Ponteiro(), *descricao));
    }
}

FaceDual::Membro FaceDual::LeMembro(ITypeInfo &tabela, const FUNCDESC &descricao)
{
    Membro membro;
    membro.Numero = descricao.memid;
    membro.Especie = descricao.invkind;
    membro.Lugar = static_cast<ULONG_PTR>(descricao.oVft);
    std::vector<BSTR> nomes(static_cast<std::size_t>(descricao.cParams) + 1);
    UINT quantos = 0;
    Exige(tabela.GetNames(descricao.memid, nomes.data(), static_cast<UINT>(nomes.size()), &quantos));
    std::vector<std::wstring> textos;
    for (BSTR nome : nomes) {
        textos.emplace_back(nome == nullptr ? L"" : nome);
        SysFreeString(nome);
    }
    membro.Nome = textos[0];
    for (SHORT i = 0; i < descricao.cParams; ++i) {
        const ELEMDESC &elemento = descricao.lprgelemdescParam[i];
        const USHORT sinais = elemento.paramdesc.wParamFlags;
        const bool porReferencia = EhReferencia(elemento.tdesc);
        const VARTYPE tipo = TipoSimples(porReferencia ? *elemento.tdesc.lptdesc : elemento.tdesc);
        if ((sinais & PARAMFLAG_FRETVAL) != 0) {
            membro.Resposta = tipo;
            continue;
        }
        Parametro &parametro = membro.Parametros.emplace_back();
        parametro.Nome = textos[static_cast<std::size_t>(i) + 1];
        parametro.Tipo = tipo;
        parametro.PorReferencia = porReferencia;
        parametro.Opcional = (sinais & PARAMFLAG_FOPT) != 0;
        if ((sinais & PARAMFLAG_FHASDEFAULT) != 0) {
            Exige(VariantCopy(&parametro.Padrao.Bruta(), &elemento.paramdesc.pparamdescex->varDefaultValue));
        } else {
            parametro.Padrao = SemValor(tipo);
        }
    }
    return membro;
}

bool FaceDual::AchaNumeros(LPOLESTR *nomes, UINT quantos, DISPID *numeros) const
{
    const auto membro = std::find_if(m_Membros.begin(), m_Membros.end(),
                                     [&](const Membro &este) { return MesmoNome(este.Nome, nomes[0]); });
    if (membro == m_Membros.end()) {
        return false;
    }
    numeros[0] = membro->Numero;
    // The value that a property is given has no name.
    const std::vector<Parametro> semNomes;
    const auto &parametros = membro->Especie == INVOKE_FUNC ? membro->Parametros : semNomes;
    for (UINT i = 1; i < quantos; ++i) {
        const auto parametro = std::find_if(parametros.begin(), parametros.end(),
                                            [&](const Parametro &este) { return MesmoNome(este.Nome, nomes[i]); });
        if (parametro == parametros.end()) {
            return false;
        }
        numeros[i] = static_cast<DISPID>(parametro - parametros.begin());
    }
    return true;
}

const FaceDual::Membro *FaceDual::Acha(DISPID numero, WORD modo) const
{
    // What is read may be asked for as either. An object is put with or without saying that it is one; a plain value
    // is never put by reference.
    const WORD leitura = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    WORD especies = 0;
    if ((modo & DISPATCH_PROPERTYPUT) != 0) {
        especies = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
    } else if ((modo & DISPATCH_PROPERTYPUTREF) != 0) {
        especies = DISPATCH_PROPERTYPUTREF;
    } else if ((modo & leitura) != 0) {
        especies = leitura;
    }
    const auto achado = std::find_if(m_Membros.begin(), m_Membros.end(), [&](const Membro &membro) {
        return membro.Numero == numero && (membro.Especie & especies) != 0;
    });
    return achado == m_Membros.end() ? nullptr : &*achado;
}

HRESULT FaceDual::Invoca(IDispatch &objeto, DISPID numero, WORD modo, const DISPPARAMS &parametros, VARIANT *resposta,
                         EXCEPINFO *informacao, UINT *errado) const noexcept
{
    if (resposta != nullptr) {
        VariantInit(resposta);
    }
    if ((parametros.cArgs > 0 && parametros.rgvarg == nullptr) ||
        (parametros.cNamedArgs > 0 && parametros.rgdispidNamedArgs == nullptr) ||
        parametros.cNamedArgs > parametros.cArgs) {
        return E_INVALIDARG;
    }
    const Membro *membro = Acha(numero, modo);
    if (membro == nullptr) {
        return DISP_E_MEMBERNOTFOUND;
    }
    try {
        UINT recusado = 0;
        const HRESULT codigo = Executa(objeto, *membro, parametros, resposta, recusado);
        if (errado != nullptr && FAILED(codigo)) {
            *errado = recusado;
        }
        return codigo;
    } catch (...) {
        const Falha falha = FalhaCorrente();
        if (informacao == nullptr) {
            return HResultDe(falha.Numero);
        }
        Preenche(falha, *informacao);
        return DISP_E_EXCEPTION;
    }
}

HRESULT FaceDual::Executa(IDispatch &objeto, const Membro &membro, const DISPPARAMS &parametros, VARIANT *resposta,
                          UINT &recusado)
{
    const std::size_t quantos = membro.Parametros.size();
    const bool escreve = (membro.Especie & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0;
    if (parametros.cArgs > quantos || (escreve && parametros.cArgs != quantos)) {
        return DISP_E_BADPARAMCOUNT;
    }
    Chamada chamada(parametros, resposta, Lado::Componente);
    if (!escreve) {
        const DISPID *nomeados = parametros.rgdispidNamedArgs;
        for (UINT i = 0; i < parametros.cNamedArgs; ++i) {
            if (nomeados[i] < static_cast<DISPID>(parametros.cArgs - parametros.cNamedArgs) ||
                nomeados[i] >= static_cast<DISPID>(quantos) ||
                std::find(nomeados, nomeados + i, nomeados[i]) != nomeados + i) {
                recusado = i;
                return DISP_E_PARAMNOTFOUND;
            }
        }
        chamada.Nomeados(quantos);
    }

    std::vector<std::unique_ptr<ArgumentoDaTabela>> argumentos;
    for (std::size_t i = 0; i < quantos; ++i) {
        const Parametro &parametro = membro.Parametros[i];
        const VARIANT &dado = escreve ? chamada.Escrito() : chamada.Argumento(i);
        const auto lugar = std::find_if(parametros.rgvarg, parametros.rgvarg + parametros.cArgs,
                                        [&](const VARIANT &este) { return &este == &dado; });
        recusado = static_cast<UINT>(lugar - parametros.rgvarg);
        const bool dada = recusado < parametros.cArgs;
        try {
            const bool ausente = detalhe::EhAusente(dado);
            if (ausente && !parametro.Opcional) {
                recusado = dada ? recusado : 0;
                return dada || parametros.cNamedArgs > 0 ? DISP_E_PARAMNOTOPTIONAL : DISP_E_BADPARAMCOUNT;
            }
            argumentos.push_back(ArgumentoDaTabela::De(ausente ? parametro.Padrao.Bruta() : dado, parametro.Tipo,
                                                       parametro.PorReferencia));
        } catch (const Falha &falha) {
            if (!EhDoArgumento(falha)) {
                throw;
            }
            return CodigoDoArgumento(falha);
        }
    }

    Variante lida;
    V_R8(&lida.Bruta()) = 0;
    const HRESULT codigo = Chama(objeto, membro, argumentos, &V_R8(&lida.Bruta()));
    const auto devolve = [&] {
        for (std::size_t i = 0; i < argumentos.size(); ++i) {
            argumentos[i]->Devolve(chamada, i);
        }
    };
    if (FAILED(codigo)) {
        const Falha falha = FalhaDaTabela(codigo);
        IgnoraErro(devolve); // what the caller's variables hold has changed all the same
        throw falha;
    }
    if (membro.Resposta) {
        V_VT(&lida.Bruta()) = *membro.Resposta;
    }
    devolve();
    if (resposta != nullptr) {
        lida.SoltaEm(*resposta);
    }
    return S_OK;
}

HRESULT FaceDual::Chama(IDispatch &objeto, const Membro &membro,
                        const std::vector<std::unique_ptr<ArgumentoDaTabela>> &argumentos, void *resposta)
{
    std::vector<VARTYPE> tipos;
    std::vector<VARIANTARG *> passados;
    for (const auto &argumento : argumentos) {
        tipos.push_back(argumento->Tipo());
        passados.push_back(&argumento->Passado());
    }
    VARIANT endereco{};
    if (membro.Resposta) {
        V_VT(&endereco) = ArgumentoDaTabela::Endereco;
        V_BYREF(&endereco) = resposta;
        tipos.push_back(ArgumentoDaTabela::Endereco);
        passados.push_back(&endereco);
    }
    VARIANT codigo{};
    Exige(DispCallFunc(&objeto, membro.Lugar, CC_STDCALL, VT_I4, static_cast<UINT>(tipos.size()), tipos.data(),
                       passados.data(), &codigo));
    return static_cast<HRESULT>(V_I4(&codigo));
}

} // namespace nativo
