#pragma once

#include "controls/TextoCampo.h"

#include <functional>

// Text to which keys add up to a limit, and only what a rule takes. What the module writes stands whole: neither the
// limit nor the rule is for texts that are already stored.
class TextoLimitado : public TextoCampo {
  public:
    using Regra = std::function<bool(std::string_view carater)>;

    // limite in characters, 0 for none; without a rule every character is taken. What the rule takes, in words for the
    // person, may be told; otherwise they are told what it does not take.
    TextoLimitado(std::size_t limite, Regra regra, bool maiusculas, std::string aceitos = {});

    std::size_t Fim() const override;
    void Escreve(std::string_view texto) override;
    void Retira(std::size_t posicao, std::size_t n) override;
    Entrada Insere(std::size_t &posicao, std::string_view carater) override;
    std::string Dica(const std::vector<std::string> &recusados) const override;

  private:
    bool Aceita(std::string_view carater) const { return !m_Regra || m_Regra(carater); }

    std::size_t m_Limite;
    Regra m_Regra;
    bool m_Maiusculas; // of what is typed
    std::string m_Aceitos;
};
