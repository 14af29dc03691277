#include "windows/screen/RenderOpcao.h"

#include "controls/OptionButton.h"
#include "windows/screen/Enquanto.h"
#include "windows/screen/JanelaForm.h"

namespace nativo {

RenderOpcao::RenderOpcao(Ref<IControle> controle, const Peca &peca, JanelaForm &janela)
    : Renderizador(std::move(controle), peca, janela)
{
    Faz(WC_BUTTONW, BS_RADIOBUTTON | BS_NOTIFY);
}

void RenderOpcao::Comando(HWND, UINT aviso)
{
    if (aviso == BN_CLICKED && !m_RecebendoTeclado) {
        Age([this] { Como<OptionButton>(*this).Clica(); });
    }
}

// The system's option tells of a click already when the keyboard comes to it.
std::optional<LRESULT> RenderOpcao::Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM l)
{
    if (mensagem == WM_KEYDOWN && (w == VK_LEFT || w == VK_UP || w == VK_RIGHT || w == VK_DOWN)) {
        Age([&] { Janela().DaPessoa().AndaOpcoes(w == VK_RIGHT || w == VK_DOWN ? 1 : -1); });
        return 0;
    }
    if (mensagem != WM_SETFOCUS || m_RecebendoTeclado) {
        return std::nullopt;
    }
    const Enquanto recebendo(m_RecebendoTeclado);
    return SendMessageW(janela, mensagem, w, l);
}

void RenderOpcao::Mostra()
{
    EscreveTexto(Principal(), Controle()->Caption());
    SendMessageW(Principal(), BM_SETCHECK, Como<OptionButton>(*this).Value() ? BST_CHECKED : BST_UNCHECKED, 0);
}

} // namespace nativo
