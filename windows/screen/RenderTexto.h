#pragma once

#include "windows/screen/Renderizador.h"

namespace nativo {

// Labels.
class RenderTexto : public Renderizador {
  public:
    RenderTexto(Ref<IControle> controle, const Peca &peca, JanelaForm &janela);

    std::optional<LRESULT> Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM l) override;

  protected:
    void Mostra() override;

  private:
    void PintaBorda() const;

    bool m_EhValor;
};

} // namespace nativo
