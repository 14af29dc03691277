#include "tests/windows/externo/Var.h"

#include <cstring>

namespace nativo {

namespace {

constexpr LCID SemIdioma = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);
constexpr std::int32_t Automacao = static_cast<std::int32_t>(0x800A0000);

} // namespace

std::wstring Largo(std::string_view utf8)
{
    if (utf8.empty()) {
        return {};
    }
    const int quanto = static_cast<int>(utf8.size());
    std::wstring largo(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), quanto, nullptr, 0)),
                       L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), quanto, largo.data(), static_cast<int>(largo.size()));
    return largo;
}

std::string Estreito(std::wstring_view utf16)
{
    if (utf16.empty()) {
        return {};
    }
    const int quanto = static_cast<int>(utf16.size());
    std::string estreito(
        static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, utf16.data(), quanto, nullptr, 0, nullptr, nullptr)),
        '\0');
    WideCharToMultiByte(CP_UTF8, 0, utf16.data(), quanto, estreito.data(), static_cast<int>(estreito.size()), nullptr,
                        nullptr);
    return estreito;
}

std::string FalhaExterna::Texto() const
{
    return std::to_string(Numero) + " [" + Fonte + "] " + Descricao +
           (Argumento < 0 ? "" : " (argumento " + std::to_string(Argumento) + ")");
}

std::int32_t NumeroDaResposta(HRESULT resposta)
{
    const auto numero = static_cast<std::int32_t>(resposta);
    if ((numero & static_cast<std::int32_t>(0xFFFF0000)) == Automacao) {
        return numero & 0xFFFF;
    }
    switch (resposta) { // the automation's own answers, as the script hosts of the platform number them
    case DISP_E_UNKNOWNNAME:
    case DISP_E_MEMBERNOTFOUND:
        return 438;
    case DISP_E_TYPEMISMATCH:
        return 13;
    case DISP_E_OVERFLOW:
        return 6;
    case DISP_E_BADPARAMCOUNT:
        return 450;
    case DISP_E_PARAMNOTOPTIONAL:
        return 449;
    case DISP_E_NONAMEDARGS:
        return 446;
    case DISP_E_PARAMNOTFOUND:
    case DISP_E_UNKNOWNINTERFACE:
        return 448;
    case E_OUTOFMEMORY:
        return 7;
    case E_INVALIDARG:
        return 5;
    case REGDB_E_CLASSNOTREG:
    case CLASS_E_CLASSNOTAVAILABLE:
        return 429;
    default:
        return numero;
    }
}

HRESULT RespostaDoNumero(std::int32_t numero)
{
    return numero >= 0 && numero <= 0xFFFF ? static_cast<HRESULT>(Automacao | numero) : static_cast<HRESULT>(numero);
}

Var::Var(std::string_view texto) : Var()
{
    const std::wstring largo = Largo(texto);
    m_Valor.vt = VT_BSTR;
    m_Valor.bstrVal = SysAllocStringLen(largo.data(), static_cast<UINT>(largo.size()));
}

Var::Var(bool valor) : Var()
{
    m_Valor.vt = VT_BOOL;
    m_Valor.boolVal = valor ? VARIANT_TRUE : VARIANT_FALSE;
}

Var::Var(std::uint8_t valor) : Var()
{
    m_Valor.vt = VT_UI1;
    m_Valor.bVal = valor;
}

Var::Var(std::int16_t valor) : Var()
{
    m_Valor.vt = VT_I2;
    m_Valor.iVal = valor;
}

Var::Var(std::int32_t valor) : Var()
{
    m_Valor.vt = VT_I4;
    m_Valor.lVal = valor;
}

Var::Var(double valor) : Var()
{
    m_Valor.vt = VT_R8;
    m_Valor.dblVal = valor;
}

Var::Var(IDispatch *objeto) : Var()
{
    m_Valor.vt = VT_DISPATCH;
    m_Valor.pdispVal = objeto;
    if (objeto != nullptr) {
        objeto->AddRef();
    }
}

Var Var::Data(double dias)
{
    Var var;
    var.m_Valor.vt = VT_DATE;
    var.m_Valor.date = dias;
    return var;
}

Var Var::Ausente()
{
    Var var;
    var.m_Valor.vt = VT_ERROR;
    var.m_Valor.scode = DISP_E_PARAMNOTFOUND;
    return var;
}

Var Var::Nulo()
{
    Var var;
    var.m_Valor.vt = VT_NULL;
    return var;
}

Var Var::Bytes(std::string_view bytes)
{
    Var var;
    SAFEARRAY *vetor = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    if (!bytes.empty()) {
        std::memcpy(vetor->pvData, bytes.data(), bytes.size());
    }
    var.m_Valor.vt = VT_ARRAY | VT_UI1;
    var.m_Valor.parray = vetor;
    return var;
}

Var Var::Textos(const std::vector<std::string> &textos)
{
    Var var;
    SAFEARRAY *vetor = SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(textos.size()));
    for (LONG qual = 0; qual < static_cast<LONG>(textos.size()); ++qual) {
        const Var texto(textos[static_cast<std::size_t>(qual)]);
        SafeArrayPutElement(vetor, &qual, texto.m_Valor.bstrVal);
    }
    var.m_Valor.vt = VT_ARRAY | VT_BSTR;
    var.m_Valor.parray = vetor;
    return var;
}

Var Var::De(const VARIANT &valor)
{
    Var var;
    const HRESULT resposta = VariantCopyInd(&var.m_Valor, SoLida(valor));
    if (FAILED(resposta)) {
        throw FalhaExterna{NumeroDaResposta(resposta), "HOSPEDEIRO", "valor ilegível"};
    }
    return var;
}

Var Var::Como(VARTYPE tipo) const
{
    Var var;
    const HRESULT resposta = VariantChangeTypeEx(&var.m_Valor, SoLida(m_Valor), SemIdioma, VARIANT_ALPHABOOL, tipo);
    if (FAILED(resposta)) {
        throw FalhaExterna{NumeroDaResposta(resposta), "HOSPEDEIRO",
                           "tipo incompatível: " + std::to_string(m_Valor.vt)};
    }
    return var;
}

std::string Var::Texto() const
{
    const Var texto = Como(VT_BSTR);
    const BSTR conteudo = texto.m_Valor.bstrVal;
    return conteudo == nullptr ? "" : Estreito({conteudo, SysStringLen(conteudo)});
}

std::int32_t Var::Inteiro() const
{
    return Como(VT_I4).m_Valor.lVal;
}

double Var::Numero() const
{
    return Como(VT_R8).m_Valor.dblVal;
}

bool Var::Verdade() const
{
    return Como(VT_BOOL).m_Valor.boolVal != VARIANT_FALSE;
}

Contado<IDispatch> Var::Objeto() const
{
    if (m_Valor.vt == VT_EMPTY || m_Valor.vt == VT_ERROR) {
        return {};
    }
    if (m_Valor.vt != VT_DISPATCH && m_Valor.vt != VT_UNKNOWN) {
        throw FalhaExterna{424, "HOSPEDEIRO", "não é objeto: " + Retrato()};
    }
    return Contado<IUnknown>(m_Valor.punkVal).Como<IDispatch>(IID_IDispatch);
}

std::string Var::ComoBytes() const
{
    if (m_Valor.vt != (VT_ARRAY | VT_UI1) || m_Valor.parray == nullptr) {
        throw FalhaExterna{13, "HOSPEDEIRO", "não são bytes: " + Retrato()};
    }
    LONG inicio = 0;
    LONG fim = -1;
    SafeArrayGetLBound(m_Valor.parray, 1, &inicio);
    SafeArrayGetUBound(m_Valor.parray, 1, &fim);
    return {static_cast<const char *>(m_Valor.parray->pvData), static_cast<std::size_t>(fim - inicio + 1)};
}

std::string Var::Convertido() const
{
    try {
        return Texto();
    } catch (const FalhaExterna &) { // a value that nothing can be made of
        return "tipo " + std::to_string(m_Valor.vt);
    }
}

std::string Var::Retrato() const
{
    if ((m_Valor.vt & VT_ARRAY) != 0) {
        return "vetor";
    }
    switch (m_Valor.vt) {
    case VT_EMPTY:
        return "vazio";
    case VT_NULL:
        return "nulo";
    case VT_ERROR:
        return m_Valor.scode == DISP_E_PARAMNOTFOUND ? "ausente" : "erro";
    case VT_BOOL:
        return m_Valor.boolVal != VARIANT_FALSE ? "True" : "False";
    case VT_BSTR:
        return "\"" + Texto() + "\"";
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return m_Valor.punkVal == nullptr ? "Nothing" : "objeto";
    case VT_DATE:
        return "#" + Convertido() + "#";
    default:
        return Convertido();
    }
}

} // namespace nativo
