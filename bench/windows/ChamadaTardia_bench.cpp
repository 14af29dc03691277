// A member of a late-bound host object, called through the contract, against the platform's own call of it with its
// arguments prepared. The host's objects are what the platform makes of a class: served by their type information.
// Prints a line for each figure and fails when one is beyond its limit.

#include "host/ISessao.h"
#include "windows/automation/Remoto.h"
#include "windows/host/Remotos.h"

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace nativo {
namespace {

constexpr int Repeticoes = 31;
constexpr int Chamadas = 4000; // in each
constexpr double Limite = 1.5;

// The access control of a host.
struct Acesso {
    virtual VARIANT_BOOL STDMETHODCALLTYPE Logado() { return VARIANT_TRUE; }
    virtual VARIANT_BOOL STDMETHODCALLTYPE PossuiPerm2(BSTR sistema, BSTR objeto, BSTR acao)
    {
        return SysStringLen(sistema) == 3 && SysStringLen(objeto) == 10 && SysStringLen(acao) == 1 ? VARIANT_TRUE
                                                                                                   : VARIANT_FALSE;
    }
};

enum { NumeroLogado = 1, NumeroPossuiPerm2 };

std::wstring Nome(const wchar_t *nome)
{
    return nome;
}

Com<IDispatch> ObjetoDoTipo(Acesso &acesso)
{
    static std::wstring nomes[] = {Nome(L"sSistema"), Nome(L"sObjeto"), Nome(L"sAcao"), Nome(L"Logado"),
                                   Nome(L"PossuiPerm2")};
    static PARAMDATA argumentos[] = {
        {nomes[0].data(), VT_BSTR}, {nomes[1].data(), VT_BSTR}, {nomes[2].data(), VT_BSTR}};
    static METHODDATA metodos[] = {
        {nomes[3].data(), nullptr, NumeroLogado, 0, CC_STDCALL, 0, DISPATCH_METHOD, VT_BOOL},
        {nomes[4].data(), argumentos, NumeroPossuiPerm2, 1, CC_STDCALL, 3, DISPATCH_METHOD, VT_BOOL}};
    static INTERFACEDATA dados = {metodos, 2};
    Com<ITypeInfo> tipo;
    Com<IUnknown> objeto;
    if (FAILED(CreateDispTypeInfo(&dados, LOCALE_USER_DEFAULT, tipo.Recebe())) ||
        FAILED(CreateStdDispatch(nullptr, &acesso, tipo.Ponteiro(), objeto.Recebe()))) {
        return nullptr;
    }
    return objeto.Como<IDispatch>();
}

double Segundos(const std::function<void()> &trabalho)
{
    LARGE_INTEGER frequencia;
    LARGE_INTEGER inicio;
    LARGE_INTEGER fim;
    QueryPerformanceFrequency(&frequencia);
    QueryPerformanceCounter(&inicio);
    for (int vez = 0; vez < Chamadas; ++vez) {
        trabalho();
    }
    QueryPerformanceCounter(&fim);
    return static_cast<double>(fim.QuadPart - inicio.QuadPart) / static_cast<double>(frequencia.QuadPart);
}

// The median over repetitions, in each of which both are timed side by side.
bool Mede(const char *nome, const std::function<void()> &medido, const std::function<void()> &referencia)
{
    std::vector<double> razoes;
    std::vector<double> tempos;
    for (int vez = 0; vez < Repeticoes; ++vez) {
        const double plano = Segundos(referencia);
        tempos.push_back(plano / Chamadas * 1e9);
        razoes.push_back(Segundos(medido) / plano);
    }
    std::sort(razoes.begin(), razoes.end());
    std::sort(tempos.begin(), tempos.end());
    const double razao = razoes[Repeticoes / 2];
    std::printf("%-60s razão %.2f limite %.2f (chamada simples: %.0f ns)\n", nome, razao, Limite,
                tempos[Repeticoes / 2]);
    return razao <= Limite;
}

int Bancada()
{
    Acesso acesso;
    const Com<IDispatch> objeto = ObjetoDoTipo(acesso);
    RegistraRemotos();
    const Ref<IobjSCA> remoto = RemotoDe<IobjSCA>(objeto);
    if (!objeto || !remoto->Logado() || !remoto->PossuiPerm2("NAB", "VOR-EQP-CS", "I")) {
        std::printf("o objeto do hospedeiro não responde\n");
        return 1;
    }
    const auto chama = [&](DISPID numero, WORD como, VARIANT *args, UINT quantos) {
        DISPPARAMS parametros = {args, nullptr, quantos, 0};
        VARIANT resposta;
        VariantInit(&resposta);
        EXCEPINFO excecao = {};
        UINT errado = 0;
        objeto->Invoke(numero, IID_NULL, LOCALE_USER_DEFAULT, como, &parametros, &resposta, &excecao, &errado);
        VariantClear(&resposta);
    };
    VARIANT args[3] = {};
    const wchar_t *textos[] = {L"I", L"VOR-EQP-CS", L"NAB"};
    for (int qual = 0; qual < 3; ++qual) {
        args[qual].vt = VT_BSTR;
        args[qual].bstrVal = SysAllocString(textos[qual]);
    }
    bool dentro = Mede(
        "membro sem argumentos / chamada simples", [&] { remoto->Logado(); },
        [&] { chama(NumeroLogado, DISPATCH_METHOD | DISPATCH_PROPERTYGET, nullptr, 0); });
    const std::string sistema = "NAB";
    const std::string coisa = "VOR-EQP-CS";
    const std::string acao = "I";
    dentro = Mede(
                 "membro com três textos / chamada simples", [&] { remoto->PossuiPerm2(sistema, coisa, acao); },
                 [&] { chama(NumeroPossuiPerm2, DISPATCH_METHOD | DISPATCH_PROPERTYGET, args, 3); }) &&
             dentro;
    for (VARIANT &arg : args) {
        VariantClear(&arg);
    }
    return dentro ? 0 : 1;
}

} // namespace
} // namespace nativo

int main()
{
    OleInitialize(nullptr);
    const int saida = nativo::Bancada();
    OleUninitialize();
    return saida;
}
