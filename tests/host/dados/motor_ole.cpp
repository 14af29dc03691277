// Answers calls with the script engine and the automation library of the system that it runs on (see README.md).
// One call per line on standard input, fields parted by tabs, UTF-8, with \t \n \r \\ \uXXXX escaped:
//   vbs   <expression>                              value of a script expression
//   muda  <from: R8 or DATE> <number> <to> <text>   VariantChangeTypeEx; to: UI1 I2 I4 BOOL BSTR DATE
//   data  <text>                                    VarDateFromStr
//   fmt   <from: R8 or DATE> <number> <picture>     VarFormat
// One answer per line: a kind and a value. Dates are day counts; a failure is its HRESULT.

#define INITGUID
#include <windows.h>

#include <activscp.h>
#include <oleauto.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr LCID Brasil = 0x0416;

class Lugar : public IActiveScriptSite {
  public:
    HRESULT __stdcall QueryInterface(REFIID id, void **saida) override
    {
        const bool serve = id == IID_IUnknown || id == IID_IActiveScriptSite;
        *saida = serve ? this : nullptr;
        return serve ? S_OK : E_NOINTERFACE;
    }
    ULONG __stdcall AddRef() override { return 2; }
    ULONG __stdcall Release() override { return 1; }
    HRESULT __stdcall GetLCID(LCID *lcid) override
    {
        *lcid = Brasil;
        return S_OK;
    }
    HRESULT __stdcall GetItemInfo(LPCOLESTR, DWORD, IUnknown **, ITypeInfo **) override
    {
        return TYPE_E_ELEMENTNOTFOUND;
    }
    HRESULT __stdcall GetDocVersionString(BSTR *) override { return E_NOTIMPL; }
    HRESULT __stdcall OnScriptTerminate(const VARIANT *, const EXCEPINFO *) override { return S_OK; }
    HRESULT __stdcall OnStateChange(SCRIPTSTATE) override { return S_OK; }
    HRESULT __stdcall OnScriptError(IActiveScriptError *erro) override
    {
        EXCEPINFO detalhe{};
        erro->GetExceptionInfo(&detalhe);
        Erro = detalhe.scode;
        return S_OK;
    }
    HRESULT __stdcall OnEnterScript() override { return S_OK; }
    HRESULT __stdcall OnLeaveScript() override { return S_OK; }

    HRESULT Erro = S_OK;
};

std::wstring Largo(const std::string &texto)
{
    const int n = MultiByteToWideChar(CP_UTF8, 0, texto.data(), static_cast<int>(texto.size()), nullptr, 0);
    std::wstring largo(static_cast<std::size_t>(n), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, texto.data(), static_cast<int>(texto.size()), largo.data(), n);
    return largo;
}

std::string Escapado(const wchar_t *texto, UINT tamanho)
{
    std::string saida;
    for (UINT i = 0; i < tamanho; ++i) {
        const wchar_t c = texto[i];
        if (c == L'\t' || c == L'\n' || c == L'\r' || c == L'\\') {
            saida += '\\';
            saida += c == L'\t' ? 't' : c == L'\n' ? 'n' : c == L'\r' ? 'r' : '\\';
        } else {
            char bytes[8];
            const int n = WideCharToMultiByte(CP_UTF8, 0, &c, 1, bytes, sizeof bytes, nullptr, nullptr);
            saida.append(bytes, static_cast<std::size_t>(n));
        }
    }
    return saida;
}

std::wstring SemEscapes(const std::string &campo)
{
    const std::wstring largo = Largo(campo);
    std::wstring saida;
    for (std::size_t i = 0; i < largo.size(); ++i) {
        if (largo[i] != L'\\') {
            saida += largo[i];
            continue;
        }
        const wchar_t c = largo[++i];
        if (c == L'u') {
            saida += static_cast<wchar_t>(std::wcstol(largo.substr(i + 1, 4).c_str(), nullptr, 16));
            i += 4;
        } else {
            saida += c == L't' ? L'\t' : c == L'n' ? L'\n' : c == L'r' ? L'\r' : c;
        }
    }
    return saida;
}

VARIANT Numero(const std::string &tipo, const std::string &valor)
{
    VARIANT v;
    VariantInit(&v);
    v.vt = tipo == "DATE" ? VT_DATE : VT_R8;
    v.dblVal = std::strtod(valor.c_str(), nullptr);
    return v;
}

VARTYPE Tipo(const std::string &nome)
{
    if (nome == "UI1")
        return VT_UI1;
    if (nome == "I2")
        return VT_I2;
    if (nome == "I4")
        return VT_I4;
    if (nome == "BOOL")
        return VT_BOOL;
    return nome == "DATE" ? VT_DATE : VT_BSTR;
}

void Responde(HRESULT resultado, const VARIANT &v)
{
    if (FAILED(resultado)) {
        std::printf("falha\t%08lx\n", static_cast<unsigned long>(resultado));
        return;
    }
    switch (v.vt) {
    case VT_BSTR:
        std::printf("texto\t%s\n", Escapado(v.bstrVal, SysStringLen(v.bstrVal)).c_str());
        break;
    case VT_R8:
        std::printf("numero\t%.17g\n", v.dblVal);
        break;
    case VT_DATE:
        std::printf("data\t%.17g\n", v.date);
        break;
    case VT_BOOL:
        std::printf("logico\t%d\n", v.boolVal != 0);
        break;
    case VT_UI1:
        std::printf("numero\t%d\n", v.bVal);
        break;
    case VT_I2:
        std::printf("numero\t%d\n", v.iVal);
        break;
    case VT_I4:
        std::printf("numero\t%ld\n", v.lVal);
        break;
    default:
        std::printf("tipo\t%d\n", v.vt);
    }
}

} // namespace

int main()
{
    CoInitialize(nullptr);
    CLSID classe;
    CLSIDFromProgID(L"VBScript", &classe);
    IActiveScript *motor = nullptr;
    if (FAILED(CoCreateInstance(classe, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript,
                                reinterpret_cast<void **>(&motor)))) {
        std::fprintf(stderr, "no script engine\n");
        return 1;
    }
    Lugar lugar;
    motor->SetScriptSite(&lugar);
    IActiveScriptParse *leitor = nullptr;
    motor->QueryInterface(IID_IActiveScriptParse, reinterpret_cast<void **>(&leitor));
    leitor->InitNew();
    motor->SetScriptState(SCRIPTSTATE_STARTED);

    std::string linha;
    while (std::getline(std::cin, linha)) {
        while (!linha.empty() && linha.back() == '\r')
            linha.pop_back();
        std::vector<std::string> campo(1);
        for (const char c : linha) {
            if (c == '\t')
                campo.emplace_back();
            else
                campo.back() += c;
        }
        campo.resize(5);
        VARIANT v;
        VariantInit(&v);
        HRESULT resultado = E_FAIL;
        if (campo[0] == "vbs") {
            EXCEPINFO detalhe{};
            lugar.Erro = S_OK;
            resultado = leitor->ParseScriptText(SemEscapes(campo[1]).c_str(), nullptr, nullptr, nullptr, 0, 0,
                                                SCRIPTTEXT_ISEXPRESSION, &v, &detalhe);
            if (FAILED(resultado) && FAILED(lugar.Erro))
                resultado = lugar.Erro;
        } else if (campo[0] == "muda") {
            VARIANT de = Numero(campo[1], campo[2]);
            resultado = VariantChangeTypeEx(&v, &de, Brasil, VARIANT_LOCALBOOL, Tipo(campo[3]));
        } else if (campo[0] == "data") {
            v.vt = VT_DATE;
            resultado = VarDateFromStr(SemEscapes(campo[1]).data(), Brasil, 0, &v.date);
        } else if (campo[0] == "fmt") {
            VARIANT de = Numero(campo[1], campo[2]);
            BSTR texto = nullptr;
            resultado = VarFormat(&de, SemEscapes(campo[3]).data(), 0, 0, 0, &texto);
            v.vt = VT_BSTR;
            v.bstrVal = texto;
        }
        Responde(resultado, v);
        VariantClear(&v);
    }
    return 0;
}
