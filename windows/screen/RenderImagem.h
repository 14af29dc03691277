#pragma once

#include "windows/screen/Renderizador.h"

namespace nativo {

// Pictures, which are icons of the module.
class RenderImagem : public Renderizador {
  public:
    RenderImagem(Ref<IControle> controle, const Peca &peca, JanelaForm &janela);

    void Coloca(const PecaArrumada &lugar) override;

  protected:
    void Mostra() override {}
};

} // namespace nativo
