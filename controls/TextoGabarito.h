#pragma once

#include "controls/TextoCampo.h"

// Digits in the places of a template such as "00:00", with all its other characters standing from the start.
class TextoGabarito : public TextoCampo {
  public:
    // In the template a 0 is a place for a digit; vazio is shown where none was typed.
    TextoGabarito(std::string gabarito, char vazio);

    // Only the digits.
    std::string Digitos() const;
    // Whether a text is the template with digits, or nothing typed, in its places.
    bool TemForma(std::string_view texto) const;

    std::size_t Fim() const override;
    // A text in the form of the template as it stands; of any other, the digits one after the other.
    void Escreve(std::string_view texto) override;
    void Retira(std::size_t posicao, std::size_t n) override;
    // A digit goes to the next place, whatever it holds, and never leaves a gap behind what was typed; behind the last
    // place it goes to the first that is empty. A separator ends its group, which it fills with zeros from the left.
    Entrada Insere(std::size_t &posicao, std::string_view carater) override;
    // As many groups of digits as the template has, or as many digits.
    bool EInteiro(std::string_view texto) const override;
    std::string Dica(const std::vector<std::string> &recusados) const override;

  private:
    bool Lugar(std::size_t posicao) const { return m_Gabarito[posicao] == '0'; }
    void Esvazia();
    void Separa(std::size_t &posicao);

    std::string m_Gabarito; // one byte a character
    char m_Vazio;
};
