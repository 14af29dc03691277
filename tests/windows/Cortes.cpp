#include "tests/windows/Cortes.h"

#include "windows/automation/Texto16.h"
#include "windows/screen/Letra.h"

#include <commctrl.h>

#include <algorithm>
#include <cwchar>

namespace nativo {

namespace {

struct Filha {
    HWND Manipulador;
    RECT Lugar; // in the window
    std::wstring Classe;
    std::wstring Texto;
    LONG_PTR Estilo;
};

bool EhClasse(const Filha &filha, const wchar_t *classe)
{
    return _wcsicmp(filha.Classe.c_str(), classe) == 0;
}

LONG_PTR TipoDeBotao(const Filha &filha)
{
    return EhClasse(filha, WC_BUTTONW) ? filha.Estilo & BS_TYPEMASK : -1;
}

// It holds what stands in front of it.
bool EhFundo(const Filha &filha)
{
    return EhClasse(filha, WC_TABCONTROLW) || TipoDeBotao(filha) == BS_GROUPBOX;
}

std::vector<Filha> Vistas(HWND janela)
{
    std::vector<Filha> filhas;
    for (HWND filha = GetWindow(janela, GW_CHILD); filha != nullptr; filha = GetWindow(filha, GW_HWNDNEXT)) {
        if (IsWindowVisible(filha)) {
            wchar_t classe[64]{};
            wchar_t texto[1024]{};
            GetClassNameW(filha, classe, 64);
            GetWindowTextW(filha, texto, 1024);
            RECT lugar{};
            GetWindowRect(filha, &lugar);
            MapWindowPoints(HWND_DESKTOP, janela, reinterpret_cast<POINT *>(&lugar), 2);
            filhas.push_back({filha, lugar, classe, texto, GetWindowLongPtrW(filha, GWL_STYLE)});
        }
    }
    return filhas;
}

std::string Dito(const Filha &filha)
{
    const RECT &r = filha.Lugar;
    return ParaUtf8(filha.Classe) + " '" + ParaUtf8(filha.Texto) + "' (" + std::to_string(r.left) + ", " +
           std::to_string(r.top) + ", " + std::to_string(r.right) + ", " + std::to_string(r.bottom) + ")";
}

// What a child needs besides its text.
SIZE SobraDe(const Filha &filha, UINT dpi)
{
    const int unidade = static_cast<int>(dpi);
    switch (TipoDeBotao(filha)) {
    case BS_PUSHBUTTON:
    case BS_DEFPUSHBUTTON:
        return {MulDiv(8, unidade, 96), MulDiv(4, unidade, 96)};
    case BS_CHECKBOX:
    case BS_RADIOBUTTON:
        return {MulDiv(13 + 4, unidade, 96), 0};
    case BS_GROUPBOX:
        return {MulDiv(16, unidade, 96), 0};
    default:
        return EhClasse(filha, WC_EDITW) ? SIZE{2, 0} : SIZE{0, 0};
    }
}

bool Cabe(const Filha &filha)
{
    if (filha.Texto.empty() || EhClasse(filha, WC_COMBOBOXW) || EhClasse(filha, WC_LISTVIEWW)) {
        return true;
    }
    HDC papel = GetDC(filha.Manipulador);
    const HGDIOBJ antes =
        SelectObject(papel, reinterpret_cast<HFONT>(SendMessageW(filha.Manipulador, WM_GETFONT, 0, 0)));
    RECT area{};
    GetClientRect(filha.Manipulador, &area);
    RECT preciso{0, 0, area.right, 0};
    const bool varias = EhClasse(filha, WC_STATICW) && (filha.Estilo & SS_TYPEMASK) == SS_LEFT;
    const bool crua = EhClasse(filha, WC_EDITW) || (EhClasse(filha, WC_STATICW) && (filha.Estilo & SS_NOPREFIX) != 0);
    DrawTextW(papel, filha.Texto.c_str(), -1, &preciso,
              DT_CALCRECT | (varias ? DT_WORDBREAK : 0) | (crua ? DT_NOPREFIX : 0));
    SelectObject(papel, antes);
    ReleaseDC(filha.Manipulador, papel);
    const SIZE sobra = SobraDe(filha, DpiDe(filha.Manipulador));
    return preciso.right + sobra.cx <= area.right && preciso.bottom + sobra.cy <= area.bottom;
}

} // namespace

std::vector<std::string> Cortes(HWND janela)
{
    std::vector<std::string> cortes;
    RECT area{};
    GetClientRect(janela, &area);
    const std::vector<Filha> filhas = Vistas(janela);
    for (auto filha = filhas.begin(); filha != filhas.end(); ++filha) {
        if (!Cabe(*filha)) {
            cortes.push_back("cortado: " + Dito(*filha));
        }
        RECT comum{};
        if (UnionRect(&comum, &area, &filha->Lugar); !EqualRect(&comum, &area)) {
            cortes.push_back("fora: " + Dito(*filha));
        }
        for (auto outra = filha + 1; outra != filhas.end(); ++outra) {
            if (!EhFundo(*filha) && !EhFundo(*outra) && IntersectRect(&comum, &filha->Lugar, &outra->Lugar)) {
                cortes.push_back("sobre outra: " + Dito(*filha) + " e " + Dito(*outra));
            }
        }
    }
    return cortes;
}

} // namespace nativo
