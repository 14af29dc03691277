#pragma once

#include "controls/ControleBase.h"

#include <string>
#include <vector>

// A form of the module that tells which of its controls changed, in their order; of several changes of one control in
// a row, one.
template <class Form> class FormQueAnota : public Form {
  public:
    std::vector<std::string> Alterados;

  protected:
    void LigaControles() override
    {
        Form::LigaControles();
        for (const Ref<IControle> &controle : this->EsteForm()->Controles()) {
            const std::string indice = controle->Indice() < 0 ? "" : "(" + std::to_string(controle->Indice()) + ")";
            m_Conexoes.push_back(ComoBase(controle)->Mudou().liga([this, nome = controle->Nome() + indice] {
                if (Alterados.empty() || Alterados.back() != nome) {
                    Alterados.push_back(nome);
                }
            }));
        }
    }

  private:
    std::vector<Conexao> m_Conexoes;
};
