#pragma once

#include "tela/EscolhaDeCliente.h"
#include "windows/screen/ComboNativo.h"
#include "windows/screen/Renderizador.h"

#include <string_view>

namespace nativo {

// Picker of a client and one of its sectors.
class RenderClienteSetor : public Renderizador {
  public:
    RenderClienteSetor(Ref<IControle> controle, const Peca &peca, JanelaForm &janela);

    void Coloca(const PecaArrumada &lugar) override;
    HWND JanelaDe(Parte parte) const override;
    void Comando(HWND janela, UINT aviso) override;
    std::optional<LRESULT> Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM l) override;
    bool FicaComTecla(HWND janela, WPARAM tecla) const override;

  protected:
    void Mostra() override;

  private:
    HWND FazRotulo(std::string_view texto);
    int LarguraDoTexto(std::string_view texto) const;
    void Reparte();

    EscolhaDeCliente m_Escolha;
    HWND m_RotuloCliente;
    ComboNativo m_Cliente;
    HWND m_RotuloSetor;
    ComboNativo m_Setor;
    Retangulo m_Lugar;
    int m_Rotulos = 0;
};

} // namespace nativo
