#pragma once

#include "controls/ControleBase.h"

#include <functional>
#include <string>
#include <vector>

// A form of the module that tells which of its controls changed, in their order; of several changes of one control in
// a row, one.
template <class Form> class FormQueAnota : public Form {
  public:
    std::vector<std::string> Alterados;
    std::function<void()> AoPrimeiro; // runs when the first of them changes, and may change others unnoticed
    std::function<void(const Ref<IControle> &)> AoAlterar; // runs at each change of any of them

  protected:
    void LigaControles() override
    {
        Form::LigaControles();
        for (const Ref<IControle> &controle : this->EsteForm()->Controles()) {
            const std::string indice = controle->Indice() < 0 ? "" : "(" + std::to_string(controle->Indice()) + ")";
            const RefFraca<IControle> fraca = controle;
            m_Conexoes.push_back(ComoBase(controle)->Mudou().liga([this, nome = controle->Nome() + indice, fraca] {
                if (AoAlterar) {
                    AoAlterar(fraca.Alvo());
                }
                if (!Alterados.empty() && Alterados.back() == nome) {
                    return;
                }
                const bool primeiro = Alterados.empty();
                Alterados.push_back(nome);
                if (primeiro && AoPrimeiro) {
                    AoPrimeiro();
                    Alterados.resize(1);
                }
            }));
        }
    }

  private:
    std::vector<Conexao> m_Conexoes;
};
