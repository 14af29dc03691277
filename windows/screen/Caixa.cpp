#include "windows/screen/Caixa.h"

#include <commctrl.h>

namespace nativo {

namespace {

constexpr UINT_PTR Subclasse = 1;

thread_local HHOOK g_Espreita = nullptr;

void Desiste() noexcept
{
    if (g_Espreita != nullptr) {
        UnhookWindowsHookEx(g_Espreita);
        g_Espreita = nullptr;
    }
}

// Closing the question is no: the system offers no way to close a box without a button for that.
LRESULT CALLBACK DaPergunta(HWND caixa, UINT mensagem, WPARAM w, LPARAM l, UINT_PTR, DWORD_PTR) noexcept
{
    switch (mensagem) {
    case WM_COMMAND:
        if (LOWORD(w) == IDCANCEL) { // Esc
            EndDialog(caixa, IDNO);
            return 0;
        }
        break;
    case WM_CLOSE:
        EndDialog(caixa, IDNO);
        return 0;
    case WM_NCDESTROY:
        RemoveWindowSubclass(caixa, DaPergunta, Subclasse);
        break;
    default:
        break;
    }
    return DefSubclassProc(caixa, mensagem, w, l);
}

// The question is about to be shown: its buttons get their texts, and it can be closed.
LRESULT CALLBACK Espreita(int codigo, WPARAM w, LPARAM l) noexcept
{
    if (const auto caixa = reinterpret_cast<HWND>(w);
        codigo == HCBT_ACTIVATE && GetDlgItem(caixa, IDYES) != nullptr && GetDlgItem(caixa, IDNO) != nullptr) {
        Desiste();
        SetDlgItemTextW(caixa, IDYES, L"&Sim");
        SetDlgItemTextW(caixa, IDNO, L"&Não");
        SetWindowSubclass(caixa, DaPergunta, Subclasse, 0);
        if (const HMENU menu = GetSystemMenu(caixa, FALSE); EnableMenuItem(menu, SC_CLOSE, MF_ENABLED) == -1) {
            AppendMenuW(menu, MF_STRING, SC_CLOSE, L"&Fechar\tAlt+F4");
        }
    }
    return CallNextHookEx(nullptr, codigo, w, l);
}

} // namespace

int MostraCaixa(const ContextoVisual &contexto, HWND dono, const std::wstring &texto, const std::wstring &titulo,
                UINT tipo)
{
    const ContextoVisual::Ativo ativo(contexto);
    if ((tipo & MB_TYPEMASK) != MB_OK) {
        g_Espreita = SetWindowsHookExW(WH_CBT, Espreita, nullptr, GetCurrentThreadId());
    }
    const int apertado = MessageBoxW(dono, texto.c_str(), titulo.c_str(), tipo | MB_SETFOREGROUND);
    Desiste();
    return apertado;
}

} // namespace nativo
