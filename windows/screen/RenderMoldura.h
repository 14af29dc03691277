#pragma once

#include "windows/screen/Renderizador.h"

namespace nativo {

// Frames. One that is not drawn as a box only holds what is in it.
class RenderMoldura : public Renderizador {
  public:
    RenderMoldura(Ref<IControle> controle, const Peca &peca, JanelaForm &janela);

    std::optional<LRESULT> Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM l) override;
    std::optional<COLORREF> CorDoMiolo() const override;

  protected:
    void Mostra() override;
};

} // namespace nativo
