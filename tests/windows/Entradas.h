#pragma once

#include <windows.h>

#include <string_view>
#include <vector>

namespace nativo {

// What a person does with keyboard and mouse without waiting in between. All of it is there before the first of it has
// been seen: what waits for the person, such as a menu, gets the rest. Keys come as the system's own input, clicks as
// the messages that the window under the mouse gets of it, and before the keys.
class Entradas {
  public:
    // A key that is pressed and let go, with others held.
    Entradas &Tecla(WORD tecla, const std::vector<WORD> &seguradas = {});
    Entradas &Digita(std::wstring_view texto);
    // At a point of the window's own, whatever window is seen there.
    Entradas &Clica(HWND janela, POINT onde, bool direito = false);
    Entradas &Clica(HWND janela);
    Entradas &ClicaDuasVezes(HWND janela, POINT onde);
    void Envia();

  private:
    void Muda(WORD tecla, bool sobe);

    std::vector<INPUT> m_Teclas;
    std::vector<MSG> m_Cliques;
};

} // namespace nativo
