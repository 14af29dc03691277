#include "tests/windows/ObjetoAlheio.h"

#include "host/Texto.h"
#include "windows/automation/Texto16.h"

#include <oleauto.h>

#include <algorithm>

namespace nativo {
namespace {

std::string NomeDoTipo(VARTYPE tipo)
{
    static const std::map<VARTYPE, std::string> nomes{
        {VT_EMPTY, "EMPTY"},     {VT_NULL, "NULL"}, {VT_I2, "I2"},       {VT_I4, "I4"},
        {VT_R8, "R8"},           {VT_DATE, "DATE"}, {VT_BSTR, "BSTR"},   {VT_BOOL, "BOOL"},
        {VT_VARIANT, "VARIANT"}, {VT_UI1, "UI1"},   {VT_ERROR, "ERROR"}, {VT_DISPATCH, "DISPATCH"}};
    const auto nome = nomes.find(tipo & VT_TYPEMASK);
    return nome == nomes.end() ? std::to_string(tipo) : nome->second;
}

std::string TextoDoArranjo(SAFEARRAY *arranjo, VARTYPE tipo)
{
    LONG primeiro = 0;
    LONG ultimo = -1;
    if (arranjo == nullptr || SafeArrayGetDim(arranjo) != 1 || FAILED(SafeArrayGetLBound(arranjo, 1, &primeiro)) ||
        FAILED(SafeArrayGetUBound(arranjo, 1, &ultimo))) {
        return NomeDoTipo(tipo) + "[?]";
    }
    std::string texto = NomeDoTipo(tipo) + "[" + std::to_string(primeiro) + ".." + std::to_string(ultimo) + "]";
    if (tipo == VT_VARIANT) {
        VARIANT *elementos = nullptr;
        SafeArrayAccessData(arranjo, reinterpret_cast<void **>(&elementos));
        for (LONG i = primeiro; i <= ultimo; ++i) {
            texto += "{" + TextoDe(elementos[i - primeiro]) + "}";
        }
        SafeArrayUnaccessData(arranjo);
    }
    return texto;
}

} // namespace

std::string TextoDe(const VARIANT &valor)
{
    const bool referencia = (V_VT(&valor) & VT_BYREF) != 0;
    const std::string sinal = referencia ? "&" : "";
    const auto tipo = static_cast<VARTYPE>(V_VT(&valor) & VT_TYPEMASK);
    if ((V_VT(&valor) & VT_ARRAY) != 0) {
        return sinal + TextoDoArranjo(referencia ? *V_ARRAYREF(&valor) : V_ARRAY(&valor), tipo);
    }
    const std::string nome = sinal + NomeDoTipo(tipo);
    switch (tipo) {
    case VT_BSTR: {
        BSTR texto = referencia ? *V_BSTRREF(&valor) : V_BSTR(&valor);
        return nome + ":" + ParaUtf8({texto, SysStringLen(texto)});
    }
    case VT_BOOL:
        return nome + ":" + std::to_string(referencia ? *V_BOOLREF(&valor) : V_BOOL(&valor));
    case VT_I2:
        return nome + ":" + std::to_string(referencia ? *V_I2REF(&valor) : V_I2(&valor));
    case VT_I4:
        return nome + ":" + std::to_string(referencia ? *V_I4REF(&valor) : V_I4(&valor));
    case VT_UI1:
        return nome + ":" + std::to_string(referencia ? *V_UI1REF(&valor) : V_UI1(&valor));
    case VT_R8:
        return nome + ":" + std::to_string(referencia ? *V_R8REF(&valor) : V_R8(&valor));
    case VT_DISPATCH:
        return nome + ((referencia ? *V_DISPATCHREF(&valor) : V_DISPATCH(&valor)) == nullptr ? ":Nothing" : "");
    case VT_ERROR:
        return V_ERROR(&valor) == DISP_E_PARAMNOTFOUND ? "absent" : nome;
    default:
        return nome;
    }
}

void ObjetoAlheio::Membro(const std::string &nome, Resposta resposta, WORD modos)
{
    m_Membros.push_back({nome, std::move(resposta), modos});
}

void ObjetoAlheio::Membro(const std::string &nome, Variante resposta, WORD modos)
{
    Membro(
        nome, [resposta = std::move(resposta)](const std::vector<VARIANT *> &) { return resposta; }, modos);
}

void ObjetoAlheio::Falha(const std::string &nome, HRESULT codigo)
{
    Membro(nome, [codigo](const std::vector<VARIANT *> &) -> Variante { throw codigo; });
}

HRESULT ObjetoAlheio::QueryInterface(REFIID iid, void **saida)
{
    if (iid != IID_IUnknown && iid != IID_IDispatch) {
        *saida = nullptr;
        return E_NOINTERFACE;
    }
    AddRef();
    *saida = static_cast<IDispatch *>(this);
    return S_OK;
}

ULONG ObjetoAlheio::Release()
{
    const ULONG restam = --m_Referencias;
    if (restam == 0) {
        delete this;
    }
    return restam;
}

HRESULT ObjetoAlheio::GetTypeInfoCount(UINT *quantos)
{
    *quantos = 0;
    return S_OK;
}

HRESULT ObjetoAlheio::GetIDsOfNames(REFIID, LPOLESTR *nomes, UINT quantos, LCID, DISPID *numeros)
{
    const std::string nome = ParaUtf8(nomes[0]);
    const auto achado = std::ranges::find_if(
        m_Membros, [&](const MembroDele &membro) { return !nome.empty() && IgualSemCaixa(membro.Nome, nome); });
    if (achado == m_Membros.end() || quantos != 1) {
        return DISP_E_UNKNOWNNAME;
    }
    numeros[0] = static_cast<DISPID>(achado - m_Membros.begin()) + 1;
    return S_OK;
}

HRESULT ObjetoAlheio::Invoke(DISPID numero, REFIID, LCID, WORD modo, DISPPARAMS *parametros, VARIANT *resposta,
                             EXCEPINFO *, UINT *)
{
    const auto padrao = std::ranges::find(m_Membros, std::string(), &MembroDele::Nome);
    const auto membro = numero == DISPID_VALUE ? padrao : m_Membros.begin() + (numero - 1);
    std::string linha = numero == DISPID_VALUE ? "(value)" : membro->Nome;
    linha += " ";
    linha += (modo & DISPATCH_METHOD) != 0 ? "M" : "";
    linha += (modo & DISPATCH_PROPERTYGET) != 0 ? "G" : "";
    linha += (modo & DISPATCH_PROPERTYPUT) != 0 ? "P" : "";
    linha += (modo & DISPATCH_PROPERTYPUTREF) != 0 ? "R" : "";
    std::vector<VARIANT *> argumentos;
    for (UINT i = parametros->cArgs; i > 0; --i) {
        argumentos.push_back(&parametros->rgvarg[i - 1]);
        linha += (argumentos.size() == 1 ? " " : ", ") + TextoDe(*argumentos.back());
    }
    m_Diario.push_back(linha);
    if (membro == m_Membros.end() || (membro->Modos & modo) == 0) {
        return DISP_E_MEMBERNOTFOUND;
    }
    try {
        Variante respondido = membro->Responde(std::move(argumentos));
        if (resposta != nullptr) {
            respondido.SoltaEm(*resposta);
        }
        return S_OK;
    } catch (HRESULT codigo) {
        return codigo;
    }
}

} // namespace nativo
