#pragma once

#include "host/IForm.h"

#include <string>
#include <vector>

// What a person lets fall on a form.
struct ItemSolto {
    std::string Caminho; // as the module reads it
    std::string Nome;
    bool Pasta = false;
};

// A file that a person drags onto a form: as if they had pressed the button that asks for one, and chosen it in the
// dialog that this opens.
class ArquivoSolto {
  public:
    // Whether there is such a button on forms of this kind.
    static bool Conhece(const IForm &form);

    explicit ArquivoSolto(const Ref<IForm> &form);

    // Whether the button can be pressed now.
    bool Recebe() const;
    // Why nothing was done; empty when the form has had it. Faults of the form's own procedure pass.
    std::string Solta(const std::vector<ItemSolto> &itens) const;

  private:
    Ref<IForm> m_Form;
};
