#include "windows/automation/Falhas.h"

#include "windows/automation/Texto16.h"

#include <oleauto.h>

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace nativo {
namespace {

// Codes of the platform, with the numbers that its languages show for them.
constexpr std::array<std::pair<HRESULT, std::int32_t>, 31> Codigos{{
    {E_INVALIDARG, 5},
    {DISP_E_OVERFLOW, 6},
    {E_OUTOFMEMORY, 7},
    {DISP_E_BADINDEX, 9},
    {DISP_E_ARRAYISLOCKED, 10},
    {DISP_E_DIVBYZERO, 11},
    {DISP_E_TYPEMISMATCH, 13},
    {STG_E_FILENOTFOUND, 53},
    {STG_E_FILEALREADYEXISTS, 58},
    {STG_E_MEDIUMFULL, 61},
    {STG_E_TOOMANYOPENFILES, 67},
    {E_ACCESSDENIED, 70},
    {STG_E_ACCESSDENIED, 70},
    {STG_E_SHAREVIOLATION, 70},
    {STG_E_WRITEFAULT, 75},
    {STG_E_PATHNOTFOUND, 76},
    {REGDB_E_CLASSNOTREG, 429},
    {CO_E_CLASSSTRING, 429},
    {CO_E_DLLNOTFOUND, 429},
    {E_NOINTERFACE, 430},
    {DISP_E_MEMBERNOTFOUND, 438},
    {DISP_E_UNKNOWNNAME, 438},
    {E_NOTIMPL, 445},
    {DISP_E_NONAMEDARGS, 446},
    {DISP_E_PARAMNOTFOUND, 448},
    {DISP_E_PARAMNOTOPTIONAL, NumeroAutomacao::ArgumentoNaoOpcional},
    {DISP_E_BADPARAMCOUNT, NumeroAutomacao::NumeroDeArgumentos},
    {DISP_E_BADVARTYPE, 458},
    {RPC_E_DISCONNECTED, 462},
    {RPC_E_SERVERFAULT, 462},
    {static_cast<HRESULT>(0x800706BA), 462}, // the other process has gone
}};

constexpr std::int32_t MaiorNumero = 0xFFFF;
constexpr std::uint32_t Familia = 0x800A0000U; // in which the platform's languages number their faults

std::string TextoDe(BSTR texto)
{
    return texto == nullptr ? std::string() : ParaUtf8({texto, SysStringLen(texto)});
}

BSTR BstrOuNada(const std::string &texto) noexcept
try {
    return NovoBstr(texto);
} catch (...) {
    return nullptr;
}

} // namespace

BSTR NovoBstr(std::string_view texto)
{
    const std::wstring largo = ParaUtf16(texto);
    BSTR novo = SysAllocStringLen(largo.data(), static_cast<UINT>(largo.size()));
    if (novo == nullptr) {
        throw std::bad_alloc();
    }
    return novo;
}

std::int32_t NumeroDe(HRESULT codigo) noexcept
{
    const auto *achado =
        std::find_if(Codigos.begin(), Codigos.end(), [&](const auto &par) { return par.first == codigo; });
    if (achado != Codigos.end()) {
        return achado->second;
    }
    if ((static_cast<std::uint32_t>(codigo) & 0xFFFF0000U) == Familia) {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(codigo) & 0xFFFFU);
    }
    return static_cast<std::int32_t>(codigo);
}

HRESULT HResultDe(std::int32_t numero) noexcept
{
    if (numero < 0) {
        return static_cast<HRESULT>(numero);
    }
    if (numero == 0 || numero > MaiorNumero) {
        numero = NumeroFalha::ErroInterno;
    }
    return static_cast<HRESULT>(Familia | static_cast<std::uint32_t>(numero));
}

Falha FalhaDe(HRESULT codigo, EXCEPINFO &informacao)
{
    if (codigo != DISP_E_EXCEPTION) {
        for (BSTR texto : {informacao.bstrSource, informacao.bstrDescription, informacao.bstrHelpFile}) {
            SysFreeString(texto);
        }
        informacao = {};
        return Falha(NumeroDe(codigo));
    }
    if (informacao.pfnDeferredFillIn != nullptr) {
        informacao.pfnDeferredFillIn(&informacao);
    }
    std::int32_t numero = informacao.wCode != 0 ? informacao.wCode : NumeroDe(informacao.scode);
    if (numero == 0) {
        numero = NumeroAutomacao::ErroDeAutomacao;
    }
    const auto toma = [](BSTR texto) {
        std::string tomado = TextoDe(texto);
        SysFreeString(texto);
        return tomado;
    };
    SysFreeString(informacao.bstrHelpFile);
    std::string fonte = toma(informacao.bstrSource);
    std::string descricao = toma(informacao.bstrDescription);
    informacao = {};
    return Falha(numero, std::move(fonte), std::move(descricao));
}

Falha FalhaDaTabela(HRESULT codigo)
{
    Com<IErrorInfo> erro;
    if (GetErrorInfo(0, erro.Recebe()) != S_OK) {
        return Falha(NumeroDe(codigo));
    }
    EXCEPINFO informacao{};
    erro->GetSource(&informacao.bstrSource);
    erro->GetDescription(&informacao.bstrDescription);
    informacao.scode = codigo;
    return FalhaDe(DISP_E_EXCEPTION, informacao);
}

void Exige(HRESULT codigo)
{
    if (FAILED(codigo)) {
        throw Falha(NumeroDe(codigo));
    }
}

void Preenche(const Falha &falha, EXCEPINFO &informacao) noexcept
{
    informacao = {};
    informacao.scode = HResultDe(falha.Numero);
    informacao.bstrSource = BstrOuNada(falha.Fonte);
    informacao.bstrDescription = BstrOuNada(falha.Descricao);
}

HRESULT Publica(const Falha &falha, REFIID interface_) noexcept
{
    Com<ICreateErrorInfo> novo;
    if (SUCCEEDED(CreateErrorInfo(novo.Recebe()))) {
        EXCEPINFO textos{};
        Preenche(falha, textos);
        novo->SetGUID(interface_);
        if (textos.bstrSource != nullptr) {
            novo->SetSource(textos.bstrSource);
        }
        if (textos.bstrDescription != nullptr) {
            novo->SetDescription(textos.bstrDescription);
        }
        SysFreeString(textos.bstrSource);
        SysFreeString(textos.bstrDescription);
        if (const Com<IErrorInfo> erro = novo.Como<IErrorInfo>()) {
            SetErrorInfo(0, erro.Ponteiro());
        }
    }
    return HResultDe(falha.Numero);
}

} // namespace nativo
