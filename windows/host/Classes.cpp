#include "windows/host/Classes.h"

#include "windows/automation/Texto16.h"

#include <objbase.h>

#include <algorithm>
#include <array>
#include <utility>

namespace nativo::Classes {
namespace {

constexpr const wchar_t *Chave = L"Software\\Classes\\CLSID\\{80D349F1-1D47-42CF-B53F-BA4AA48D1130}\\Classes";

constexpr std::array<std::pair<std::string_view, std::string_view>, 12> Padroes{{
    {AMRegistro, "ZTK4Lib.AMRegistro"},
    {AMEditMenu, "ZTK4Lib.AMEditMenu"},
    {Relatorios, "ZTK4Lib.CRelatorios"},
    {Ajuda, "ZTK4Lib.CAjuda"},
    {CFunGen, "ZTK4LIBC.CFunGen"},
    {Mensagem, "ZTVORLIB.Mensagem"},
    {DadosVor, "ZTVORLIB.DadosVor"},
    {Diretorios, "ZTVORLIB.Diretorios"},
    {ObjGlobalVor, "ZTVORLIB.ObjGlobalVor"},
    {DocumentoPDF, "ZTVORLIB.DocumentoPDF"},
    {Logradouros, ""},
    {Clientes, ""},
}};

// A text among the values; empty when there is none.
std::string Valor(HKEY raiz, const std::wstring &nome)
{
    std::array<wchar_t, 256> texto{};
    DWORD tamanho = sizeof(texto);
    const LSTATUS erro = RegGetValueW(raiz, Chave, nome.c_str(), RRF_RT_REG_SZ, nullptr, texto.data(), &tamanho);
    return erro == ERROR_SUCCESS ? ParaUtf8(texto.data()) : std::string();
}

CLSID NumeroDaClasse(const std::string &identificador)
{
    const std::wstring largo = ParaUtf16(identificador);
    CLSID numero{};
    const HRESULT codigo = identificador.starts_with('{') ? CLSIDFromString(largo.c_str(), &numero)
                                                          : CLSIDFromProgID(largo.c_str(), &numero);
    if (FAILED(codigo)) {
        throw Falha(NumeroFalha::ClasseInexistente);
    }
    return numero;
}

} // namespace

std::string Identificador(std::string_view classe)
{
    const std::wstring nome = ParaUtf16(classe);
    for (const HKEY raiz : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
        if (std::string dito = Valor(raiz, nome); !dito.empty()) {
            return dito;
        }
    }
    const auto padrao = std::ranges::find(Padroes, classe, &std::pair<std::string_view, std::string_view>::first);
    return padrao == Padroes.end() ? std::string() : std::string(padrao->second);
}

Com<IDispatch> CriaObjeto(std::string_view classe)
{
    Com<IDispatch> objeto;
    if (FAILED(CoCreateInstance(NumeroDaClasse(Identificador(classe)), nullptr, CLSCTX_SERVER, IID_IDispatch,
                                objeto.RecebeVazio()))) {
        throw Falha(NumeroFalha::ClasseInexistente);
    }
    return objeto;
}

} // namespace nativo::Classes
