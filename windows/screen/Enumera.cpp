#include "windows/screen/Enumera.h"

namespace nativo {

namespace {

BOOL CALLBACK Junta(HWND janela, LPARAM lista) noexcept
{
    reinterpret_cast<std::vector<HWND> *>(lista)->push_back(janela);
    return TRUE;
}

} // namespace

std::vector<HWND> FilhasDe(HWND janela)
{
    std::vector<HWND> filhas;
    EnumChildWindows(janela, Junta, reinterpret_cast<LPARAM>(&filhas));
    return filhas;
}

std::vector<HWND> JanelasDesteFio()
{
    std::vector<HWND> janelas;
    EnumThreadWindows(GetCurrentThreadId(), Junta, reinterpret_cast<LPARAM>(&janelas));
    return janelas;
}

void DaVez(HWND janela)
{
    DWORD processo = 0;
    GetWindowThreadProcessId(GetForegroundWindow(), &processo);
    if (processo == GetCurrentProcessId()) {
        SetForegroundWindow(janela);
    }
    SetActiveWindow(janela);
}

} // namespace nativo
