#pragma once

#include "tela/Arrumacao.h"

#include <windows.h>

#include <cstdint>
#include <string>
#include <unordered_map>

namespace nativo {

// The font of the system's messages at one resolution of the screen, and with it the screen's scale. Forms are placed
// in pixels of 15 twips, of which the screen may have fewer than its own: what is measured comes in those, rounded up,
// so that nothing is cut.
class Letra : public IMedidor {
  public:
    explicit Letra(UINT dpi);
    Letra(const Letra &) = delete;
    Letra &operator=(const Letra &) = delete;
    ~Letra() override;

    bool Igual(const Letra &outra) const;
    HFONT Fonte() const { return m_Fonte; }
    UINT Dpi() const { return m_Dpi; }
    Tamanho Mede(const std::string &texto, std::int32_t largura) const override;

    // Of the screen, for what is told in pixels of 15 twips; a size is rounded up, a place to the nearest.
    int Medida(std::int32_t pixels) const;
    int Lugar(std::int32_t pixels) const;
    Retangulo NaTela(const Retangulo &lugar) const;
    int DeTwips(std::int32_t twips) const;
    // Back: what fits into a size of the screen, and the twips of a place.
    std::int32_t Cabem(int daTela) const;
    std::int32_t EmTwips(int daTela) const;

  private:
    UINT m_Dpi;
    HFONT m_Fonte;
    HDC m_Papel;
    HGDIOBJ m_FonteDoPapel;
    mutable std::unordered_map<std::string, Tamanho> m_Medidas; // of texts that were measured on one line
};

// The resolution of the screen on which the window is; of the main screen for none.
UINT DpiDe(HWND janela);

} // namespace nativo
