#include "windows/screen/Caixa.h"

namespace nativo {

namespace {

thread_local HHOOK g_Espreita = nullptr;

void Desiste() noexcept
{
    if (g_Espreita != nullptr) {
        UnhookWindowsHookEx(g_Espreita);
        g_Espreita = nullptr;
    }
}

// The box is about to be shown: its buttons get their texts.
LRESULT CALLBACK Espreita(int codigo, WPARAM w, LPARAM l) noexcept
{
    if (codigo == HCBT_ACTIVATE) {
        const auto caixa = reinterpret_cast<HWND>(w);
        SetDlgItemTextW(caixa, IDYES, L"&Sim");
        SetDlgItemTextW(caixa, IDNO, L"&Não");
        Desiste();
        return 0;
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
