#pragma once

#include "windows/screen/Renderizador.h"

namespace nativo {

// Options, which their controls let exclude each other.
class RenderOpcao : public Renderizador {
  public:
    RenderOpcao(Ref<IControle> controle, const Peca &peca, JanelaForm &janela);

    void Comando(HWND janela, UINT aviso) override;
    std::optional<LRESULT> Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM l) override;

  protected:
    void Mostra() override;

  private:
    bool m_RecebendoTeclado = false;
};

} // namespace nativo
