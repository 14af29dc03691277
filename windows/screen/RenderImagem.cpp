#include "windows/screen/RenderImagem.h"

#include "windows/automation/Texto16.h"
#include "windows/screen/ContextoVisual.h"

namespace nativo {

RenderImagem::RenderImagem(Ref<IControle> controle, const Peca &peca, JanelaForm &janela)
    : Renderizador(std::move(controle), peca, janela)
{
    Faz(WC_STATICW, SS_ICON | SS_REALSIZECONTROL);
}

void RenderImagem::Coloca(const PecaArrumada &lugar)
{
    Renderizador::Coloca(lugar);
    const std::wstring nome = ParaUtf16(std::get<AjustesImage>(Descricao().Ajustes).Icone);
    const HANDLE icone =
        LoadImageW(EsteModulo(), nome.c_str(), IMAGE_ICON, lugar.Lugar.Largura, lugar.Lugar.Altura, LR_SHARED);
    SendMessageW(Principal(), STM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icone));
}

} // namespace nativo
