#pragma once

#include "windows/screen/JanelaForm.h"

#include <windows.h>

#include <vector>

namespace nativo {

// While it lives no window of this thread that was there before can be used, but the one that it spares. What is opened
// later stands in front of that one, and can.
class BloqueioModal {
  public:
    // forms: the forms' windows, who see to themselves. dono: of the spared one, which may be another thread's.
    BloqueioModal(const std::vector<Ref<JanelaForm>> &forms, HWND dono, HWND poupada);
    // For a box of the system, which disables its owner itself, and enables it before it goes: otherwise another
    // application would come to the front. dono: a window that is in none; null for a box that has none.
    BloqueioModal(const std::vector<Ref<JanelaForm>> &forms, HWND dono);
    BloqueioModal(const BloqueioModal &) = delete;
    BloqueioModal &operator=(const BloqueioModal &) = delete;
    ~BloqueioModal();

  private:
    void Bloqueia(const std::vector<Ref<JanelaForm>> &forms, std::vector<HWND> janelas, HWND poupada);
    void Bloqueia(HWND janela);
    static void Libera(HWND janela);

    std::vector<Ref<JanelaForm>> m_Forms;
    std::vector<HWND> m_Alheias;
    HWND m_Ativa; // has the keyboard again afterwards
};

} // namespace nativo
