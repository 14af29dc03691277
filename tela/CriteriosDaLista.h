#pragma once

#include "host/IForm.h"
#include "tela/EscolhaDeCliente.h"

#include <string>
#include <vector>

// The criteria by which the lists of a form are searched, all together: as a text to be remembered, and set again as a
// person would set them, in their order. What is not offered any more is left as it is.
class CriteriosDaLista {
  public:
    // clientes: those that the form's picker offers.
    CriteriosDaLista(const IForm &form, std::vector<ClienteOferecido> clientes);

    // Whether there are any.
    bool Ha() const { return !m_Controles.empty(); }
    // Empty while they are as the form opens with them.
    std::string Texto() const;
    void Poe(const std::string &texto);
    // As the form opens with them: the person's own client, the first of each choice, nothing typed and nothing marked.
    void Limpa();

  private:
    struct Criterio {
        Ref<IControle> Controle;
        std::string Inicial;
    };

    void Junta(const IForm &form, const Peca &peca);
    std::string Valor(IControle &controle) const;
    void Define(IControle &controle, const std::string &valor) const;
    void VaiAoPrimeiro() const;

    std::vector<ClienteOferecido> m_Clientes;
    std::vector<Criterio> m_Controles; // in the order in which the form describes them
};
