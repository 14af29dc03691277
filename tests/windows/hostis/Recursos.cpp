#include "tests/windows/hostis/Recursos.h"

#include <windows.h>

#include <psapi.h>

#include <vector>

namespace nativo {

namespace {

// Octets that blocks of all heaps take. Of the memory that a process has, the rest is the system's to give and take.
std::int64_t EmUso()
{
    std::vector<HANDLE> montes(GetProcessHeaps(0, nullptr));
    montes.resize(GetProcessHeaps(static_cast<DWORD>(montes.size()), montes.data()));
    std::int64_t octetos = 0;
    for (HANDLE monte : montes) {
        PROCESS_HEAP_ENTRY bloco = {};
        HeapLock(monte);
        while (HeapWalk(monte, &bloco) != FALSE) {
            if ((bloco.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) {
                octetos += bloco.cbData;
            }
        }
        HeapUnlock(monte);
    }
    return octetos;
}

// The compatibility layer counts neither handles nor graphics objects when it is asked for the number; it tells them
// all the same where it keeps them.

struct UmManipulador {
    ULONG Processo;
    BYTE Tipo;
    BYTE Sinais;
    USHORT Numero;
    void *Objeto;
    ULONG Acesso;
};

std::int64_t ManipuladoresDaLista()
{
    using Pergunta = LONG(WINAPI *)(int, void *, ULONG, ULONG *);
    constexpr int ListaDeManipuladores = 16;
    const auto pergunta = reinterpret_cast<Pergunta>(
        reinterpret_cast<void *>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
    std::vector<std::uint64_t> lista(1 << 18);
    if (pergunta(ListaDeManipuladores, lista.data(), static_cast<ULONG>(lista.size() * sizeof lista[0]), nullptr) !=
        0) {
        return 0;
    }
    const auto *inicio = reinterpret_cast<const char *>(lista.data());
    const ULONG quantos = *reinterpret_cast<const ULONG *>(inicio);
    const auto *cada = reinterpret_cast<const UmManipulador *>(inicio + sizeof(void *));
    std::int64_t deste = 0;
    for (ULONG qual = 0; qual < quantos; ++qual) {
        deste += cada[qual].Processo == GetCurrentProcessId() ? 1 : 0;
    }
    return deste;
}

struct UmGrafico {
    std::uint64_t Objeto;
    std::uint32_t Dono;
    std::uint16_t Vez;
    std::uint8_t Tipo;
    std::uint8_t Sinais;
    std::uint64_t DoUsuario;
};

std::int64_t GraficosDaTabela()
{
    constexpr int Lugares = 16384;
#ifdef _WIN64
    const auto ambiente = reinterpret_cast<const char *>(__readgsqword(0x60));
    const auto *tabela = *reinterpret_cast<const UmGrafico *const *>(ambiente + 0xF8);
#else
    const auto ambiente = reinterpret_cast<const char *>(__readfsdword(0x30));
    const auto *tabela = *reinterpret_cast<const UmGrafico *const *>(ambiente + 0x94);
#endif
    std::int64_t quantos = 0;
    for (int lugar = 0; tabela != nullptr && lugar < Lugares; ++lugar) {
        quantos += tabela[lugar].Tipo != 0 ? 1 : 0;
    }
    return quantos;
}

BOOL CALLBACK ContaJanela(HWND janela, LPARAM onde)
{
    DWORD processo = 0;
    GetWindowThreadProcessId(janela, &processo);
    if (processo == GetCurrentProcessId()) {
        ++*reinterpret_cast<std::int64_t *>(onde);
    }
    return TRUE;
}

BOOL CALLBACK ContaComFilhas(HWND janela, LPARAM onde)
{
    ContaJanela(janela, onde);
    EnumChildWindows(janela, ContaJanela, onde);
    return TRUE;
}

std::int64_t JanelasDoProcesso()
{
    std::int64_t quantas = 0;
    const auto onde = reinterpret_cast<LPARAM>(&quantas);
    EnumWindows(ContaComFilhas, onde);
    for (HWND janela = FindWindowExW(HWND_MESSAGE, nullptr, nullptr, nullptr); janela != nullptr;
         janela = FindWindowExW(HWND_MESSAGE, janela, nullptr, nullptr)) {
        ContaJanela(janela, onde);
    }
    return quantas;
}

} // namespace

Recursos Recursos::Agora()
{
    Recursos recursos;
    DWORD manipuladores = 0;
    GetProcessHandleCount(GetCurrentProcess(), &manipuladores);
    recursos.Manipuladores = manipuladores != 0 ? manipuladores : ManipuladoresDaLista();
    HMODULE modulos[1024];
    DWORD octetos = 0;
    EnumProcessModules(GetCurrentProcess(), modulos, sizeof modulos, &octetos);
    recursos.Modulos = octetos / sizeof(HMODULE);
    recursos.Janelas = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    recursos.Janelas = recursos.Janelas != 0 ? recursos.Janelas : JanelasDoProcesso();
    recursos.Graficos = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    recursos.Graficos = recursos.Graficos != 0 ? recursos.Graficos : GraficosDaTabela();
    recursos.Memoria = EmUso();
    return recursos;
}

std::string Recursos::Texto() const
{
    return "manipuladores " + std::to_string(Manipuladores) + ", módulos " + std::to_string(Modulos) + ", janelas " +
           std::to_string(Janelas) + ", gráficos " + std::to_string(Graficos) + ", octetos " + std::to_string(Memoria);
}

} // namespace nativo
