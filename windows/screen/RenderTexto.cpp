#include "windows/screen/RenderTexto.h"

namespace nativo {

namespace {

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
    : Renderizador(std::move(controle), peca, janela)
{
    const PapelLabel papel = std::get<AjustesLabel>(peca.Ajustes).Papel;
    Faz(WC_STATICW, EstiloDe(papel), papel == PapelLabel::Valor ? WS_EX_STATICEDGE : 0);
}

void RenderTexto::Mostra()
{
    EscreveTexto(Principal(), Controle()->Caption());
}

} // namespace nativo
