#pragma once

#include "windows/screen/Renderizador.h"

#include <cstdint>
#include <string>
#include <vector>

namespace nativo {

// Tab strips. Pages that are not visible have no tab; one that cannot be opened has a grey text.
class RenderAbas : public Renderizador {
  public:
    RenderAbas(Ref<IControle> controle, const Peca &peca, JanelaForm &janela);

    LRESULT Notifica(NMHDR &aviso) override;
    bool Desenha(const DRAWITEMSTRUCT &item) override;
    std::optional<LRESULT> Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM l) override;
    std::optional<COLORREF> CorDoMiolo() const override;
    void MudouAparencia() override { m_CorDoMiolo.reset(); }
    void Coloca(const PecaArrumada &lugar) override;

  protected:
    void Mostra() override;

  private:
    struct Aba {
        std::int16_t Pagina;
        std::string Caption;
        bool Habilitada;

        bool operator==(const Aba &) const = default;
    };

    std::vector<Aba> AbasDoControle() const;

    std::vector<Aba> m_Abas; // as they are seen
    mutable std::optional<COLORREF> m_CorDoMiolo;
};

} // namespace nativo
