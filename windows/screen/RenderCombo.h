#pragma once

#include "windows/screen/ComboNativo.h"
#include "windows/screen/Renderizador.h"

namespace nativo {

class RenderCombo : public Renderizador {
  public:
    RenderCombo(Ref<IControle> controle, const Peca &peca, JanelaForm &janela);

    void Coloca(const PecaArrumada &lugar) override;
    void Comando(HWND janela, UINT aviso) override;
    std::optional<LRESULT> Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM l) override;
    bool FicaComTecla(HWND janela, WPARAM tecla) const override;

  protected:
    void Mostra() override;

  private:
    ComboNativo m_Combo;
};

} // namespace nativo
