#include "windows/screen/RenderAbas.h"

#include "controls/SSTab.h"
#include "tela/PaginasDeAbas.h"
#include "windows/automation/Texto16.h"

#include <algorithm>

namespace nativo {

RenderAbas::RenderAbas(Ref<IControle> controle, const Peca &peca, JanelaForm &janela)
    : Renderizador(std::move(controle), peca, janela)
{
    Faz(WC_TABCONTROLW, WS_CLIPSIBLINGS);
}

std::vector<RenderAbas::Aba> RenderAbas::AbasDoControle() const
{
    const auto &controle = Como<SSTab>(*this);
    std::vector<Aba> abas;
    for (std::int16_t pagina = 0; pagina < controle.Tabs(); ++pagina) {
        if (controle.TabVisible(pagina)) {
            abas.push_back({pagina, controle.TabCaption(pagina), controle.TabEnabled(pagina)});
        }
    }
    return abas;
}

void RenderAbas::Mostra()
{
    const HWND tira = Principal();
    if (std::vector<Aba> abas = AbasDoControle(); abas != m_Abas) {
        // The system has no tabs that cannot be opened: with one, their texts are drawn here.
        const bool proprios = !std::ranges::all_of(abas, &Aba::Habilitada);
        const LONG_PTR estilo = GetWindowLongPtrW(tira, GWL_STYLE) & ~TCS_OWNERDRAWFIXED;
        SetWindowLongPtrW(tira, GWL_STYLE, estilo | (proprios ? TCS_OWNERDRAWFIXED : 0));
        SendMessageW(tira, TCM_DELETEALLITEMS, 0, 0);
        for (std::size_t n = 0; n < abas.size(); ++n) {
            std::wstring texto = ParaUtf16(abas[n].Caption);
            TCITEMW item{};
            item.mask = TCIF_TEXT;
            item.pszText = texto.data();
            SendMessageW(tira, TCM_INSERTITEMW, n, reinterpret_cast<LPARAM>(&item));
        }
        m_Abas = std::move(abas);
        InvalidateRect(tira, nullptr, TRUE);
    }
    const auto atual = std::ranges::find(m_Abas, Como<SSTab>(*this).Tab(), &Aba::Pagina);
    if (const auto lugar = atual - m_Abas.begin(); SendMessageW(tira, TCM_GETCURSEL, 0, 0) != lugar) {
        SendMessageW(tira, TCM_SETCURSEL, atual == m_Abas.end() ? static_cast<WPARAM>(-1) : static_cast<WPARAM>(lugar),
                     0);
    }
}

LRESULT RenderAbas::Notifica(NMHDR &aviso)
{
    if (aviso.code == TCN_SELCHANGE) {
        const auto lugar = static_cast<std::size_t>(SendMessageW(Principal(), TCM_GETCURSEL, 0, 0));
        if (lugar < m_Abas.size()) {
            Age([this, pagina = m_Abas[lugar].Pagina] { AbrePagina(Como<SSTab>(*this), pagina); });
        }
    }
    return 0;
}

// The system's own step would stop at a page that cannot be opened.
std::optional<LRESULT> RenderAbas::Mensagem(HWND, UINT mensagem, WPARAM w, LPARAM)
{
    if (mensagem != WM_KEYDOWN || (w != VK_LEFT && w != VK_RIGHT)) {
        return std::nullopt;
    }
    Age([this, w] {
        auto &controle = Como<SSTab>(*this);
        if (const auto pagina = PaginaVizinha(controle, w == VK_RIGHT ? 1 : -1)) {
            controle.Abre(*pagina);
        }
    });
    return 0;
}

bool RenderAbas::Desenha(const DRAWITEMSTRUCT &item)
{
    if (item.itemID >= m_Abas.size()) {
        return false;
    }
    const Aba &aba = m_Abas[item.itemID];
    RECT lugar = item.rcItem;
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, GetSysColor(aba.Habilitada ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    DrawTextW(item.hDC, ParaUtf16(aba.Caption).c_str(), -1, &lugar, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    if ((item.itemState & ODS_FOCUS) != 0) {
        InflateRect(&lugar, -1, -1);
        DrawFocusRect(item.hDC, &lugar);
    }
    return true;
}

void RenderAbas::Coloca(const PecaArrumada &lugar)
{
    Renderizador::Coloca(lugar);
    m_CorDoMiolo.reset();
}

// The system's look of a page is known by painting one.
std::optional<COLORREF> RenderAbas::CorDoMiolo() const
{
    if (!m_CorDoMiolo) {
        RECT area{};
        GetClientRect(Principal(), &area);
        RECT miolo = area;
        SendMessageW(Principal(), TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&miolo));
        HDC janela = GetDC(Principal());
        HDC papel = CreateCompatibleDC(janela);
        HBITMAP folha = CreateCompatibleBitmap(janela, std::max<int>(area.right, 1), std::max<int>(area.bottom, 1));
        const HGDIOBJ antes = SelectObject(papel, folha);
        FillRect(papel, &area, GetSysColorBrush(COLOR_BTNFACE));
        SendMessageW(Principal(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(papel), PRF_CLIENT | PRF_ERASEBKGND);
        const COLORREF cor = GetPixel(papel, (miolo.left + miolo.right) / 2, (miolo.top + miolo.bottom) / 2);
        SelectObject(papel, antes);
        DeleteObject(folha);
        DeleteDC(papel);
        ReleaseDC(Principal(), janela);
        m_CorDoMiolo = cor == CLR_INVALID ? GetSysColor(COLOR_BTNFACE) : cor;
    }
    return m_CorDoMiolo;
}

} // namespace nativo
