#pragma once

#include "windows/screen/CampoNativo.h"
#include "windows/screen/Renderizador.h"

#include <cstddef>
#include <functional>
#include <string>

namespace nativo {

// What all fields of typed text answer to a screen.
struct CampoDeTexto {
    std::function<std::string()> Texto;
    std::function<bool()> SomenteLeitura;
    std::function<std::size_t()> Cursor;
    std::function<bool(std::size_t, std::size_t, const std::string &)> Edita;
};

// Text boxes, masks and dates in a line of text, observations in as many as they have.
class RenderCampo : public Renderizador {
  public:
    RenderCampo(Ref<IControle> controle, const Peca &peca, JanelaForm &janela);

    void Comando(HWND janela, UINT aviso) override;
    std::optional<LRESULT> Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM l) override;

  protected:
    void Mostra() override;

  private:
    CampoDeTexto m_Campo;
    CampoNativo m_Linha;
    bool m_Editando = false;
};

} // namespace nativo
