#include "tests/windows/Entradas.h"

#include <stdexcept>

namespace nativo {

namespace {

bool Estendida(WORD tecla)
{
    switch (tecla) {
    case VK_UP:
    case VK_DOWN:
    case VK_LEFT:
    case VK_RIGHT:
    case VK_HOME:
    case VK_END:
    case VK_PRIOR:
    case VK_NEXT:
    case VK_INSERT:
    case VK_DELETE:
    case VK_APPS:
        return true;
    default:
        return false;
    }
}

} // namespace

void Entradas::Muda(WORD tecla, bool sobe)
{
    INPUT entrada{};
    entrada.type = INPUT_KEYBOARD;
    entrada.ki.wVk = tecla;
    entrada.ki.wScan = static_cast<WORD>(MapVirtualKeyW(tecla, MAPVK_VK_TO_VSC));
    entrada.ki.dwFlags = static_cast<DWORD>(sobe ? KEYEVENTF_KEYUP : 0) |
                         static_cast<DWORD>(Estendida(tecla) ? KEYEVENTF_EXTENDEDKEY : 0);
    m_Teclas.push_back(entrada);
}

Entradas &Entradas::Tecla(WORD tecla, const std::vector<WORD> &seguradas)
{
    for (const WORD segurada : seguradas) {
        Muda(segurada, false);
    }
    Muda(tecla, false);
    Muda(tecla, true);
    for (auto segurada = seguradas.rbegin(); segurada != seguradas.rend(); ++segurada) {
        Muda(*segurada, true);
    }
    return *this;
}

Entradas &Entradas::Digita(std::wstring_view texto)
{
    for (const wchar_t letra : texto) {
        INPUT entrada{};
        entrada.type = INPUT_KEYBOARD;
        entrada.ki.wScan = static_cast<WORD>(letra);
        entrada.ki.dwFlags = KEYEVENTF_UNICODE;
        m_Teclas.push_back(entrada);
        entrada.ki.dwFlags |= KEYEVENTF_KEYUP;
        m_Teclas.push_back(entrada);
    }
    return *this;
}

Entradas &Entradas::Clica(HWND janela, POINT onde, bool direito)
{
    ClientToScreen(janela, &onde);
    const HWND vista = WindowFromPoint(onde);
    ScreenToClient(vista, &onde);
    const LPARAM lugar = MAKELPARAM(onde.x, onde.y);
    m_Cliques.push_back({vista,
                         static_cast<UINT>(direito ? WM_RBUTTONDOWN : WM_LBUTTONDOWN),
                         static_cast<WPARAM>(direito ? MK_RBUTTON : MK_LBUTTON),
                         lugar,
                         0,
                         {}});
    m_Cliques.push_back({vista, static_cast<UINT>(direito ? WM_RBUTTONUP : WM_LBUTTONUP), 0, lugar, 0, {}});
    return *this;
}

Entradas &Entradas::Clica(HWND janela)
{
    RECT dentro{};
    GetClientRect(janela, &dentro);
    return Clica(janela, {dentro.right / 2, dentro.bottom / 2});
}

Entradas &Entradas::ClicaDuasVezes(HWND janela, POINT onde)
{
    Clica(janela, onde).Clica(janela, onde);
    m_Cliques[m_Cliques.size() - 2].message = WM_LBUTTONDBLCLK;
    return *this;
}

void Entradas::Envia()
{
    for (const MSG &clique : m_Cliques) {
        PostMessageW(clique.hwnd, clique.message, clique.wParam, clique.lParam);
    }
    m_Cliques.clear();
    const auto teclas = static_cast<UINT>(m_Teclas.size());
    if (teclas > 0 && SendInput(teclas, m_Teclas.data(), sizeof(INPUT)) != teclas) {
        throw std::runtime_error("the system takes no input");
    }
    m_Teclas.clear();
}

} // namespace nativo
