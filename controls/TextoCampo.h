#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Text inside a field, with the rules for what gets into it. Positions count characters from 0.
class TextoCampo {
  public:
    virtual ~TextoCampo() = default;

    const std::string &Texto() const { return m_Texto; }
    // Position behind what was typed.
    virtual std::size_t Fim() const = 0;
    // The module's text in the place of the present one.
    virtual void Escreve(std::string_view texto) = 0;
    // Takes n characters out.
    virtual void Retira(std::size_t posicao, std::size_t n) = 0;
    // A key: the character gets in at the position, which moves behind it, or nothing happens.
    virtual void Insere(std::size_t &posicao, std::string_view carater) = 0;

  protected:
    TextoCampo() = default;

    std::string m_Texto;
};
