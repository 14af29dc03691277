#pragma once

#include "windows/screen/Renderizador.h"

namespace nativo {

// Check boxes.
class RenderMarca : public Renderizador {
  public:
    RenderMarca(Ref<IControle> controle, const Peca &peca, JanelaForm &janela);

    void Comando(HWND janela, UINT aviso) override;

  protected:
    void Mostra() override;
};

} // namespace nativo
