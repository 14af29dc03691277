#include "windows/screen/RenderMarca.h"

#include "controls/CheckBox.h"

namespace nativo {

RenderMarca::RenderMarca(Ref<IControle> controle, const Peca &peca, JanelaForm &janela)
    : Renderizador(std::move(controle), peca, janela)
{
    Faz(WC_BUTTONW, BS_CHECKBOX); // without BS_NOTIFY, by which the second of two quick clicks would be no click
}

void RenderMarca::Comando(HWND, UINT aviso)
{
    if (aviso == BN_CLICKED) {
        Age([this] { Como<CheckBox>(*this).Clica(); });
    }
}

void RenderMarca::Mostra()
{
    EscreveTexto(Principal(), Controle()->Caption());
    SendMessageW(Principal(), BM_SETCHECK, Como<CheckBox>(*this).Value() == 1 ? BST_CHECKED : BST_UNCHECKED, 0);
}

} // namespace nativo
