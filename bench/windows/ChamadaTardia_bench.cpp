// A member of a late-bound host object, called through the contract, against the platform's own call of it. The host's
// objects are what the platform makes of a class: served by their type information.
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
constexpr double Limite = 1.5; // of the call itself; what texts cost besides is told without one

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

// A type library in memory, as a compiler of the platform's languages makes it of a class.
Com<ITypeInfo> TipoDoAcesso()
{
    Com<ICreateTypeLib2> biblioteca;
    Com<ICreateTypeInfo> novo;
    CreateTypeLib2(sizeof(void *) == 8 ? SYS_WIN64 : SYS_WIN32, L"bancada.tlb", biblioteca.Recebe());
    std::wstring nome = L"IAcesso";
    biblioteca->CreateTypeInfo(nome.data(), TKIND_INTERFACE, novo.Recebe());
    ELEMDESC textos[3] = {};
    for (ELEMDESC &texto : textos) {
        texto.tdesc.vt = VT_BSTR;
        texto.paramdesc.wParamFlags = PARAMFLAG_FIN;
    }
    std::wstring nomes[][4] = {{L"Logado"}, {L"PossuiPerm2", L"sSistema", L"sObjeto", L"sAcao"}};
    for (UINT qual = 0; qual < 2; ++qual) {
        FUNCDESC funcao = {};
        funcao.memid = NumeroLogado + static_cast<MEMBERID>(qual);
        funcao.funckind = FUNC_PUREVIRTUAL;
        funcao.invkind = INVOKE_FUNC;
        funcao.callconv = CC_STDCALL;
        funcao.cParams = qual == 0 ? 0 : 3;
        funcao.lprgelemdescParam = textos;
        funcao.oVft = static_cast<SHORT>(qual * sizeof(void *));
        funcao.elemdescFunc.tdesc.vt = VT_BOOL;
        novo->AddFuncDesc(qual, &funcao);
        LPOLESTR lista[4] = {nomes[qual][0].data(), nomes[qual][1].data(), nomes[qual][2].data(),
                             nomes[qual][3].data()};
        novo->SetFuncAndParamNames(qual, lista, qual == 0 ? 1 : 4);
    }
    novo->LayOut();
    return novo.Como<ITypeInfo>();
}

Com<IDispatch> ObjetoDoTipo(Acesso &acesso)
{
    Com<IUnknown> objeto;
    const Com<ITypeInfo> tipo = TipoDoAcesso();
    if (!tipo || FAILED(CreateStdDispatch(nullptr, &acesso, tipo.Ponteiro(), objeto.Recebe()))) {
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
bool Mede(const char *nome, double limite, const std::function<void()> &medido, const std::function<void()> &referencia)
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
    std::printf("%-58s razão %.2f (chamada simples: %.0f ns)%s\n", nome, razao, tempos[Repeticoes / 2],
                limite > 0 ? ", limite 1.50" : "");
    return limite == 0 || razao <= limite;
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
    const bool dentro = Mede(
        "membro sem argumentos / chamada simples", Limite, [&] { remoto->Logado(); },
        [&] { chama(NumeroLogado, DISPATCH_METHOD | DISPATCH_PROPERTYGET, nullptr, 0); });
    const std::string sistema = "NAB";
    const std::string coisa = "VOR-EQP-CS";
    const std::string acao = "I";
    // Whoever calls it has its texts as they come, and makes of them what automation takes.
    const wchar_t *textos[] = {L"I", L"VOR-EQP-CS", L"NAB"};
    const auto comTextos = [&] {
        VARIANT args[3] = {};
        for (int qual = 0; qual < 3; ++qual) {
            args[qual].vt = VT_BSTR;
            args[qual].bstrVal = SysAllocString(textos[qual]);
        }
        chama(NumeroPossuiPerm2, DISPATCH_METHOD | DISPATCH_PROPERTYGET, args, 3);
        for (VARIANT &arg : args) {
            VariantClear(&arg);
        }
    };
    const auto remotoComTextos = [&] { remoto->PossuiPerm2(sistema, coisa, acao); };
    Mede("membro com três textos / chamada simples que faz os seus", 0, remotoComTextos, comTextos);
    return dentro ? 0 : 1;
}

} // namespace
} // namespace nativo

int main()
{
    OleInitialize(nullptr);
    int saida = 1;
    try {
        saida = nativo::Bancada();
    } catch (const Falha &falha) {
        std::printf("%d %s: %s\n", falha.Numero, falha.Fonte.c_str(), falha.Descricao.c_str());
    }
    OleUninitialize();
    return saida;
}
