#include "windows/screen/FazRenderizador.h"

#include "windows/screen/RenderAbas.h"
#include "windows/screen/RenderBotao.h"
#include "windows/screen/RenderCampo.h"
#include "windows/screen/RenderClienteSetor.h"
#include "windows/screen/RenderCombo.h"
#include "windows/screen/RenderEndereco.h"
#include "windows/screen/RenderImagem.h"
#include "windows/screen/RenderLista.h"
#include "windows/screen/RenderMarca.h"
#include "windows/screen/RenderMoldura.h"
#include "windows/screen/RenderOpcao.h"
#include "windows/screen/RenderTexto.h"

namespace nativo {

std::unique_ptr<Renderizador> FazRenderizador(const Ref<IControle> &controle, const Peca &peca, JanelaForm &janela)
{
    switch (controle->Especie()) {
    case EspecieControle::Label:
        return std::make_unique<RenderTexto>(controle, peca, janela);
    case EspecieControle::TextBox:
    case EspecieControle::ztMask:
    case EspecieControle::ztData:
    case EspecieControle::ztVeiObservacao:
        return std::make_unique<RenderCampo>(controle, peca, janela);
    case EspecieControle::CheckBox:
        return std::make_unique<RenderMarca>(controle, peca, janela);
    case EspecieControle::OptionButton:
        return std::make_unique<RenderOpcao>(controle, peca, janela);
    case EspecieControle::CommandButton:
    case EspecieControle::ztCommand:
        return std::make_unique<RenderBotao>(controle, peca, janela);
    case EspecieControle::SSTab:
        return std::make_unique<RenderAbas>(controle, peca, janela);
    case EspecieControle::Image:
        return std::make_unique<RenderImagem>(controle, peca, janela);
    case EspecieControle::ztFrame:
        return std::make_unique<RenderMoldura>(controle, peca, janela);
    case EspecieControle::ztList:
        return std::make_unique<RenderLista>(controle, peca, janela);
    case EspecieControle::ztCombo:
        return std::make_unique<RenderCombo>(controle, peca, janela);
    case EspecieControle::ztEndereco:
        return std::make_unique<RenderEndereco>(controle, peca, janela);
    case EspecieControle::ztClienteSetor:
        return std::make_unique<RenderClienteSetor>(controle, peca, janela);
    case EspecieControle::CommonDialog:
        break;
    }
    return nullptr;
}

} // namespace nativo
