#include "windows/screen/RenderBotao.h"

#include "controls/Acionavel.h"

namespace nativo {

RenderBotao::RenderBotao(Ref<IControle> controle, const Peca &peca, JanelaForm &janela)
    : Renderizador(std::move(controle), peca, janela)
{
    Faz(WC_BUTTONW, BS_PUSHBUTTON);
}

void RenderBotao::Comando(HWND, UINT aviso)
{
    if (aviso == BN_CLICKED) {
        Age([this] { dynamic_cast<Clicavel &>(*Controle()).Clica(); });
    }
}

void RenderBotao::Mostra()
{
    EscreveTexto(Principal(), Controle()->Caption());
    const LONG_PTR estilo = dynamic_cast<Acionavel &>(*Controle()).Padrao() ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    if ((GetWindowLongPtrW(Principal(), GWL_STYLE) & BS_TYPEMASK) != estilo) {
        SendMessageW(Principal(), BM_SETSTYLE, static_cast<WPARAM>(estilo), TRUE);
    }
}

} // namespace nativo
