#include "tests/windows/externo/ObjetoExterno.h"

#include <cwchar>
#include <map>
#include <memory>

namespace nativo {

namespace {

long vivos = 0;

void Conta(EXCEPINFO *excecao, const FalhaExterna &falha)
{
    if (excecao == nullptr) {
        return;
    }
    *excecao = {};
    excecao->scode = RespostaDoNumero(falha.Numero);
    excecao->bstrSource = SysAllocString(Largo(falha.Fonte).c_str());
    excecao->bstrDescription = SysAllocString(Largo(falha.Descricao).c_str());
}

} // namespace

Contado<ITypeInfo> TipoChamado(const std::string &nome)
{
    static std::map<std::string, Contado<ITypeInfo>> tipos;
    Contado<ITypeInfo> &tipo = tipos[nome];
    if (!tipo) {
        Contado<ICreateTypeLib2> biblioteca;
        Contado<ICreateTypeInfo> novo;
        CreateTypeLib2(sizeof(void *) == 8 ? SYS_WIN64 : SYS_WIN32, L"hospedeiro-externo.tlb", biblioteca.Recebe());
        std::wstring largo = Largo(nome);
        if (biblioteca && SUCCEEDED(biblioteca->CreateTypeInfo(largo.data(), TKIND_DISPATCH, novo.Recebe()))) {
            novo->LayOut();
            tipo = novo.Como<ITypeInfo>(IID_ITypeInfo);
        }
    }
    return tipo;
}

ObjetoExterno::ObjetoExterno(std::string classe, Diario &diario) : m_Classe(std::move(classe)), m_Diario(diario)
{
    ++vivos;
}

ObjetoExterno::~ObjetoExterno()
{
    --vivos;
}

long ObjetoExterno::Vivos()
{
    return vivos;
}

ObjetoExterno &ObjetoExterno::Faz(const std::string &nome, Membro membro)
{
    m_Ofertas.push_back({Largo(nome), std::move(membro)});
    return *this;
}

ObjetoExterno &ObjetoExterno::Aceita(const std::string &nome)
{
    return Faz(nome, [](const ChamadaRecebida &) { return Var(); });
}

ObjetoExterno &ObjetoExterno::Tem(const std::string &nome, const Var &valor)
{
    return Faz(nome, [valor](const ChamadaRecebida &chamada) {
        if (chamada.Escreve()) {
            throw FalhaExterna{383, "HOSPEDEIRO", "somente leitura: " + chamada.Membro()};
        }
        return valor;
    });
}

ObjetoExterno &ObjetoExterno::Guarda(const std::string &nome, const Var &inicial)
{
    const auto guardado = std::make_shared<Var>(inicial);
    return Faz(nome, [guardado](const ChamadaRecebida &chamada) {
        if (chamada.Escreve()) {
            *guardado = chamada.Arg(0);
        }
        return *guardado;
    });
}

ObjetoExterno &ObjetoExterno::Padrao()
{
    m_Padrao = m_Ofertas.size();
    return *this;
}

ObjetoExterno &ObjetoExterno::Calado()
{
    m_Calado = true;
    return *this;
}

HRESULT ObjetoExterno::QueryInterface(REFIID iid, void **objeto)
{
    if (objeto == nullptr) {
        return E_POINTER;
    }
    *objeto = nullptr;
    if (iid == IID_IUnknown || iid == IID_IDispatch) {
        *objeto = static_cast<IDispatch *>(this);
    } else if (iid == IID_IProvideClassInfo) {
        *objeto = static_cast<IProvideClassInfo *>(this);
    } else if (iid == IID_ISupportErrorInfo) {
        *objeto = static_cast<ISupportErrorInfo *>(this);
    } else {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

ULONG ObjetoExterno::AddRef()
{
    return static_cast<ULONG>(++m_Referencias);
}

ULONG ObjetoExterno::Release()
{
    const long restam = --m_Referencias;
    if (restam == 0) {
        delete this;
    }
    return static_cast<ULONG>(restam);
}

HRESULT ObjetoExterno::GetTypeInfoCount(UINT *quantas)
{
    *quantas = 1;
    return S_OK;
}

HRESULT ObjetoExterno::GetTypeInfo(UINT qual, LCID, ITypeInfo **info)
{
    return qual == 0 ? GetClassInfo(info) : DISP_E_BADINDEX;
}

HRESULT ObjetoExterno::GetClassInfo(ITypeInfo **info)
{
    *info = nullptr;
    const Contado<ITypeInfo> tipo = TipoChamado(m_Classe);
    if (!tipo) {
        return TYPE_E_ELEMENTNOTFOUND;
    }
    *info = tipo.Ponteiro();
    (*info)->AddRef();
    return S_OK;
}

HRESULT ObjetoExterno::InterfaceSupportsErrorInfo(REFIID iid)
{
    return iid == IID_IDispatch ? S_OK : S_FALSE;
}

HRESULT ObjetoExterno::GetIDsOfNames(REFIID, LPOLESTR *nomes, UINT quantos, LCID, DISPID *numeros)
{
    HRESULT resposta = S_OK;
    for (UINT qual = 0; qual < quantos; ++qual) {
        numeros[qual] = DISPID_UNKNOWN;
        for (std::size_t posicao = 0; qual == 0 && posicao < m_Ofertas.size(); ++posicao) {
            if (_wcsicmp(m_Ofertas[posicao].Nome.c_str(), nomes[0]) == 0) {
                numeros[0] = static_cast<DISPID>(posicao + 1);
            }
        }
        if (numeros[qual] == DISPID_UNKNOWN) {
            resposta = DISP_E_UNKNOWNNAME; // arguments have no names here
        }
    }
    return resposta;
}

HRESULT ObjetoExterno::Invoke(DISPID numero, REFIID, LCID, WORD como, DISPPARAMS *parametros, VARIANT *resultado,
                              EXCEPINFO *excecao, UINT *)
{
    const std::size_t posicao = numero == DISPID_VALUE ? m_Padrao : static_cast<std::size_t>(numero);
    if (posicao == 0 || posicao > m_Ofertas.size()) {
        return DISP_E_MEMBERNOTFOUND;
    }
    const Contado<IDispatch> eu(this);
    try {
        const Oferta &oferta = m_Ofertas[posicao - 1];
        const bool escreve = (como & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
        const ChamadaRecebida chamada(Estreito(oferta.Nome), escreve, *parametros);
        if (!m_Calado) {
            m_Diario.Anota(m_Classe + "." + chamada.Retrato());
        }
        Var resposta = oferta.Faz(chamada);
        if (resultado != nullptr) {
            VariantInit(resultado);
            std::swap(*resultado, resposta.Bruta());
        }
        return S_OK;
    } catch (const FalhaExterna &falha) {
        Conta(excecao, falha);
        return DISP_E_EXCEPTION;
    } catch (...) {
        Conta(excecao, {51, "HOSPEDEIRO", "falha sem nome no hospedeiro"});
        return DISP_E_EXCEPTION;
    }
}

} // namespace nativo
