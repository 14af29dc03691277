#pragma once

#include "tela/IJanelas.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

// The open forms of the component, as the platform's contract tells them: which are loaded, and how one is unloaded.
class FormsAbertos {
  public:
    explicit FormsAbertos(Ref<IJanelas> janelas) : m_Janelas(std::move(janelas)) {}

    std::int32_t Quantos() const { return static_cast<std::int32_t>(m_Forms.size()); }
    bool Tem(const Ref<IForm> &form) const;
    // By position from 0; fault 9 outside them.
    Ref<IForm> Form(std::int32_t posicao) const;
    // The form is open from now on, if it was not.
    void Carrega(const Ref<IForm> &form);
    // Asks the form and, unless that cancels, closes its window. Without effect on one that is not open, or that is
    // being unloaded already.
    void Descarrega(const Ref<IForm> &form);
    // Writes the text of the window that has the handle. False when it is none of these forms'.
    bool DefineTexto(std::int64_t hwnd, const std::string &texto) const;

  private:
    Ref<IJanelas> m_Janelas;
    std::vector<Ref<IForm>> m_Forms;
    std::set<const IForm *> m_Descarregando; // unloads that are under way, which are not begun again
};
