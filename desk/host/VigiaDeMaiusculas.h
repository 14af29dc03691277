#pragma once

#include <optional>
#include <string>

namespace mesa {

// Whether Caps Lock is on, as the keys tell that a person presses: nothing else tells it everywhere.
class VigiaDeMaiusculas {
  public:
    // A key gave that text while Shift was held or not.
    void Digitou(const std::string &texto, bool shift);
    // The key itself was pressed.
    void Trocou();
    // The window system told it with a key.
    void Soube(bool ligado) { m_Ligado = ligado; }

    // False while nothing is known.
    bool Ligado() const { return m_Ligado.value_or(false); }

  private:
    std::optional<bool> m_Ligado;
};

} // namespace mesa
