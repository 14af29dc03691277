#include "windows/screen/RenderMoldura.h"

#include "controls/ztFrame.h"
#include "windows/screen/JanelaForm.h"

namespace nativo {

RenderMoldura::RenderMoldura(Ref<IControle> controle, const Peca &peca, JanelaForm &janela)
    : Renderizador(std::move(controle), peca, janela)
{
    if (std::get<AjustesZtFrame>(peca.Ajustes).Contorno) {
        Faz(WC_BUTTONW, BS_GROUPBOX | WS_CLIPSIBLINGS);
    }
}

// The system's box draws its line only, and nobody draws the ground behind what stands in front of it.
std::optional<LRESULT> RenderMoldura::Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM)
{
    if (mensagem != WM_ERASEBKGND) {
        return std::nullopt;
    }
    const auto papel = reinterpret_cast<HDC>(w);
    RECT area{};
    GetClientRect(janela, &area);
    SetDCBrushColor(papel, Janela().FundoEm(janela));
    FillRect(papel, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    return 1;
}

std::optional<COLORREF> RenderMoldura::CorDoMiolo() const
{
    if (Como<ztFrame>(*this).ComoBotao()) {
        return GetSysColor(COLOR_BTNFACE);
    }
    return std::nullopt;
}

void RenderMoldura::Mostra()
{
    if (Principal() != nullptr) {
        EscreveTexto(Principal(), Controle()->Caption());
    }
}

} // namespace nativo
