#include "windows/screen/RenderMoldura.h"

#include "controls/ztFrame.h"

namespace nativo {

RenderMoldura::RenderMoldura(Ref<IControle> controle, const Peca &peca, JanelaForm &janela)
    : Renderizador(std::move(controle), peca, janela)
{
    if (std::get<AjustesZtFrame>(peca.Ajustes).Contorno) {
        Faz(WC_BUTTONW, BS_GROUPBOX, WS_EX_TRANSPARENT);
    }
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
