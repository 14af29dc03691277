#include "windows/screen/RenderTexto.h"

#include "windows/screen/JanelaForm.h"

namespace nativo {

namespace {

constexpr std::int32_t MargemDoValor = 4; // with the line

DWORD EstiloDe(PapelLabel papel)
{
    switch (papel) {
    case PapelLabel::Rotulo:
    case PapelLabel::Texto:
        return SS_LEFTNOWORDWRAP;
    case PapelLabel::Paragrafo:
        return SS_LEFT | SS_NOPREFIX;
    case PapelLabel::Valor:
        break;
    }
    return SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_CENTERIMAGE | SS_ENDELLIPSIS;
}

} // namespace

RenderTexto::RenderTexto(Ref<IControle> controle, const Peca &peca, JanelaForm &janela)
    : Renderizador(std::move(controle), peca, janela),
      m_EhValor(std::get<AjustesLabel>(peca.Ajustes).Papel == PapelLabel::Valor)
{
    Faz(WC_STATICW, EstiloDe(std::get<AjustesLabel>(peca.Ajustes).Papel));
}

// A value stands in a box like a field's, which the system's labels do not have: a line, and room before the text.
std::optional<LRESULT> RenderTexto::Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM l)
{
    if (!m_EhValor || janela != Principal()) {
        return std::nullopt;
    }
    if (mensagem == WM_NCCALCSIZE) {
        InflateRect(w != 0 ? reinterpret_cast<NCCALCSIZE_PARAMS *>(l)->rgrc : reinterpret_cast<RECT *>(l),
                    -Escrita().Medida(MargemDoValor), -1);
        return 0;
    }
    if (mensagem == WM_NCPAINT) {
        PintaBorda();
        return 0;
    }
    return std::nullopt;
}

void RenderTexto::PintaBorda() const
{
    RECT inteira{};
    RECT area{};
    GetWindowRect(Principal(), &inteira);
    GetClientRect(Principal(), &area);
    MapWindowPoints(Principal(), HWND_DESKTOP, reinterpret_cast<POINT *>(&area), 2);
    OffsetRect(&area, -inteira.left, -inteira.top);
    OffsetRect(&inteira, -inteira.left, -inteira.top);
    HDC papel = GetWindowDC(Principal());
    ExcludeClipRect(papel, area.left, area.top, area.right, area.bottom);
    SetDCBrushColor(papel, Janela().FundoEm(Principal()));
    FillRect(papel, &inteira, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    FrameRect(papel, &inteira, GetSysColorBrush(COLOR_BTNSHADOW));
    ReleaseDC(Principal(), papel);
}

void RenderTexto::Mostra()
{
    EscreveTexto(Principal(), Controle()->Caption());
}

} // namespace nativo
