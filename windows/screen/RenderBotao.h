#pragma once

#include "windows/screen/Renderizador.h"

namespace nativo {

// Both kinds of button.
class RenderBotao : public Renderizador {
  public:
    RenderBotao(Ref<IControle> controle, const Peca &peca, JanelaForm &janela);

    void Comando(HWND janela, UINT aviso) override;

  protected:
    void Mostra() override;
};

} // namespace nativo
