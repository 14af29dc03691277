#pragma once

#include "windows/screen/Renderizador.h"

namespace nativo {

// Labels.
class RenderTexto : public Renderizador {
  public:
    RenderTexto(Ref<IControle> controle, const Peca &peca, JanelaForm &janela);

  protected:
    void Mostra() override;
};

} // namespace nativo
